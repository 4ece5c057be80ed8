// Conversions between wide text and code pages.
#include <windows.h>

#include <gtest/gtest.h>

namespace
{

std::wstring Decode(UINT page, const std::string& bytes, DWORD flags = 0)
{
    wchar_t text[256];
    const int length = MultiByteToWideChar(page, flags, bytes.data(), static_cast<int>(bytes.size()), text, 256);
    return std::wstring(text, static_cast<size_t>(length));
}

std::string Encode(UINT page, const std::wstring& text, DWORD flags = 0)
{
    char bytes[256];
    const int length =
        WideCharToMultiByte(page, flags, text.data(), static_cast<int>(text.size()), bytes, 256, nullptr, nullptr);
    return std::string(bytes, static_cast<size_t>(length));
}

struct Pair
{
    UINT page;
    const char* bytes;
    const wchar_t* text;
};

const Pair Pairs[] = {
    {CP_UTF8, "plain", L"plain"},
    {CP_UTF8, "\xC3\xA4\xE2\x82\xAC\xE4\xB8\xAD", L"\u00e4\u20ac\u4e2d"},
    {CP_UTF8, "\xF0\x9F\x98\x80", L"\U0001F600"},
    {1252, "\xE4\x80\x9F", L"\u00e4\u20ac\u0178"},
    {CP_ACP, "\xE4\x80", L"\u00e4\u20ac"},
    {1250, "\xB9\xE6\xF8\x9E", L"\u0105\u0107\u0159\u017e"},
    {1251, "\xCF\xF0\xE8", L"\u041f\u0440\u0438"},
    {932, "\x93\xFA\x96\x7B\xB1\x5C", L"\u65e5\u672c\uff71\\"},
    {936, "\xD6\xD0\xCE\xC4", L"\u4e2d\u6587"},
};

TEST(CodePage, BothDirectionsAgree)
{
    for (const Pair& pair : Pairs)
    {
        EXPECT_EQ(Decode(pair.page, pair.bytes), pair.text) << pair.page;
        EXPECT_EQ(Encode(pair.page, pair.text), pair.bytes) << pair.page;
    }
}

TEST(CodePage, TheAnsiPageIsWesternHere)
{
    EXPECT_EQ(GetACP(), 1252u);
}

TEST(CodePage, ALengthOfMinusOneTakesTheTerminatorToo)
{
    wchar_t wide[8];
    char narrow[8];
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", -1, wide, 8), 4);
    EXPECT_STREQ(wide, L"abc");
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"abc", -1, narrow, 8, nullptr, nullptr), 4);
    EXPECT_STREQ(narrow, "abc");
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", -1, wide, 8), 4);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"", -1, narrow, 8, nullptr, nullptr), 1);
}

TEST(CodePage, WithoutRoomTheLengthIsAsked)
{
    for (const UINT page : std::initializer_list<UINT>{CP_UTF8, 1252, 932})
    {
        EXPECT_EQ(MultiByteToWideChar(page, 0, "abc", 3, nullptr, 0), 3) << page;
        EXPECT_EQ(WideCharToMultiByte(page, 0, L"abc", 3, nullptr, 0, nullptr, nullptr), 3) << page;
    }
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u20ac", 1, nullptr, 0, nullptr, nullptr), 3);
}

TEST(CodePage, TooLittleRoomIsAnError)
{
    wchar_t wide[2];
    char narrow[2];
    for (const UINT page : std::initializer_list<UINT>{CP_UTF8, 1252, 932})
    {
        SetLastError(0);
        EXPECT_EQ(MultiByteToWideChar(page, 0, "abc", 3, wide, 2), 0) << page;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER)) << page;
        SetLastError(0);
        EXPECT_EQ(WideCharToMultiByte(page, 0, L"abc", 3, narrow, 2, nullptr, nullptr), 0) << page;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER)) << page;
    }
}

TEST(CodePage, WrongArgumentsAreErrors)
{
    wchar_t wide[8];
    const auto fails = [&](int result)
    {
        const DWORD error = GetLastError();
        SetLastError(0);
        return result == 0 && error == static_cast<DWORD>(ERROR_INVALID_PARAMETER);
    };
    EXPECT_TRUE(fails(MultiByteToWideChar(CP_UTF8, 0, nullptr, 3, wide, 8)));
    EXPECT_TRUE(fails(MultiByteToWideChar(CP_UTF8, 0, "abc", 0, wide, 8)));
    EXPECT_TRUE(fails(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, nullptr, 8)));
    EXPECT_TRUE(fails(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, wide, -1)));
    EXPECT_TRUE(fails(MultiByteToWideChar(4711, 0, "abc", 3, wide, 8)));
    EXPECT_TRUE(fails(WideCharToMultiByte(4711, 0, L"abc", 3, nullptr, 0, nullptr, nullptr)));
}

TEST(CodePage, Utf8NeedsNoDefaultCharacter)
{
    char bytes[8] = {};
    BOOL used = TRUE;
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u4e2d", -1, bytes, 8, "#", &used), 4);
    EXPECT_STREQ(bytes, "\xE4\xB8\xAD");
    EXPECT_FALSE(used);
}

TEST(CodePage, FlagsThatThePageDoesNotKnowAreErrors)
{
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0x10000, "abc", 3, nullptr, 0), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_FLAGS));
    SetLastError(0);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0x10000, L"abc", 3, nullptr, 0, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_FLAGS));
}

TEST(CodePage, WhatIsNoUtf8BecomesTheReplacementCharacter)
{
    EXPECT_EQ(Decode(CP_UTF8, "a\xFF"
                              "b"),
              L"a\ufffd"
              L"b");
    EXPECT_EQ(Decode(CP_UTF8, "a\x80"), L"a\ufffd");
    EXPECT_EQ(Decode(CP_UTF8, "a\xE2\x82"), L"a\ufffd");
    EXPECT_EQ(Decode(CP_UTF8, "\xE2\x82"
                              "a"),
              L"\ufffd"
              L"a");
    EXPECT_EQ(Decode(CP_UTF8, "\xC0\x80"), L"\ufffd\ufffd");
}

TEST(CodePage, WhatIsNoUtf8IsRefusedWhenAsked)
{
    for (const char* bytes : {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
    {
        SetLastError(0);
        EXPECT_EQ(Decode(CP_UTF8, bytes, MB_ERR_INVALID_CHARS), L"");
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
    }
    EXPECT_EQ(Decode(CP_UTF8, "\xC3\xA4", MB_ERR_INVALID_CHARS), L"\u00e4");
}

TEST(CodePage, AHalfPairIsNoCharacter)
{
    const wchar_t half[] = {static_cast<wchar_t>(0xD83D), 0};
    EXPECT_EQ(Encode(CP_UTF8, half), "\xEF\xBF\xBD");
    SetLastError(0);
    EXPECT_EQ(Encode(CP_UTF8, half, WC_ERR_INVALID_CHARS), "");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
}

TEST(CodePage, ACharacterThatThePageLacksBecomesTheDefaultOne)
{
    char bytes[8] = {};
    BOOL used = FALSE;
    EXPECT_EQ(WideCharToMultiByte(1252, 0,
                                  L"a\u4e2d"
                                  L"b",
                                  -1, bytes, 8, "#", &used),
              4);
    EXPECT_STREQ(bytes, "a#b");
    EXPECT_TRUE(used);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"abc", -1, bytes, 8, "#", &used), 4);
    EXPECT_FALSE(used);
    EXPECT_EQ(Encode(1252, L"\u4e2d"), "?");
}

TEST(CodePage, TheControlCodesOfASinglePageStandForThemselves)
{
    EXPECT_EQ(Decode(1252, "\x81\x8D\x9D"), L"\x81\x8d\x9d");
    EXPECT_EQ(Encode(1252, L"\x81\x8d\x9d"), "\x81\x8D\x9D");
    EXPECT_EQ(Decode(1252, "\x81", MB_ERR_INVALID_CHARS), L"\x81");
}

TEST(CodePage, LocalesHaveTheirAnsiPages)
{
    const std::pair<LCID, const wchar_t*> cases[] = {{0x0409, L"1252"}, {0x0407, L"1252"}, {0x0415, L"1250"},
                                                     {0x0419, L"1251"}, {0x0411, L"932"},  {0x0804, L"936"},
                                                     {0x0404, L"950"},  {0x0412, L"949"},  {0x041F, L"1254"}};
    for (const auto& [locale, page] : cases)
    {
        wchar_t text[16] = {};
        EXPECT_EQ(GetLocaleInfoW(locale, LOCALE_IDEFAULTANSICODEPAGE, text, 16),
                  static_cast<int>(std::wcslen(page) + 1))
            << locale;
        EXPECT_STREQ(text, page) << locale;
    }
}

TEST(CodePage, ALocaleThatIsNoneIsAnError)
{
    wchar_t text[16] = L"?";
    SetLastError(0);
    EXPECT_EQ(GetLocaleInfoW(0x03FF, LOCALE_IDEFAULTANSICODEPAGE, text, 16), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_IDEFAULTANSICODEPAGE, nullptr, 0), 5);
    EXPECT_EQ(GetLocaleInfoW(0x0409, LOCALE_IDEFAULTANSICODEPAGE, text, 4), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

} // namespace
