// COrlString: formatting.

#include "Common/Src/OrlString.h"
#include "tests/common/FailingNew.h"
#include "tests/common/TraceTest.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace orl::test
{

TEST(OrlStringFormat, FormatsAsTheWidePrintfOfWindows)
{
    COrlString text(L"before");
    EXPECT_EQ(14, text.FormatString(L"%s-%d %04X %c", L"eth0", -3, 0xAB, L'z'));
    EXPECT_EQ(L"eth0--3 00AB z", text);
    EXPECT_EQ(5, text.FormatString(L"%hs%%", "thin"));
    EXPECT_EQ(L"thin%", text);
    EXPECT_EQ(16, text.FormatString(L"%I64X", 0xFEDCBA9876543210ULL));
    EXPECT_EQ(L"FEDCBA9876543210", text);
    EXPECT_EQ(0, text.FormatString(L""));
    EXPECT_EQ(L"", text);
}

TEST(OrlStringFormat, MayFormatItself)
{
    COrlString text(L"abc");
    EXPECT_EQ(7, text.FormatString(L"%s,%s", text.c_str(), text.c_str()));
    EXPECT_EQ(L"abc,abc", text);
}

TEST(OrlStringFormat, CutsTo1023Characters)
{
    const struct
    {
        size_t length;
        size_t kept;
        int result;
    } cases[] = {{1022, 1022, 1022}, {1023, 1023, 1023}, {1024, 1023, -1}, {1025, 1023, -1}, {50000, 1023, -1}};
    for (const auto& [length, kept, result] : cases)
    {
        COrlString text;
        EXPECT_EQ(result, text.FormatString(L"%s", std::wstring(length, L'x').c_str())) << length;
        EXPECT_EQ(std::wstring(kept, L'x'), text) << length;
    }
}

TEST(OrlStringFormat, StopsAtAZeroThatWasFormatted)
{
    COrlString text;
    EXPECT_EQ(3, text.FormatString(L"a%cb", L'\0'));
    EXPECT_EQ(L"a", text);
}

TEST(OrlStringFormat, RefusesAMissingFormat)
{
    COrlString text(L"before");
    const wchar_t* none = nullptr;
    EXPECT_EQ(-1, text.FormatString(none));
    EXPECT_EQ(L"", text);
}

TEST(OrlStringFormat, LeavesTheStringWithoutMemoryForItsBuffer)
{
    COrlString text(L"before");
    int result = 99;
    {
        const AllocationFailure failure(1);
        result = text.FormatString(L"%d", 5);
    }
    EXPECT_EQ(0, result);
    EXPECT_EQ(L"before", text);
}

TEST(OrlStringFormat, NeverThrowsWithoutMemoryForTheText)
{
    const std::wstring longText(500, L'x');
    for (unsigned nth = 1; nth < 6; ++nth)
    {
        COrlString text(L"before");
        int result = 99;
        {
            const AllocationFailure failure(nth);
            EXPECT_NO_THROW(result = text.FormatString(L"%s", longText.c_str())) << nth;
        }
        // The whole text, or what was there before: nothing in between.
        EXPECT_TRUE(text == L"before" || text == longText) << nth;
        EXPECT_TRUE(result == 0 || result == 500 || result == -1) << nth << ": " << result;
    }
}

TEST(OrlStringFormat, WarningTakesItsArgumentsInOrder)
{
    const struct
    {
        const wchar_t* text;
        std::vector<COrlString> arguments;
        const wchar_t* message;
    } cases[] = {
        {L"Port %s on %s", {L"1", L"2", L"3"}, L"Port 1 on 2\n3"},
        {L"Port %s on %s", {L"1"}, L"Port 1 on %s"},
        {L"Port %s", {}, L"Port %s"},
        {L"%s%s", {L"a", L"b"}, L"ab"},
        {L"plain", {L"a", L"b"}, L"plain\na\nb"},
        {L"", {L"a"}, L"\na"},
        {L"%d %% %S %s", {L"a"}, L"%d %% %S a"},
        {L"%%s", {L"a"}, L"%a"},
        {L"100%", {L"a"}, L"100%\na"},
        {L"% s", {L"a"}, L"% s\na"},
        {L"%s", {L""}, L""},
        // An argument's own place takes the next argument.
        {L"%s and %s", {L"<%s>", L"1", L"2"}, L"<1> and 2"},
        {L"%s", {L"%s", L"%s", L"end"}, L"end"},
        {L"%s", {L"%", L"s"}, L"%\ns"},
        // Once an argument found no place, the rest is appended too.
        {L"plain", {L"%s", L"a", L"b"}, L"plain\n%s\na\nb"},
    };
    for (const auto& [text, arguments, message] : cases)
    {
        COrlString warning(text);
        warning.FormatWarningMessage(arguments);
        EXPECT_EQ(message, warning) << ToUtf8(text);
    }
}

TEST(OrlStringFormat, WarningDoesNotChangeTheCallersArguments)
{
    const std::vector<COrlString> arguments = {L"a", L"b"};
    COrlString warning(L"%s");
    warning.FormatWarningMessage(arguments);
    EXPECT_THAT(arguments, ElementsAre(L"a", L"b"));
}

namespace
{

class OrlStringTrace : public TraceTest
{
};

} // namespace

TEST_F(OrlStringTrace, ANumberTooLongIsReportedToTheHandler)
{
    StartLog();
    COrlString text(L"before");
    text = 1000000000;
    EXPECT_EQ(L"", text);
    EXPECT_THAT(Messages(), ElementsAre("OrlSecureInvalidParameterHandler : ERROR"));
}

TEST_F(OrlStringTrace, RangeAndListTestsTraceThemselves)
{
    StartLog();
    COrlString(L"abc").IsWithinAsciiRange(0x20, 0x7E);
    COrlString::CompareVectors({L"a"}, {L"a"}, true);
    COrlString::CompareVectors({L"a"}, {}, true);
    EXPECT_THAT(Messages(),
                ElementsAre("ENTRY:  COrlString::IsWithinAsciiRange", "EXIT:  COrlString::IsWithinAsciiRange",
                            "ENTRY:  COrlString::CompareVectors", "EXIT:  COrlString::CompareVectors, bReturn=true",
                            "ENTRY:  COrlString::CompareVectors", "EXIT:  COrlString::CompareVectors, bReturn=false"));
}

} // namespace orl::test
