// Classes whose registered server does not do.
#include "tests/support/TestRegistry.h"
#include "winport/portable/Utf8.h"

#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

namespace
{

constexpr CLSID TestClass = {0x61A0F3D2, 0x7C55, 0x4B9E, {0xA3, 0x40, 0x12, 0x8E, 0x5B, 0xD7, 0x09, 0xC6}};
constexpr wchar_t ServerKey[] = L"SOFTWARE\\Classes\\CLSID\\{61A0F3D2-7C55-4B9E-A340-128E5BD709C6}\\InprocServer32";

class Activation : public ::testing::Test
{
protected:
    void SetUp() override { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    void TearDown() override { CoUninitialize(); }
    HRESULT Create()
    {
        void* object = &object;
        const HRESULT hr = CoCreateInstance(TestClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object);
        EXPECT_EQ(object, nullptr);
        return hr;
    }

    orl::test::TestRegistry m_registry;
};

TEST_F(Activation, AServerThatIsNotThereIsAMissingLibrary)
{
    m_registry.SetText(ServerKey, L"", L"/nowhere\\Server.dll");
    EXPECT_EQ(Create(), HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND));
}

TEST_F(Activation, AServerWithoutTheExportIsAnErrorInTheLibrary)
{
    m_registry.SetText(ServerKey, L"", orl::PathText(ORL_BIN_DIR) + L"/TestWinport.dll");
    EXPECT_EQ(Create(), CO_E_ERRORINDLL);
}

TEST_F(Activation, AClassWithoutAServersPathIsNotRegistered)
{
    m_registry.CreateKey(ServerKey);
    EXPECT_EQ(Create(), REGDB_E_CLASSNOTREG);
    m_registry.SetNumber(ServerKey, L"", 5);
    EXPECT_EQ(Create(), REGDB_E_CLASSNOTREG);
    m_registry.SetBytes(ServerKey, L"", REG_SZ, {});
    EXPECT_EQ(Create(), REGDB_E_CLASSNOTREG);
}

} // namespace
