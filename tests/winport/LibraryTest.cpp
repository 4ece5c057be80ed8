// Libraries by name, and the texts in them.
#include "tests/support/TestFolder.h"
#include "winport/portable/Utf8.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace
{

using orl::test::TestFolder;

template <class Function>
Function* Export(HMODULE module, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

std::wstring InBin(const wchar_t* name)
{
    return orl::PathText(ORL_BIN_DIR) + L"/" + name;
}

// Where a copy of the test library lies under another name.
std::filesystem::path CopyTo(const std::filesystem::path& folder, const std::string& name)
{
    const std::filesystem::path copy = folder / (ORL_LIBRARY_PREFIX + name + ORL_LIBRARY_SUFFIX);
    std::filesystem::copy_file(std::filesystem::path(ORL_BIN_DIR) /
                                   (std::string(ORL_LIBRARY_PREFIX) + "TestWinport" + ORL_LIBRARY_SUFFIX),
                               copy);
    return copy;
}

TEST(Library, ABareNameIsFoundBesideTheProgram)
{
    for (const wchar_t* name : {L"TestWinport", L"TestWinport.dll", L"TestWinport.DLL"})
    {
        HMODULE module = LoadLibraryW(name);
        ASSERT_NE(module, nullptr) << name;
        const auto addOne = Export<int(int)>(module, "AddOne");
        ASSERT_NE(addOne, nullptr);
        EXPECT_EQ(addOne(41), 42);
        EXPECT_TRUE(FreeLibrary(module));
    }
}

TEST(Library, APathMayUseEitherSeparator)
{
    const TestFolder folder;
    CopyTo(folder.Path(), "Elsewhere");
    std::wstring slashes = folder.Text() + L"/Elsewhere.dll";
    std::wstring backslashes = slashes;
    std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
    std::replace(backslashes.begin(), backslashes.end(), L'/', L'\\');
    for (const std::wstring& path : {slashes, backslashes})
    {
        HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        ASSERT_NE(module, nullptr) << path;
        EXPECT_NE(GetProcAddress(module, "AddOne"), nullptr);
        EXPECT_TRUE(FreeLibrary(module));
    }
}

TEST(Library, ALibraryThatIsNotThereIsNotFound)
{
    SetLastError(0);
    EXPECT_EQ(LoadLibraryW(L"NoSuchLibrary"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    SetLastError(0);
    EXPECT_EQ(LoadLibraryW(InBin(L"NoSuchLibrary.dll").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
}

TEST(Library, AFileThatIsNoLibraryIsABadFormat)
{
    const TestFolder folder;
    const std::string name = std::string(ORL_LIBRARY_PREFIX) + "Broken" + ORL_LIBRARY_SUFFIX;
    std::ofstream(folder / name) << "this is no library, whatever its name says";
    SetLastError(0);
    EXPECT_EQ(LoadLibraryW((folder.Text() + L"/Broken.dll").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));
}

TEST(Library, OnlyItsOwnExportsAreFound)
{
    HMODULE module = LoadLibraryW(L"TestWinport");
    ASSERT_NE(module, nullptr);
    SetLastError(0);
    EXPECT_EQ(GetProcAddress(module, "NoSuchExport"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
    // The C runtime, which the library needs, has this one.
    EXPECT_EQ(GetProcAddress(module, "malloc"), nullptr);
    FreeLibrary(module);
}

TEST(Library, AHandleIsNotCounted)
{
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    HMODULE module = LoadLibraryW(L"TestWinport");
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), module);
    EXPECT_EQ(GetModuleHandleW(L"testwinport.dll"), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), nullptr);
}

TEST(Library, EachLoadWantsItsOwnFree)
{
    HMODULE module = LoadLibraryW(L"TestWinport");
    EXPECT_EQ(LoadLibraryW(L"TestWinport"), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), nullptr);
}

TEST(Library, AnotherModulesLibraryIsFoundByItsBaseName)
{
    const TestFolder folder;
    CopyTo(folder.Path(), "ByOther");
    HMODULE module = LoadLibraryW(L"TestWinport");
    const auto loadFromHere = Export<HMODULE(const wchar_t*)>(module, "LoadFromHere");
    ASSERT_NE(loadFromHere, nullptr);
    HMODULE other = loadFromHere((folder.Text() + L"/ByOther.dll").c_str());
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(GetModuleHandleW(L"ByOther"), other);
    EXPECT_NE(other, module);
    FreeLibrary(other);
    FreeLibrary(module);
}

TEST(Library, AnAddressTellsItsLibrary)
{
    HMODULE module = LoadLibraryW(L"TestWinport");
    const auto ownHandle = Export<HMODULE()>(module, "OwnHandle");
    ASSERT_NE(ownHandle, nullptr);
    EXPECT_EQ(ownHandle(), module);
    FreeLibrary(module);
    // Asking did not count.
    EXPECT_EQ(GetModuleHandleW(L"TestWinport"), nullptr);
}

TEST(Library, AnAddressInNoLibraryTellsNothing)
{
    HMODULE module = nullptr;
    const int onTheStack = 0;
    EXPECT_FALSE(
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&onTheStack), &module));
    EXPECT_EQ(module, nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
}

TEST(Library, ItsFileIsItsWholePath)
{
    const TestFolder folder;
    const std::filesystem::path file = CopyTo(folder.Path(), "Named");
    HMODULE module = LoadLibraryW((folder.Text() + L"/Named.dll").c_str());
    ASSERT_NE(module, nullptr);
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(module, path, 1024);
    EXPECT_EQ(length, std::wcslen(path));
    EXPECT_TRUE(std::filesystem::equivalent(orl::NativePath(path), file)) << path;
    FreeLibrary(module);
}

TEST(Library, ThePathIsCutToTheRoomThereIs)
{
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    ASSERT_GT(length, 4u);
    wchar_t small[4];
    EXPECT_EQ(GetModuleFileNameW(nullptr, small, 4), 4u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    // Not all systems leave room for a terminator.
    EXPECT_EQ(std::wstring(small, 3), std::wstring(path).substr(0, 3));
}

TEST(Library, WithoutANameTheProgramIsMeant)
{
    wchar_t path[1024];
    GetModuleFileNameW(GetModuleHandleW(nullptr), path, 1024);
    EXPECT_EQ(orl::NativePath(path).stem().string(), "test_winport");
}

class StringTable : public ::testing::Test
{
protected:
    void TearDown() override { FreeLibrary(m_module); }
    std::wstring Text(UINT id)
    {
        wchar_t text[64] = L"?";
        const int length = LoadStringW(m_module, id, text, 64);
        EXPECT_EQ(static_cast<size_t>(length), std::wcslen(text)) << id;
        return text;
    }

    HMODULE m_module = LoadLibraryW(L"TestTexts");
};

TEST_F(StringTable, TextsAreFoundByTheirNumber)
{
    const std::pair<UINT, const wchar_t*> texts[] = {
        {1, L"one"},
        {2, L"two"},
        {3, L"say \"so\" \\ \t|"},
        {5, L"five"},
        {4001, L"\u00e4\u00f6\u00fc \u20ac"},
        {4002, L"\u4e2d\u6587 \U0001F600"},
        {4003, L"Port %s on %s"},
        {4004, L"first second"},
        {65535, L"last"},
    };
    for (const auto& [id, text] : texts)
        EXPECT_EQ(Text(id), text) << id;
}

TEST_F(StringTable, ANumberWithoutATextGivesNothing)
{
    for (const UINT id : {0u, 4u, 6u, 3999u, 4005u})
    {
        wchar_t text[8] = L"?";
        EXPECT_EQ(LoadStringW(m_module, id, text, 8), 0) << id;
    }
}

TEST_F(StringTable, ATextIsCutToTheRoomThereIs)
{
    wchar_t text[5];
    EXPECT_EQ(LoadStringW(m_module, 4003, text, 5), 4);
    EXPECT_STREQ(text, L"Port");
    wchar_t one[1] = {L'?'};
    EXPECT_EQ(LoadStringW(m_module, 1, one, 1), 0);
}

TEST_F(StringTable, ALibraryWithoutTextsHasNone)
{
    HMODULE module = LoadLibraryW(L"TestWinport");
    wchar_t text[8] = L"?";
    EXPECT_EQ(LoadStringW(module, 1, text, 8), 0);
    FreeLibrary(module);
}

TEST_F(StringTable, ALibraryLoadedForItsDataHasThemToo)
{
    HMODULE module = LoadLibraryExW(InBin(L"TestTexts.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    wchar_t text[8] = L"?";
    EXPECT_EQ(LoadStringW(module, 1, text, 8), 3);
    EXPECT_STREQ(text, L"one");
    FreeLibrary(module);
}

} // namespace
