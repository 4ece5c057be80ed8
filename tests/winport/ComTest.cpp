// Starting COM, class ids, identifiers as text, and the thread's error object.
#include "tests/support/DebugOutput.h"
#include "tests/support/TestRegistry.h"

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <wbemcli.h>

#include <gtest/gtest.h>
#include <thread>

namespace
{

// An invented class that nobody registers.
constexpr CLSID UnknownClass = {0x3D9C2B60, 0x51F4, 0x4F07, {0x9A, 0x11, 0x40, 0x5E, 0x77, 0x20, 0x8C, 0xD3}};

TEST(Com, EveryFurtherStartOnAThreadIsSFalse)
{
    std::thread(
        []
        {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
            CoUninitialize();
            CoUninitialize();
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            CoUninitialize();
        })
        .join();
}

TEST(Com, BeforeItsStartNoClassIsLookedFor)
{
    void* object = &object;
    EXPECT_EQ(CoCreateInstance(UnknownClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object),
              CO_E_NOTINITIALIZED);
    EXPECT_EQ(object, nullptr);
}

TEST(Com, AnUnknownClassIsNotRegistered)
{
    orl::test::TestRegistry registry;
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    void* object = &object;
    EXPECT_EQ(CoCreateInstance(UnknownClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object),
              REGDB_E_CLASSNOTREG);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(CoGetClassObject(UnknownClass, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, &object),
              REGDB_E_CLASSNOTREG);
    CoUninitialize();
}

TEST(Com, SecurityIsAsAsked)
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    EXPECT_EQ(CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                                   RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr),
              S_OK);
    CoUninitialize();
}

TEST(Com, TaskMemoryGrowsAndKeepsItsBytes)
{
    char* memory = static_cast<char*>(CoTaskMemAlloc(4));
    std::copy_n("abc", 4, memory);
    memory = static_cast<char*>(CoTaskMemRealloc(memory, 4096));
    EXPECT_STREQ(memory, "abc");
    CoTaskMemFree(memory);
    CoTaskMemFree(nullptr);
}

TEST(Com, AnIdentifierHasItsTextAndBack)
{
    wchar_t text[39] = {};
    EXPECT_EQ(StringFromGUID2(UnknownClass, text, 39), 39);
    EXPECT_STREQ(text, L"{3D9C2B60-51F4-4F07-9A11-405E77208CD3}");
    CLSID back{};
    EXPECT_EQ(CLSIDFromString(L"{3d9c2b60-51f4-4F07-9A11-405E77208CD3}", &back), S_OK);
    EXPECT_TRUE(back == UnknownClass);
    EXPECT_EQ(StringFromGUID2(UnknownClass, text, 38), 0);
}

TEST(Com, ATextThatIsNoIdentifierIsRefused)
{
    const wchar_t* texts[] = {L"3D9C2B60-51F4-4F07-9A11-405E77208CD3",
                              L"{3D9C2B60-51F4-4F07-9A11-405E77208CD3",
                              L"{3D9C2B60-51F4-4F07-9A11-405E77208CD}",
                              L"{3D9C2B60-51F4-4F07-9A11405E77208CD3}",
                              L"{3D9C2B6G-51F4-4F07-9A11-405E77208CD3}",
                              L"{",
                              L"{}"};
    for (const wchar_t* text : texts)
    {
        CLSID clsid = UnknownClass;
        EXPECT_EQ(CLSIDFromString(text, &clsid), CO_E_CLASSSTRING) << text;
    }
    IID iid{};
    EXPECT_EQ(IIDFromString(L"{no}", &iid), E_INVALIDARG);
}

class TestError final : public IErrorInfo
{
public:
    ULONG references = 1;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IErrorInfo);
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetGUID(GUID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD*) override { return E_NOTIMPL; }
};

class ErrorObject : public ::testing::Test
{
protected:
    void SetUp() override { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    void TearDown() override
    {
        SetErrorInfo(0, nullptr);
        CoUninitialize();
    }

    TestError m_error;
};

TEST_F(ErrorObject, WhoGetsItTakesIt)
{
    EXPECT_EQ(SetErrorInfo(0, &m_error), S_OK);
    IErrorInfo* taken = nullptr;
    EXPECT_EQ(GetErrorInfo(0, &taken), S_OK);
    ASSERT_EQ(taken, &m_error);
    EXPECT_EQ(m_error.references, 2u);
    taken->Release();
    EXPECT_EQ(GetErrorInfo(0, &taken), S_FALSE);
    EXPECT_EQ(taken, nullptr);
}

TEST_F(ErrorObject, ANewOneReplacesTheOld)
{
    TestError second;
    SetErrorInfo(0, &m_error);
    SetErrorInfo(0, &second);
    EXPECT_EQ(m_error.references, 1u);
    EXPECT_EQ(second.references, 2u);
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(second.references, 1u);
}

TEST_F(ErrorObject, EachThreadHasItsOwn)
{
    SetErrorInfo(0, &m_error);
    std::thread(
        []
        {
            CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            IErrorInfo* taken = nullptr;
            EXPECT_EQ(GetErrorInfo(0, &taken), S_FALSE);
            CoUninitialize();
        })
        .join();
    EXPECT_EQ(m_error.references, 2u);
}

// A library has its own copy of much; what belongs to the thread or the process it has not.
class AcrossModules : public ErrorObject
{
protected:
    void SetUp() override
    {
        ErrorObject::SetUp();
        ASSERT_NE(m_library, nullptr);
    }
    void TearDown() override
    {
        ErrorObject::TearDown();
        FreeLibrary(m_library);
    }
    template <class Function>
    Function* Export(const char* name)
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(m_library, name)));
    }

    HMODULE m_library = LoadLibraryW(L"TestWinport");
};

TEST_F(AcrossModules, TheErrorObjectIsTheThreads)
{
    EXPECT_EQ(Export<HRESULT(IErrorInfo*)>("SetErrorFromHere")(&m_error), S_OK);
    IErrorInfo* taken = nullptr;
    EXPECT_EQ(GetErrorInfo(0, &taken), S_OK);
    ASSERT_EQ(taken, &m_error);
    taken->Release();
}

TEST_F(AcrossModules, ComIsStartedForAll)
{
    void* object = nullptr;
    EXPECT_EQ(Export<HRESULT(const CLSID*, void**)>("CreateFromHere")(&UnknownClass, &object), REGDB_E_CLASSNOTREG);
}

TEST_F(AcrossModules, TheDebuggerIsTheProcesss)
{
    const orl::test::DebugOutput output;
    Export<void(const wchar_t*)>("DebugFromHere")(L"from the library");
    EXPECT_EQ(output.Texts(), std::vector<std::string>{"from the library"});
}

} // namespace
