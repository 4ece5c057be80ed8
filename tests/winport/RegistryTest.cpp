// The registry functions.
#include "tests/support/TestRegistry.h"

#include <windows.h>

#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <map>
#include <thread>

namespace
{

using orl::test::BytesOf;

constexpr wchar_t Product[] = L"SOFTWARE\\KESTA\\Test";

class Registry : public ::testing::Test
{
protected:
    HKEY Open(const wchar_t* path)
    {
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key), ERROR_SUCCESS) << path;
        return key;
    }
    HKEY Create(const wchar_t* path)
    {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS)
            << path;
        return key;
    }
    std::wstring Text(HKEY key, const wchar_t* name)
    {
        wchar_t text[256] = {};
        DWORD type = REG_NONE;
        DWORD size = sizeof text;
        EXPECT_EQ(RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size), ERROR_SUCCESS);
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
        return text;
    }

    orl::test::TestRegistry m_registry;
};

TEST_F(Registry, AKeyThatIsNotThereIsNotFound)
{
    HKEY key = HKEY_LOCAL_MACHINE;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Nobody", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key, nullptr);
}

TEST_F(Registry, AKeyIsMadeWithAllAboveIt)
{
    HKEY key = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Product, 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
    RegCloseKey(key);
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Product, 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));
    RegCloseKey(key);
    RegCloseKey(Open(L"SOFTWARE\\KESTA"));
}

TEST_F(Registry, NamesCompareWithoutCase)
{
    m_registry.SetText(L"SOFTWARE\\KESTA\\Network_Services\\ORL2", L"InstalledDir", L"C:\\orl");
    HKEY key = Open(L"software\\kesta\\NETWORK_SERVICES\\orl2");
    EXPECT_EQ(Text(key, L"INSTALLEDDIR"), L"C:\\orl");
    RegCloseKey(key);
}

TEST_F(Registry, ABackslashAtTheEndOfThePathIsNoName)
{
    m_registry.SetText(Product, L"A", L"a");
    HKEY key = Open(L"SOFTWARE\\KESTA\\Test\\");
    EXPECT_EQ(Text(key, L"A"), L"a");
    RegCloseKey(key);
}

TEST_F(Registry, APathGoesOnFromAnOpenKey)
{
    m_registry.SetText(Product, L"A", L"a");
    HKEY above = Open(L"SOFTWARE\\KESTA");
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(above, L"Test", 0, KEY_READ, &key), ERROR_SUCCESS);
    EXPECT_EQ(Text(key, L"A"), L"a");
    HKEY again = nullptr;
    EXPECT_EQ(RegOpenKeyExW(key, nullptr, 0, KEY_READ, &again), ERROR_SUCCESS);
    EXPECT_EQ(Text(again, L"A"), L"a");
    RegCloseKey(again);
    RegCloseKey(key);
    RegCloseKey(above);
}

TEST_F(Registry, AValueThatIsNotThereIsNotFound)
{
    HKEY key = Create(Product);
    DWORD size = 4;
    BYTE data[4];
    EXPECT_EQ(RegQueryValueExW(key, L"TRACE", nullptr, nullptr, data, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExW(key, nullptr, nullptr, nullptr, data, &size), ERROR_FILE_NOT_FOUND);
    RegCloseKey(key);
}

TEST_F(Registry, ANumberHasFourBytes)
{
    m_registry.SetNumber(Product, L"TRACE", 0x01020304);
    HKEY key = Open(Product);
    DWORD number = 0;
    DWORD type = REG_NONE;
    DWORD size = sizeof number;
    EXPECT_EQ(RegQueryValueExW(key, L"TRACE", nullptr, &type, reinterpret_cast<BYTE*>(&number), &size), ERROR_SUCCESS);
    EXPECT_EQ(number, 0x01020304u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(size, 4u);
    RegCloseKey(key);
}

TEST_F(Registry, TheSizeOfATextIsInBytesWithItsTerminator)
{
    m_registry.SetText(Product, L"Name", L"abc");
    HKEY key = Open(Product);
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExW(key, L"Name", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 4 * sizeof(wchar_t));
    RegCloseKey(key);
}

TEST_F(Registry, TooSmallABufferGivesTheSizeThatIsNeeded)
{
    m_registry.SetText(Product, L"Name", L"abc");
    HKEY key = Open(Product);
    BYTE data[4];
    DWORD size = sizeof data;
    DWORD type = REG_NONE;
    EXPECT_EQ(RegQueryValueExW(key, L"Name", nullptr, &type, data, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 4 * sizeof(wchar_t));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    RegCloseKey(key);
}

TEST_F(Registry, DataWithoutASizeIsRefused)
{
    m_registry.SetText(Product, L"Name", L"abc");
    HKEY key = Open(Product);
    BYTE data[4];
    EXPECT_EQ(RegQueryValueExW(key, L"Name", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(key, L"Name", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    RegCloseKey(key);
}

TEST_F(Registry, TheNamelessValueIsTheKeysOwn)
{
    m_registry.SetText(Product, L"", L"default");
    HKEY key = Open(Product);
    EXPECT_EQ(Text(key, nullptr), L"default");
    EXPECT_EQ(Text(key, L""), L"default");
    RegCloseKey(key);
}

TEST_F(Registry, AnyTextComesBackAsItWas)
{
    const std::wstring texts[] = {L"", L"plain", L"C:\\dir\\\"quoted\"", L"\u00e4\u4e2d", L"two\nlines\t", L"; = [x]"};
    for (const std::wstring& text : texts)
    {
        m_registry.SetText(Product, L"Name", text);
        HKEY key = Open(Product);
        EXPECT_EQ(Text(key, L"Name"), text);
        RegCloseKey(key);
    }
}

TEST_F(Registry, AnyTypeComesBackAsItWas)
{
    std::vector<BYTE> multi = BytesOf(std::wstring(L"one\0two\0", 8), true);
    const std::pair<DWORD, std::vector<BYTE>> values[] = {
        {REG_BINARY, {0, 1, 0xFF}},
        {REG_BINARY, {}},
        {REG_EXPAND_SZ, BytesOf(L"%Temp%\\x", true)},
        {REG_MULTI_SZ, multi},
        {REG_QWORD, {1, 2, 3, 4, 5, 6, 7, 8}},
        {REG_NONE, {9}},
        {REG_DWORD, {1, 0, 0, 0}},
    };
    for (const auto& [type, data] : values)
    {
        m_registry.SetBytes(Product, L"Any", type, data);
        HKEY key = Open(Product);
        std::vector<BYTE> read(64);
        DWORD readType = 0;
        DWORD size = static_cast<DWORD>(read.size());
        EXPECT_EQ(RegQueryValueExW(key, L"Any", nullptr, &readType, read.data(), &size), ERROR_SUCCESS);
        read.resize(size);
        EXPECT_EQ(readType, type);
        EXPECT_EQ(read, data) << "type " << type;
        RegCloseKey(key);
    }
}

TEST_F(Registry, NamesMayHoldWhatTheFileGivesAMeaning)
{
    const std::wstring name = L"a\"b\\c=d;[e]";
    m_registry.SetText(L"SOFTWARE\\KESTA\\Key [1] ; \"q\"", name, L"found");
    HKEY key = Open(L"SOFTWARE\\KESTA\\Key [1] ; \"q\"");
    EXPECT_EQ(Text(key, name.c_str()), L"found");
    RegCloseKey(key);
}

TEST_F(Registry, AValueIsReplacedUnderItsOldName)
{
    m_registry.SetText(Product, L"Name", L"old");
    m_registry.SetNumber(Product, L"NAME", 7);
    HKEY key = Open(Product);
    wchar_t name[64];
    DWORD length = 64;
    DWORD type = REG_NONE;
    EXPECT_EQ(RegEnumValueW(key, 0, name, &length, nullptr, &type, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_STREQ(name, L"Name");
    EXPECT_EQ(length, 4u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    length = 64;
    EXPECT_EQ(RegEnumValueW(key, 1, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
    RegCloseKey(key);
}

TEST_F(Registry, KeysAreListedUntilThereAreNoMore)
{
    m_registry.CreateKey(L"SOFTWARE\\KESTA\\Test\\Beta");
    m_registry.CreateKey(L"SOFTWARE\\KESTA\\Test\\alpha\\below");
    m_registry.CreateKey(L"SOFTWARE\\KESTA\\Test\\Gamma");
    HKEY key = Open(Product);
    std::vector<std::wstring> names;
    LSTATUS status = ERROR_SUCCESS;
    for (DWORD index = 0; status == ERROR_SUCCESS; ++index)
    {
        wchar_t name[64];
        DWORD length = 64;
        status = RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_SUCCESS)
            names.emplace_back(name, length);
    }
    EXPECT_EQ(status, ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"alpha", L"Beta", L"Gamma"}));
    wchar_t small[5];
    DWORD length = 5;
    EXPECT_EQ(RegEnumKeyExW(key, 0, small, &length, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    RegCloseKey(key);
}

TEST_F(Registry, ValuesAreListedWithTheirData)
{
    m_registry.SetText(Product, L"Text", L"x");
    m_registry.SetNumber(Product, L"Number", 5);
    HKEY key = Open(Product);
    std::map<std::wstring, DWORD> found;
    for (DWORD index = 0; index < 2; ++index)
    {
        wchar_t name[64];
        BYTE data[64];
        DWORD length = 64;
        DWORD size = sizeof data;
        DWORD type = REG_NONE;
        ASSERT_EQ(RegEnumValueW(key, index, name, &length, nullptr, &type, data, &size), ERROR_SUCCESS);
        found[name] = size;
    }
    EXPECT_EQ(found, (std::map<std::wstring, DWORD>{{L"Number", 4}, {L"Text", DWORD{2 * sizeof(wchar_t)}}}));
    RegCloseKey(key);
}

TEST_F(Registry, ADeletedValueIsGone)
{
    m_registry.SetText(Product, L"Name", L"x");
    m_registry.SetText(Product, L"Other", L"y");
    m_registry.DeleteValue(Product, L"NAME");
    HKEY key = Open(Product);
    EXPECT_EQ(RegQueryValueExW(key, L"Name", nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Text(key, L"Other"), L"y");
    RegCloseKey(key);
    key = Create(Product);
    EXPECT_EQ(RegDeleteValueW(key, L"Name"), ERROR_FILE_NOT_FOUND);
    RegCloseKey(key);
}

TEST_F(Registry, ADeletedTreeIsGoneWithAllBelow)
{
    m_registry.SetText(L"SOFTWARE\\KESTA\\Test\\Deep\\Deeper", L"A", L"a");
    m_registry.SetText(L"SOFTWARE\\KESTA\\Kept", L"A", L"a");
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, Product), ERROR_SUCCESS);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, Product, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, Product), ERROR_FILE_NOT_FOUND);
    RegCloseKey(Open(L"SOFTWARE\\KESTA\\Kept"));
}

TEST_F(Registry, WithoutAPathATreeIsEmptiedAndTheKeyStays)
{
    m_registry.SetText(L"SOFTWARE\\KESTA\\Test\\Deep", L"A", L"a");
    m_registry.SetText(Product, L"B", L"b");
    HKEY key = Create(Product);
    EXPECT_EQ(RegDeleteTreeW(key, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(key, L"B", nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
    HKEY below = nullptr;
    EXPECT_EQ(RegOpenKeyExW(key, L"Deep", 0, KEY_READ, &below), ERROR_FILE_NOT_FOUND);
    RegCloseKey(key);
}

TEST_F(Registry, AnOpenKeySeesWhatChanges)
{
    m_registry.SetNumber(Product, L"TRACE", 1);
    HKEY key = Open(Product);
    for (DWORD wanted = 2; wanted < 50; ++wanted)
    {
        m_registry.SetNumber(Product, L"TRACE", wanted);
        DWORD number = 0;
        DWORD size = sizeof number;
        ASSERT_EQ(RegQueryValueExW(key, L"TRACE", nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size),
                  ERROR_SUCCESS);
        ASSERT_EQ(number, wanted);
    }
    RegCloseKey(key);
}

TEST_F(Registry, AnOpenKeyThatWasDeletedSaysSo)
{
    HKEY key = Create(Product);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, Product);
    const BYTE data = 1;
    EXPECT_EQ(RegSetValueExW(key, L"A", 0, REG_BINARY, &data, 1), ERROR_KEY_DELETED);
    EXPECT_EQ(RegQueryValueExW(key, L"A", nullptr, nullptr, nullptr, nullptr), ERROR_KEY_DELETED);
    RegCloseKey(key);
}

TEST_F(Registry, AHandleThatIsNoneIsRefused)
{
    HKEY key = nullptr;
    HKEY none = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x12344));
    EXPECT_EQ(RegOpenKeyExW(none, L"SOFTWARE", 0, KEY_READ, &key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegQueryValueExW(none, L"A", nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(none), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
}

TEST_F(Registry, ManyThreadsChangeItWithoutLosingAnything)
{
    constexpr DWORD Threads = 4;
    constexpr DWORD Values = 20;
    std::vector<std::thread> threads;
    for (DWORD thread = 0; thread < Threads; ++thread)
        threads.emplace_back(
            [&, thread]
            {
                for (DWORD value = 0; value < Values; ++value)
                    m_registry.SetNumber(Product, L"V" + std::to_wstring(thread * Values + value), value);
            });
    for (std::thread& thread : threads)
        thread.join();
    HKEY key = Open(Product);
    for (DWORD value = 0; value < Threads * Values; ++value)
        EXPECT_EQ(RegQueryValueExW(key, (L"V" + std::to_wstring(value)).c_str(), nullptr, nullptr, nullptr, nullptr),
                  ERROR_SUCCESS);
    RegCloseKey(key);
}

} // namespace
