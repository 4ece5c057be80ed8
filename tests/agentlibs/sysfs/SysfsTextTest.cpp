// What the texts of attributes and names mean.

#include "agentlibs/fcoelink/WorldWideName.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"
#include "agentlibs/fcoelink/sysfs/SysfsTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orl::sysfs
{
namespace
{

using namespace std::string_view_literals;

TEST(SysfsText, AttributeLosesItsNewlineAndPadding)
{
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"\n", ""},
        {"up\n", "up"},
        {"LIO-ORG \n", "LIO-ORG"},
        {"  leading", "leading"},
        {"two words  \n", "two words"},
        {" \t\r\n", ""},
        {"kept\nsecond\n", "kept\nsecond"},
        {"cut\0here\n"sv, "cut"},
        {"\0all"sv, ""},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(AttributeText(bytes), text) << bytes;
}

TEST(SysfsText, WideTextIsDecodedAndCannotSteerATerminal)
{
    EXPECT_EQ(Wide("plain"), L"plain");
    EXPECT_EQ(Wide("gr\xC3\xBC\xC3\x9F"), L"gr\u00FC\u00DF");
    EXPECT_EQ(Wide("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(Wide("a\x1B[31mb\tc\x7F"), L"a [31mb c ");
    EXPECT_EQ(Wide(""), L"");
}

TEST(SysfsText, NamesAreOrderedByTheirNumbers)
{
    std::vector<std::string> names{"fcf_10",
                                   "fcf_2",
                                   "fcf_0",
                                   "rport-0:0-10",
                                   "rport-0:0-9",
                                   "rport-0:1-0",
                                   "fcf_",
                                   "host",
                                   "fcf_02",
                                   "fcf_99999999999999999999999",
                                   "fcf_100000000000000000000000"};
    std::sort(names.begin(), names.end(), NaturalLess);
    EXPECT_EQ(names, (std::vector<std::string>{"fcf_", "fcf_0", "fcf_02", "fcf_2", "fcf_10",
                                               "fcf_99999999999999999999999", "fcf_100000000000000000000000", "host",
                                               "rport-0:0-9", "rport-0:0-10", "rport-0:1-0"}));
}

TEST(SysfsText, NaturalOrderIsStrict)
{
    const char* const names[] = {"", "0", "00", "1", "01", "a", "a0", "a00b", "a0b", "a1", "b"};
    for (const char* left : names)
        for (const char* right : names)
        {
            EXPECT_FALSE(NaturalLess(left, right) && NaturalLess(right, left)) << left << ' ' << right;
            EXPECT_EQ(std::string_view(left) == right, !NaturalLess(left, right) && !NaturalLess(right, left))
                << left << ' ' << right;
        }
}

TEST(SysfsText, NumbersAreDecimalOrHexadecimalAndWhole)
{
    const std::pair<std::string_view, std::optional<std::uint64_t>> cases[] = {
        {"0", 0},
        {"42", 42},
        {"0x1a2B", 0x1A2B},
        {"0X10", 16},
        {"0xffffffffffffffff", UINT64_MAX},
        {"18446744073709551615", UINT64_MAX},
        {"18446744073709551616", std::nullopt},
        {"0x10000000000000000", std::nullopt},
        {"", std::nullopt},
        {"0x", std::nullopt},
        {"-1", std::nullopt},
        {"+1", std::nullopt},
        {" 1", std::nullopt},
        {"1 ", std::nullopt},
        {"12ab", std::nullopt},
        {"0x12g", std::nullopt},
        {"0x0x1", std::nullopt},
        {"off", std::nullopt},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(ParseNumber(text), number) << text;
}

TEST(SysfsText, A32BitNumberThatDoesNotFitIsZero)
{
    EXPECT_EQ(Number32("0xffffffff"), UINT32_MAX);
    EXPECT_EQ(Number32("4294967296"), 0u);
    EXPECT_EQ(Number32("junk"), 0u);
    EXPECT_EQ(Number32("0x010300"), 0x10300u);
}

TEST(SysfsText, KernelNamesBecomeSixteenDigits)
{
    EXPECT_EQ(WorldWideName("0x2000525400fc0001"), L"2000525400fc0001");
    EXPECT_EQ(WorldWideName("0x50060B0000C26604"), L"50060b0000c26604");
    EXPECT_EQ(WorldWideName("0xffffffffffffffff"), L"ffffffffffffffff");
    EXPECT_EQ(WorldWideName("0x1"), L"0000000000000001");
    EXPECT_EQ(WorldWideName("0x0"), L"");
    EXPECT_EQ(WorldWideName(""), L"");
    EXPECT_EQ(WorldWideName("nonsense"), L"");
}

TEST(SysfsText, CountersAreNamedInWords)
{
    EXPECT_EQ(Words("tx_frames"), L"Tx frames");
    EXPECT_EQ(Words("seconds_since_last_reset"), L"Seconds since last reset");
    EXPECT_EQ(Words("lesb_vlink_fail"), L"Lesb vlink fail");
    EXPECT_EQ(Words("X"), L"X");
    EXPECT_EQ(Words(""), L"");
}

TEST(SysfsText, NumbersOfANameNeedTheWholeName)
{
    EXPECT_EQ(NumbersOf<3>("rport-0:0-12", "rport-"), (std::array<std::uint64_t, 3>{0, 0, 12}));
    EXPECT_EQ(NumbersOf<4>("1:2:3:4"), (std::array<std::uint64_t, 4>{1, 2, 3, 4}));
    EXPECT_EQ(NumbersOf<4>("1:2:3:18446744073709551615"), (std::array<std::uint64_t, 4>{1, 2, 3, UINT64_MAX}));
    EXPECT_EQ(NumbersOf<1>("host7", "host"), (std::array<std::uint64_t, 1>{7}));
    for (const char* name : {"", "1:2:3", "1:2:3:4:5", "1:2:3:x", "1:2:3:", ":2:3:4", "1 2 3 4", "1:2:3:4 ",
                             "1:2:3:18446744073709551616", "-1:2:3:4"})
        EXPECT_FALSE(NumbersOf<4>(name)) << name;
    EXPECT_FALSE(NumbersOf<1>("hosts", "host"));
    EXPECT_FALSE(NumbersOf<1>("host", "host"));
    EXPECT_FALSE(NumbersOf<1>("fcf_dev_loss_tmo", "fcf_"));
}

TEST(SysfsText, ALinkLeadsToADeviceOrNowhere)
{
    const std::string bus = "sys/bus/fcoe/devices";
    const std::pair<std::string, std::string> cases[] = {
        {"../../../devices/virtual/net/eth0/ctlr_0", "virtual/net/eth0/ctlr_0"},
        {".././../../devices//virtual/net/eth0/ctlr_0", "virtual/net/eth0/ctlr_0"},
        {"../../../devices/a/../b", "b"},
        {"", ""},
        {"/sys/devices/virtual/net/eth0/ctlr_0", ""},
        {"../../../devices", ""},
        {"../../../devices/", ""},
        {"../../../devicesx/a", ""},
        {"../../../../etc/passwd", ""},
        {"../../../../../../../../etc/passwd", ""},
        {"ctlr_0", ""},
        {"../../../devices/../../../../../../sys/devices/a", ""},
    };
    for (const auto& [link, device] : cases)
        EXPECT_EQ(ResolveDevice(bus, link), device) << link;
}

TEST(WorldWideName, UsersMayWriteItInThreeFormsAndAnyCase)
{
    for (const wchar_t* text :
         {L"2101525400FC00Ab", L"0x2101525400fc00ab", L"0X2101525400FC00AB", L"21:01:52:54:00:fc:00:AB"})
        EXPECT_EQ(ParseWorldWideName(text), 0x2101525400FC00ABu) << text;
}

TEST(WorldWideName, NothingElseIsAName)
{
    for (const wchar_t* text :
         {L"", L"0", L"0x", L"2101525400fc00a", L"2101525400fc00abc", L"0x2101525400fc00a", L"0000000000000000",
          L"0x0000000000000000", L"00:00:00:00:00:00:00:00", L"2101525400fc00ag", L"21-01-52-54-00-fc-00-ab",
          L"21:01:52:54:00:fc:00:a", L"21:01:52:54:00:fc:0:0ab", L" 2101525400fc00ab", L"2101525400fc00ab\n",
          L"0x21:01:52:54:00:fc:00:ab", L"2101525400fc00a\uFF11"})
        EXPECT_FALSE(ParseWorldWideName(text)) << text;
}

TEST(WorldWideName, IsWrittenWithSixteenLowerCaseDigits)
{
    EXPECT_EQ(FormatWorldWideName(0x2101525400FC00AB), L"2101525400fc00ab");
    EXPECT_EQ(FormatWorldWideName(UINT64_MAX), L"ffffffffffffffff");
    EXPECT_EQ(FormatWorldWideName(1), L"0000000000000001");
    EXPECT_EQ(FormatWorldWideName(0), L"");
}

} // namespace
} // namespace orl::sysfs
