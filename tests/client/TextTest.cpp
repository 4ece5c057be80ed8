// Texts of the client: code points, what a terminal may be shown, display width.
#include "tools/orlwmi/Text.h"

#include <gtest/gtest.h>

using namespace orl::client;

namespace
{

TEST(ClientText, TakesOneCodePointAtATime)
{
    struct Case
    {
        std::string utf8;
        std::vector<char32_t> codePoints;
    };
    const Case cases[] = {
        {"aZ", {U'a', U'Z'}},
        {"\xC3\xA9", {0xE9}},
        {"\xE2\x82\xAC", {0x20AC}},
        {"\xF0\x9F\x98\x80", {0x1F600}},
        {"\xF4\x8F\xBF\xBF", {0x10FFFF}},
        {"\xF4\x90\x80\x80", {0xFFFD}},       // past the last code point
        {"\xED\xA0\x80", {0xFFFD}},           // a surrogate
        {"\xC0\xAF", {0xFFFD, 0xFFFD}},       // no lead byte
        {"\xE0\x80\x80", {0xFFFD}},           // longer than needed
        {"\xF0\x80\x80\x80", {0xFFFD}},       // longer than needed
        {"\xE2\x82", {0xFFFD}},               // cut
        {"\xE2\x82zz", {0xFFFD, U'z', U'z'}}, // cut by another character
        {"\x80", {0xFFFD}},                   // no beginning
        {"\xFF\xFE", {0xFFFD, 0xFFFD}},       // never in UTF-8
        {std::string("a\0b", 3), {U'a', 0, U'b'}},
    };
    for (const auto& c : cases)
    {
        std::string_view left = c.utf8;
        std::vector<char32_t> taken;
        while (!left.empty())
        {
            taken.push_back(TakeCodePoint(left));
        }
        EXPECT_EQ(taken, c.codePoints) << Printable(c.utf8);
    }
}

TEST(ClientText, WritesCodePointsAsUtf8)
{
    std::string text;
    for (const char32_t c : {U'a', U'\u00E9', U'\u20AC', U'\U0001F600'})
    {
        AppendUtf8(text, c);
    }
    EXPECT_EQ(text, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(ClientText, ShowsNothingThatATerminalWouldObey)
{
    struct Case
    {
        std::string text;
        std::string shown;
    };
    const Case cases[] = {
        {"eth0.1002", "eth0.1002"},
        {"", ""},
        {"a\nb\r\tc", "a\\nb\\r\\tc"},
        {"\x1B[2J", "\\x1B[2J"},
        {std::string("\0", 1), "\\x00"},
        {"\x7F", "\\x7F"},
        {"\xC2\x9B"
         "31m",
         "\\x9B31m"}, // the one-character form of the control sequence introducer
        {"\xE2\x80\xAE"
         "txt",
         "\\u202Etxt"},              // turns the direction of writing
        {"\xE2\x80\xA8", "\\u2028"}, // a line separator
        {"\xFF", "\xEF\xBF\xBD"},
        {"virtual\\net", "virtual\\net"},
        {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(Printable(c.text), c.shown);
    }
}

TEST(ClientText, MeasuresColumnsOfATerminal)
{
    struct Case
    {
        std::string text;
        size_t width;
    };
    const Case cases[] = {
        {"", 0},
        {"abc", 3},
        {"gr\xC3\xBC\xC3\x9F", 4},
        {"\xE6\x97\xA5\xE6\x9C\xAC", 4}, // two ideographs
        {"e\xCC\x81", 1},                // a letter and its accent
        {"\xF0\x9F\x98\x80", 2},         // a face
        {"\xEF\xBC\xA1", 2},             // a fullwidth letter
        {"\xEF\xBD\xB1", 1},             // a halfwidth one
        {"\xE1\x84\x80\xE1\x85\xA1", 2}, // a syllable of two jamo
        {"\xE2\x82\xAC", 1},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(DisplayWidth(c.text), c.width) << c.text;
    }
}

TEST(ClientText, ComparesNamesWithoutCase)
{
    EXPECT_TRUE(SameName("DeviceID", "deviceid"));
    EXPECT_TRUE(SameName("", ""));
    EXPECT_FALSE(SameName("DeviceID", "DeviceI"));
    EXPECT_FALSE(SameName("[", "{")); // 32 apart, as letters are
}

} // namespace
