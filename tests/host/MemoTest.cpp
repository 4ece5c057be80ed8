// What is worked out once and then known.
#include "host/Memo.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orl::test
{
namespace
{

TEST(HostMemo, MakesAValueTheFirstTimeAndAnswersTheSameOneAfterwards)
{
    Memo<int, std::string> memo;
    int made = 0;
    const auto make = [&]
    {
        ++made;
        return std::string("made");
    };
    const std::string& first = memo.Get(1, make);
    EXPECT_EQ("made", first);
    EXPECT_EQ(&first, &memo.Get(1, make));
    EXPECT_EQ(1, made);
    EXPECT_NE(&first, &memo.Get(2, make));
    EXPECT_EQ(2, made);
}

TEST(HostMemo, KeepsNothingWhenAValueCannotBeMade)
{
    Memo<int, std::string> memo;
    EXPECT_THROW(memo.Get(1, []() -> std::string { throw std::runtime_error("not registered"); }), std::runtime_error);
    EXPECT_EQ("now", memo.Get(1, [] { return std::string("now"); }));
}

TEST(HostMemo, AllThreadsGetOneValue)
{
    Memo<int, int> memo;
    std::atomic<int> made = 0;
    std::vector<const int*> answers(8);
    {
        std::vector<std::jthread> threads;
        for (const int*& answer : answers)
            threads.emplace_back([&] { answer = &memo.Get(7, [&] { return ++made; }); });
    }
    EXPECT_GE(made, 1);
    for (const int* answer : answers)
        EXPECT_EQ(answers.front(), answer);
}

} // namespace
} // namespace orl::test
