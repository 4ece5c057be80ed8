// BSTRs: counted texts.
#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace
{

TEST(Bstr, ItsLengthInBytesStandsInFrontOfTheCharacters)
{
    BSTR text = SysAllocString(L"eth0");
    uint32_t prefix = 0;
    std::memcpy(&prefix, reinterpret_cast<const char*>(text) - sizeof prefix, sizeof prefix);
    EXPECT_EQ(prefix, 4 * sizeof(wchar_t));
    EXPECT_EQ(SysStringByteLen(text), 4 * sizeof(wchar_t));
    EXPECT_EQ(SysStringLen(text), 4u);
    EXPECT_STREQ(text, L"eth0");
    SysFreeString(text);
}

TEST(Bstr, NullIsAnEmptyText)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    SysFreeString(nullptr);
}

TEST(Bstr, AnEmptyTextIsNotNull)
{
    BSTR text = SysAllocString(L"");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), 0u);
    EXPECT_EQ(text[0], L'\0');
    SysFreeString(text);
}

TEST(Bstr, ACountedTextKeepsItsZerosAndIsTerminated)
{
    BSTR text = SysAllocStringLen(L"a\0bcd", 3);
    EXPECT_EQ(std::wstring(text, SysStringLen(text)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(text[3], L'\0');
    SysFreeString(text);
}

TEST(Bstr, WithoutASourceTheTextHasRoomAndATerminator)
{
    BSTR text = SysAllocStringLen(nullptr, 5);
    EXPECT_EQ(SysStringLen(text), 5u);
    EXPECT_EQ(text[5], L'\0');
    SysFreeString(text);
}

TEST(Bstr, BytesMayEndInsideACharacter)
{
    BSTR bytes = SysAllocStringByteLen("abc", 3);
    EXPECT_EQ(SysStringByteLen(bytes), 3u);
    EXPECT_EQ(SysStringLen(bytes), 3 / sizeof(wchar_t));
    EXPECT_EQ(std::memcmp(bytes, "abc", 3), 0);
    SysFreeString(bytes);
}

TEST(Bstr, ReallocationReplacesTheText)
{
    BSTR text = SysAllocString(L"first");
    EXPECT_TRUE(SysReAllocString(&text, L"the second"));
    EXPECT_STREQ(text, L"the second");
    EXPECT_TRUE(SysReAllocStringLen(&text, L"third", 2));
    EXPECT_STREQ(text, L"th");
    EXPECT_EQ(SysStringLen(text), 2u);
    SysFreeString(text);
}

TEST(Bstr, ATextOfItsOwnPartCanReplaceIt)
{
    BSTR text = SysAllocString(L"prefix-rest");
    EXPECT_TRUE(SysReAllocStringLen(&text, text + 7, 4));
    EXPECT_STREQ(text, L"rest");
    SysFreeString(text);
}

TEST(Bstr, ALengthThatDoesNotFitGivesNull)
{
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(SysAllocStringByteLen(nullptr, 0xFFFFFFFF), nullptr);
}

} // namespace
