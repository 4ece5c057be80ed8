// COrlRegKey: opening, values of any form, and who closes the handle.

#include "Common/Src/OrlRegKey.h"
#include "tests/support/TestRegistry.h"

#include <gtest/gtest.h>

#include <utility>

namespace orl::test
{

namespace
{

constexpr wchar_t Key[] = L"SOFTWARE\\KESTA\\Test";

class OrlRegKey : public ::testing::Test
{
protected:
    OrlRegKey() { m_registry.SetText(Key, L"Text", L"value"); }

    HKEY OpenHandle() const
    {
        HKEY key = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_LOCAL_MACHINE, Key, 0, KEY_READ, &key));
        return key;
    }

    static bool IsOpen(HKEY key)
    {
        return RegQueryValueExW(key, L"Text", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    }

    TestRegistry m_registry;
};

} // namespace

TEST_F(OrlRegKey, HoldsNothingAtFirst)
{
    COrlRegKey key;
    COrlString text(L"before");
    EXPECT_EQ(nullptr, key.Handle());
    EXPECT_FALSE(key.GetValue(L"Text", text));
    EXPECT_EQ(L"before", text);
    EXPECT_NE(0u, key.LastStatus());
}

TEST_F(OrlRegKey, OpensAndReadsWithoutRegardToCase)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, L"software\\kesta\\TEST"));
    EXPECT_EQ(L"software\\kesta\\TEST", key.Path());
    COrlString text;
    EXPECT_TRUE(key.GetValue(L"TEXT", text));
    EXPECT_EQ(L"value", text);
    EXPECT_EQ(0u, key.LastStatus());
}

TEST_F(OrlRegKey, OpensAPathThatEndsInABackslash)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, COrlString(Key) + L"\\"));
    COrlString text;
    EXPECT_TRUE(key.GetValue(L"Text", text));
}

TEST_F(OrlRegKey, DoesNotOpenWhatIsNotThere)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    EXPECT_FALSE(key.Open(HKEY_LOCAL_MACHINE, L"SOFTWARE\\KESTA\\Missing"));
    EXPECT_EQ(static_cast<ULONG>(ERROR_FILE_NOT_FOUND), key.LastStatus());
    EXPECT_EQ(nullptr, key.Handle());
    EXPECT_EQ(L"", key.Path());
}

TEST_F(OrlRegKey, LeavesTheResultAloneWhenThereIsNoValue)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text(L"before");
    DWORD number = 77;
    EXPECT_FALSE(key.GetValue(L"Missing", text));
    EXPECT_EQ(static_cast<ULONG>(ERROR_FILE_NOT_FOUND), key.LastStatus());
    EXPECT_FALSE(key.GetValue(L"Missing", number));
    EXPECT_EQ(L"before", text);
    EXPECT_EQ(77u, number);
}

TEST_F(OrlRegKey, ReadsTextsOfAnyLengthWithAndWithoutTerminator)
{
    for (const size_t length : {0u, 1u, 259u, 260u, 1023u, 1024u, 5000u})
    {
        for (const bool terminated : {true, false})
        {
            SCOPED_TRACE(std::to_string(length) + (terminated ? " terminated" : " not terminated"));
            const std::wstring stored(length, L'\u00E4');
            m_registry.SetBytes(Key, L"Long", REG_SZ, BytesOf(stored, terminated));
            COrlRegKey key;
            ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
            COrlString text(L"before");
            EXPECT_TRUE(key.GetValue(L"Long", text));
            EXPECT_EQ(stored, text);
        }
    }
}

TEST_F(OrlRegKey, ReadsATextUpToItsFirstZero)
{
    m_registry.SetBytes(Key, L"Zeros", REG_SZ, BytesOf(std::wstring(L"ab\0cd\0\0", 7), true));
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text;
    EXPECT_TRUE(key.GetValue(L"Zeros", text));
    EXPECT_EQ(L"ab", text);
}

TEST_F(OrlRegKey, ReadsAnExpandableTextAsItStands)
{
    m_registry.SetBytes(Key, L"Expand", REG_EXPAND_SZ, BytesOf(L"%ProgramFiles%\\x", true));
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text;
    EXPECT_TRUE(key.GetValue(L"Expand", text));
    EXPECT_EQ(L"%ProgramFiles%\\x", text);
}

TEST_F(OrlRegKey, ReadsTheNamelessValue)
{
    m_registry.SetText(Key, L"", L"default");
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text;
    EXPECT_TRUE(key.GetValue(L"", text));
    EXPECT_EQ(L"default", text);
}

TEST_F(OrlRegKey, ReadsNumbers)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    for (const DWORD stored : {0u, 1u, 0x80000000u, 0xFFFFFFFFu})
    {
        m_registry.SetNumber(Key, L"Number", stored);
        DWORD number = 77;
        EXPECT_TRUE(key.GetValue(L"Number", number));
        EXPECT_EQ(stored, number);
    }
}

TEST_F(OrlRegKey, RefusesValuesOfAnotherType)
{
    m_registry.SetNumber(Key, L"Number", 1);
    m_registry.SetBytes(Key, L"Binary", REG_BINARY, {1, 0, 0, 0});
    m_registry.SetBytes(Key, L"Short", REG_DWORD, {1, 0});
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text(L"before");
    DWORD number = 77;
    EXPECT_FALSE(key.GetValue(L"Number", text));
    EXPECT_EQ(static_cast<ULONG>(ERROR_INVALID_DATA), key.LastStatus());
    EXPECT_FALSE(key.GetValue(L"Binary", text));
    EXPECT_FALSE(key.GetValue(L"Binary", number));
    EXPECT_FALSE(key.GetValue(L"Text", number));
    EXPECT_FALSE(key.GetValue(L"Short", number));
    EXPECT_EQ(L"before", text);
    EXPECT_EQ(77u, number);
}

TEST_F(OrlRegKey, ClosesWhatItOpened)
{
    HKEY handle = nullptr;
    {
        COrlRegKey key;
        ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
        handle = key.Handle();
        EXPECT_TRUE(IsOpen(handle));
    }
    EXPECT_FALSE(IsOpen(handle));
}

TEST_F(OrlRegKey, ClosesTheHandleThatItWasGiven)
{
    const HKEY built = OpenHandle();
    const HKEY assigned = OpenHandle();
    {
        COrlRegKey key(built);
        COrlString text;
        EXPECT_TRUE(key.GetValue(L"Text", text));
        key = assigned;
        EXPECT_FALSE(IsOpen(built));
        EXPECT_EQ(assigned, key.Handle());
        key = assigned;
        EXPECT_TRUE(IsOpen(assigned));
    }
    EXPECT_FALSE(IsOpen(assigned));
}

TEST_F(OrlRegKey, CloseMayBeRepeated)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    const HKEY handle = key.Handle();
    key.Close();
    EXPECT_FALSE(IsOpen(handle));
    key.Close();
    EXPECT_EQ(nullptr, key.Handle());
}

TEST_F(OrlRegKey, CopiesShareTheHandleUntilTheLastLetsGo)
{
    HKEY handle = nullptr;
    COrlRegKey last;
    {
        COrlRegKey first;
        ASSERT_TRUE(first.Open(HKEY_LOCAL_MACHINE, Key));
        handle = first.Handle();
        COrlRegKey second(first);
        last = second;
        EXPECT_EQ(handle, second.Handle());
        EXPECT_EQ(handle, last.Handle());
        EXPECT_EQ(Key, last.Path());
        second.Close();
        EXPECT_TRUE(IsOpen(handle));
    }
    COrlString text;
    EXPECT_TRUE(last.GetValue(L"Text", text));
    COrlRegKey& same = last;
    last = same;
    EXPECT_TRUE(IsOpen(handle));
    last.Close();
    EXPECT_FALSE(IsOpen(handle));
}

TEST_F(OrlRegKey, CopiesTheStateOfTheLastOperation)
{
    COrlRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, Key));
    COrlString text;
    EXPECT_FALSE(key.GetValue(L"Missing", text));
    const COrlRegKey copy(key);
    EXPECT_EQ(static_cast<ULONG>(ERROR_FILE_NOT_FOUND), copy.LastStatus());
}

} // namespace orl::test
