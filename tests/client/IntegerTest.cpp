// Whole numbers: what is one, and their order.
#include "tools/orlwmi/Integer.h"

#include <gtest/gtest.h>

using namespace orl::client;

namespace
{

TEST(Integer, IsReadWholeOrNotAtAll)
{
    struct Case
    {
        const char* text;
        std::optional<Integer> number;
    };
    const Case cases[] = {
        {"0", Integer{false, 0}},
        {"-0", Integer{false, 0}},
        {"+7", Integer{false, 7}},
        {"-7", Integer{true, 7}},
        {"0x1f", Integer{false, 31}},
        {"-0X10", Integer{true, 16}},
        {"18446744073709551615", Integer{false, UINT64_MAX}},
        {"18446744073709551616", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {"0x", std::nullopt},
        {"1 ", std::nullopt},
        {" 1", std::nullopt},
        {"--1", std::nullopt},
        {"+-1", std::nullopt},
        {"1.5", std::nullopt},
        {"f", std::nullopt},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(ParseInteger(c.text), c.number) << c.text;
    }
}

TEST(Integer, IsOrderedByValue)
{
    const char* const ascending[] = {"-18446744073709551615", "-5", "-3", "0", "3", "5", "18446744073709551615"};
    for (size_t i = 1; i < std::size(ascending); ++i)
    {
        EXPECT_LT(*ParseInteger(ascending[i - 1]), *ParseInteger(ascending[i])) << ascending[i];
        EXPECT_GT(*ParseInteger(ascending[i]), *ParseInteger(ascending[i - 1])) << ascending[i];
    }
}

} // namespace
