// COrlPointerArray: what it deletes, and when.

#include "agent/OrlPointerArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <string>

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Says its number when it is deleted.
struct Element
{
    Element(int ownNumber, std::vector<int>& deletedNumbers) : number(ownNumber), deleted(deletedNumbers) {}
    ~Element() { deleted.push_back(number); }
    int number;
    std::vector<int>& deleted;
};

class PointerArray : public ::testing::Test
{
protected:
    void Fill(COrlPointerArray<Element*>& array, int count)
    {
        for (int number = 1; number <= count; ++number)
            array.push_back(new Element(number, deleted));
    }

    std::vector<int> deleted;
};

TEST_F(PointerArray, DeletesItsElementsInOrderWhenItIsDestroyed)
{
    {
        COrlPointerArray<Element*> array;
        Fill(array, 3);
        EXPECT_THAT(deleted, IsEmpty());
    }
    EXPECT_THAT(deleted, ElementsAre(1, 2, 3));
}

TEST_F(PointerArray, SkipsNullPointers)
{
    {
        COrlPointerArray<Element*> array;
        array.push_back(nullptr);
        Fill(array, 2);
        array.push_back(nullptr);
        EXPECT_EQ(array.size(), 4U);
    }
    EXPECT_THAT(deleted, ElementsAre(1, 2));
}

TEST_F(PointerArray, ErasingARangeLeavesTheOthersUntouchedAndOwned)
{
    {
        COrlPointerArray<Element*> array;
        Fill(array, 5);
        const auto next = array.erase(array.begin() + 1, array.begin() + 3);
        EXPECT_THAT(deleted, ElementsAre(2, 3));
        ASSERT_EQ(array.size(), 3U);
        EXPECT_EQ((*next)->number, 4);
        EXPECT_EQ(array[0]->number, 1);
        EXPECT_EQ(array[1]->number, 4);
        EXPECT_EQ(array[2]->number, 5);
    }
    EXPECT_THAT(deleted, ElementsAre(2, 3, 1, 4, 5));
}

TEST_F(PointerArray, ErasesNothingOfAnEmptyRangeAndOneElementAtAPosition)
{
    COrlPointerArray<Element*> array;
    array.erase(array.begin(), array.end());
    Fill(array, 2);
    array.erase(array.begin(), array.begin());
    EXPECT_THAT(deleted, IsEmpty());
    array.erase(array.begin());
    EXPECT_THAT(deleted, ElementsAre(1));
    array.clear();
    EXPECT_THAT(deleted, ElementsAre(1, 2));
    EXPECT_TRUE(array.empty());
}

// The element that is being deleted may look at the array that it is in.
TEST_F(PointerArray, SlotsAreNullOnceTheirElementsAreDeleted)
{
    struct Watcher
    {
        COrlPointerArray<Watcher*>& home;
        std::vector<int>& nulls;
        ~Watcher()
        {
            int count = 0;
            for (const Watcher* other : home)
                count += other == nullptr ? 1 : 0;
            nulls.push_back(count);
        }
    };
    std::vector<int> nulls;
    COrlPointerArray<Watcher*> array;
    for (int i = 0; i < 3; ++i)
        array.push_back(new Watcher{array, nulls});
    array.clear();
    EXPECT_THAT(nulls, ElementsAre(0, 1, 2));
}

TEST_F(PointerArray, IndexBeyondTheEndIsOutOfRange)
{
    COrlPointerArray<Element*> array;
    Fill(array, 2);
    const COrlPointerArray<Element*>& seen = array;
    EXPECT_EQ(seen[1]->number, 2);
    EXPECT_EQ(seen.at(0)->number, 1);
    const auto expectRefused = [](const auto& index)
    {
        try
        {
            index();
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const std::out_of_range& refusal)
        {
            EXPECT_STREQ(refusal.what(), "invalid vector<T> subscript");
        }
    };
    expectRefused([&] { array[2] = nullptr; });
    expectRefused([&] { return seen[2]; });
    expectRefused([&] { array.at(static_cast<std::size_t>(-1)) = nullptr; });
    expectRefused([&] { return seen.at(2); });
    array.clear();
    expectRefused([&] { return seen[0]; });
}

TEST_F(PointerArray, AddTakesOverWhatItIsGiven)
{
    {
        COrlPointerArray<Element*> array;
        array.Add(std::make_unique<Element>(7, deleted));
        array.Add(nullptr);
        ASSERT_EQ(array.size(), 2U);
        EXPECT_EQ(array[0]->number, 7);
        EXPECT_EQ(array[1], nullptr);
    }
    EXPECT_THAT(deleted, ElementsAre(7));
}

TEST_F(PointerArray, IsAVectorBehindATableOfOneOperation)
{
    EXPECT_EQ(sizeof(COrlPointerArray<Element*>), sizeof(std::vector<Element*>) + sizeof(void*));
    // Deleted through the table, as a module does that knows no more than it.
    auto* array = new COrlPointerArray<Element*>;
    Fill(*array, 1);
    using Destroy = void (*)(void*);
    constexpr std::size_t deletingEntry = 1;
    (*reinterpret_cast<Destroy**>(array))[deletingEntry](array);
    EXPECT_THAT(deleted, ElementsAre(1));
}

} // namespace
} // namespace orl::test
