// COrlString: conversion between wide text and code pages.

#include "Common/Src/OrlString.h"
#include "tests/common/FailingNew.h"

#include <gtest/gtest.h>

#include <cstring>

namespace orl::test
{

namespace
{

constexpr unsigned Western = 1252;
constexpr unsigned Central = 1250;
constexpr unsigned Japanese = 932;

int ToWide(unsigned codePage, const char* source, int length, std::wstring& room)
{
    return COrlString::OrlMultiByteToWideChar(codePage, 0, source, length, room.data(), static_cast<int>(room.size()));
}

int ToBytes(unsigned codePage, const wchar_t* source, int length, std::string& room)
{
    return COrlString::OrlWideCharToMultiByte(codePage, 0, source, length, room.data(), static_cast<int>(room.size()),
                                              nullptr, nullptr);
}

struct PageCase
{
    unsigned codePage;
    const char* bytes;
    const wchar_t* wide;
};

constexpr PageCase PageCases[] = {
    {CP_ACP, "plain", L"plain"},
    {CP_ACP, "", L""},
    {CP_UTF8, "\xC3\xA4\xE6\x97\xA5", L"\u00E4\u65E5"},
    {Western, "\xE4\x80", L"\u00E4\u20AC"},
    {Central, "\xB3\xF3", L"\u0142\u00F3"},
    {Japanese, "\x93\xFA\x96\x7B", L"\u65E5\u672C"},
};

} // namespace

TEST(OrlStringCodePage, ConvertsAWholeTextWithItsEnd)
{
    for (const auto& [codePage, bytes, wide] : PageCases)
    {
        SCOPED_TRACE(codePage);
        std::wstring wideRoom(20, L'?');
        const int wideLength = static_cast<int>(std::wcslen(wide)) + 1;
        EXPECT_EQ(wideLength, ToWide(codePage, bytes, -1, wideRoom));
        EXPECT_STREQ(wide, wideRoom.c_str());
        EXPECT_EQ(L'?', wideRoom[static_cast<size_t>(wideLength)]) << "written beyond the text";

        std::string byteRoom(20, '?');
        const int byteLength = static_cast<int>(std::strlen(bytes)) + 1;
        EXPECT_EQ(byteLength, ToBytes(codePage, wide, -1, byteRoom));
        EXPECT_STREQ(bytes, byteRoom.c_str());
        EXPECT_EQ('?', byteRoom[static_cast<size_t>(byteLength)]) << "written beyond the text";
    }
}

TEST(OrlStringCodePage, ReplacesTheLastCharacterOfACountedTextByTheEnd)
{
    std::wstring wide(5, L'?');
    EXPECT_EQ(3, ToWide(CP_UTF8, "abcdef", 3, wide));
    EXPECT_EQ(std::wstring(L"ab\0??", 5), wide);
    std::string bytes(5, '?');
    EXPECT_EQ(3, ToBytes(CP_UTF8, L"abcdef", 3, bytes));
    EXPECT_EQ(std::string("ab\0??", 5), bytes);
    EXPECT_EQ(1, ToWide(CP_UTF8, "a", 1, wide));
    EXPECT_EQ(L'\0', wide[0]);
}

TEST(OrlStringCodePage, CutsACountedResultToTheSourcesLength)
{
    // Two characters make five bytes; the count of the source bounds the result.
    std::string bytes(8, '?');
    EXPECT_EQ(2, ToBytes(CP_UTF8, L"\u00E4\u65E5", 2, bytes));
    EXPECT_EQ(std::string("\xC3\0??????", 8), bytes);
    // Five bytes make two characters, and the last of those goes.
    std::wstring wide(8, L'?');
    EXPECT_EQ(2, ToWide(CP_UTF8, "\xC3\xA4\xE6\x97\xA5", 5, wide));
    EXPECT_EQ(std::wstring(L"\u00E4\0??????", 8), wide);
}

TEST(OrlStringCodePage, DoesNotConsultTheSizeOfItsDestination)
{
    wchar_t wide[8] = {};
    EXPECT_EQ(6, COrlString::OrlMultiByteToWideChar(CP_UTF8, 0, "abcde", -1, wide, 1));
    EXPECT_STREQ(L"abcde", wide);
    char bytes[8] = {};
    EXPECT_EQ(6, COrlString::OrlWideCharToMultiByte(CP_UTF8, 0, L"abcde", -1, bytes, 0, nullptr, nullptr));
    EXPECT_STREQ("abcde", bytes);
}

TEST(OrlStringCodePage, AnswersZeroToWhatCannotBeConverted)
{
    std::wstring wide(5, L'?');
    EXPECT_EQ(0, COrlString::OrlMultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 5));
    EXPECT_EQ(0, ToWide(CP_UTF8, "abc", 0, wide));
    EXPECT_EQ(0, ToWide(CP_UTF8, "abc", -2, wide));
    EXPECT_EQ(0, ToWide(4711, "abc", -1, wide));
    EXPECT_EQ(0, ToWide(CP_UTF8, nullptr, -1, wide));
    EXPECT_EQ(0, COrlString::OrlMultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "\xFF", -1, wide.data(), 5));
    EXPECT_EQ(std::wstring(5, L'?'), wide);

    std::string bytes(5, '?');
    EXPECT_EQ(0, COrlString::OrlWideCharToMultiByte(CP_UTF8, 0, L"abc", -1, nullptr, 5, nullptr, nullptr));
    EXPECT_EQ(0, ToBytes(CP_UTF8, L"abc", 0, bytes));
    EXPECT_EQ(0, ToBytes(CP_UTF8, L"abc", -2, bytes));
    EXPECT_EQ(0, ToBytes(4711, L"abc", -1, bytes));
    EXPECT_EQ(0, ToBytes(CP_UTF8, nullptr, -1, bytes));
    EXPECT_EQ(std::string(5, '?'), bytes);
}

TEST(OrlStringCodePage, AnswersZeroWithoutMemory)
{
    std::wstring wide(5, L'?');
    std::string bytes(5, '?');
    wchar_t* newWide = nullptr;
    char* newBytes = nullptr;
    int results[4] = {99, 99, 99, 99};
    {
        const AllocationFailure failure(1);
        results[0] = ToWide(CP_UTF8, "abc", -1, wide);
        results[1] = ToBytes(CP_UTF8, L"abc", -1, bytes);
        results[2] = COrlString::OrlMultiByteToWideChar_alloc(CP_UTF8, 0, "abc", newWide);
        results[3] = COrlString::OrlWideCharToMultiByte_alloc(CP_UTF8, 0, L"abc", newBytes, nullptr, nullptr);
    }
    for (const int result : results)
        EXPECT_EQ(0, result);
    EXPECT_EQ(std::wstring(5, L'?'), wide);
    EXPECT_EQ(std::string(5, '?'), bytes);
    EXPECT_EQ(nullptr, newWide);
    EXPECT_EQ(nullptr, newBytes);
}

TEST(OrlStringCodePage, TellsWhetherTheDefaultCharacterWasUsed)
{
    char bytes[8] = {};
    int used = 7;
    EXPECT_EQ(3, COrlString::OrlWideCharToMultiByte(Western, 0, L"a\u65E5", -1, bytes, 8, "!", &used));
    EXPECT_STREQ("a!", bytes);
    EXPECT_NE(0, used);
    EXPECT_EQ(3, COrlString::OrlWideCharToMultiByte(Western, 0, L"a\u00E4", -1, bytes, 8, "!", &used));
    EXPECT_STREQ("a\xE4", bytes);
    EXPECT_EQ(0, used);
}

TEST(OrlStringCodePage, AllocatesAndFreesConvertedTexts)
{
    for (const auto& [codePage, bytes, wide] : PageCases)
    {
        SCOPED_TRACE(codePage);
        wchar_t* newWide = nullptr;
        EXPECT_EQ(static_cast<int>(std::wcslen(wide)) + 1,
                  COrlString::OrlMultiByteToWideChar_alloc(codePage, 0, bytes, newWide));
        EXPECT_STREQ(wide, newWide);
        COrlString::OrlMultiByteToWideChar_dealloc(newWide);
        EXPECT_EQ(nullptr, newWide);

        char* newBytes = nullptr;
        EXPECT_EQ(static_cast<int>(std::strlen(bytes)) + 1,
                  COrlString::OrlWideCharToMultiByte_alloc(codePage, 0, wide, newBytes, nullptr, nullptr));
        EXPECT_STREQ(bytes, newBytes);
        COrlString::OrlWideCharToMultiByte_dealloc(newBytes);
        EXPECT_EQ(nullptr, newBytes);
    }
}

TEST(OrlStringCodePage, LeavesABufferThatIsThereAlone)
{
    wchar_t wide[] = L"mine";
    wchar_t* widePointer = wide;
    EXPECT_EQ(0, COrlString::OrlMultiByteToWideChar_alloc(CP_UTF8, 0, "other", widePointer));
    EXPECT_EQ(wide, widePointer);
    EXPECT_STREQ(L"mine", wide);
    char bytes[] = "mine";
    char* bytePointer = bytes;
    EXPECT_EQ(0, COrlString::OrlWideCharToMultiByte_alloc(CP_UTF8, 0, L"other", bytePointer, nullptr, nullptr));
    EXPECT_EQ(bytes, bytePointer);
    EXPECT_STREQ("mine", bytes);
}

TEST(OrlStringCodePage, AllocatesNothingForWhatCannotBeConverted)
{
    wchar_t* wide = nullptr;
    EXPECT_EQ(0, COrlString::OrlMultiByteToWideChar_alloc(4711, 0, "abc", wide));
    EXPECT_EQ(0, COrlString::OrlMultiByteToWideChar_alloc(CP_UTF8, 0, nullptr, wide));
    EXPECT_EQ(nullptr, wide);
    char* bytes = nullptr;
    EXPECT_EQ(0, COrlString::OrlWideCharToMultiByte_alloc(4711, 0, L"abc", bytes, nullptr, nullptr));
    EXPECT_EQ(0, COrlString::OrlWideCharToMultiByte_alloc(CP_UTF8, 0, nullptr, bytes, nullptr, nullptr));
    EXPECT_EQ(nullptr, bytes);
}

TEST(OrlStringCodePage, FreesNothingTwice)
{
    wchar_t* wide = nullptr;
    COrlString::OrlMultiByteToWideChar_dealloc(wide);
    EXPECT_EQ(nullptr, wide);
    char* bytes = nullptr;
    COrlString::OrlWideCharToMultiByte_dealloc(bytes);
    EXPECT_EQ(nullptr, bytes);
}

TEST(OrlStringCodePage, KnowsTheCodePagesOfLocales)
{
    EXPECT_EQ(GetACP(), GetCodePage(0));
    EXPECT_EQ(1252u, GetCodePage(0x0409)); // English, United States
    EXPECT_EQ(1252u, GetCodePage(0x0407)); // German
    EXPECT_EQ(1250u, GetCodePage(0x0415)); // Polish
    EXPECT_EQ(932u, GetCodePage(0x0411));  // Japanese
    EXPECT_EQ(0u, GetCodePage(0xFFFE));
}

} // namespace orl::test
