// Texts that values share, in blocks of their own and in those of others.
#include "wbem/CimValue.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace wbem
{
namespace
{

// Holds a block until told to let go.
class Block
{
public:
    explicit Block(std::size_t room) : m_block(TextBlock::Make(room)) {}
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() { LetGo(); }

    TextBlock& operator*() { return *m_block; }
    void LetGo()
    {
        if (m_block)
            m_block->Release();
        m_block = nullptr;
    }

private:
    TextBlock* m_block;
};

TEST(TextBlock, TakesTextsUntilTheirRoomIsUsedUp)
{
    Block block(8);
    const wchar_t* first = (*block).Append(L"WWN");
    ASSERT_NE(nullptr, first);
    const wchar_t* second = (*block).Append(L"LUN");
    ASSERT_NE(nullptr, second);
    EXPECT_STREQ(L"WWN", first);
    EXPECT_STREQ(L"LUN", second);
    EXPECT_EQ(nullptr, (*block).Append(L"")) << "the end of an empty text takes room too";
}

TEST(TextBlock, LeavesOutATextThatIsTooLongAndTakesAShorterOneAfterIt)
{
    Block block(4);
    EXPECT_EQ(nullptr, (*block).Append(L"WWPN"));
    EXPECT_STREQ(L"WWP", (*block).Append(L"WWP"));
}

TEST(TextBlock, KeepsZerosInsideATextAndAddsOneBehindIt)
{
    Block block(8);
    const std::wstring text(L"a\0b", 3);
    const wchar_t* place = (*block).Append(text);
    ASSERT_NE(nullptr, place);
    EXPECT_EQ(text, std::wstring(place, 3));
    EXPECT_EQ(L'\0', place[3]);
}

class LodgingText : public ::testing::Test
{
protected:
    LodgingText() { EXPECT_TRUE(m_lodger->LodgeText(CimType::String, *m_block, L"eth0.1002")); }

    // What the lodger's owner does at its end: the value first, then the block.
    void End()
    {
        m_lodger.reset();
        m_block.LetGo();
    }

    Block m_block{32};
    std::optional<CimValue> m_lodger = CimValue::Null(CimType::UInt32, true);
};

TEST_F(LodgingText, IsATextAsAnyOther)
{
    EXPECT_EQ(CimType::String, m_lodger->Type());
    EXPECT_FALSE(m_lodger->IsArray());
    EXPECT_FALSE(m_lodger->IsNull());
    EXPECT_EQ(L"eth0.1002", m_lodger->AsText());
    EXPECT_EQ(CimValue::String(L"eth0.1002"), *m_lodger);
}

TEST_F(LodgingText, CopiesOutliveTheBlocksHolder)
{
    const CimValue copy = *m_lodger;
    CimValue assigned;
    assigned = *m_lodger;
    const CimValue copyOfACopy = copy;
    End();
    EXPECT_EQ(L"eth0.1002", copy.AsText());
    EXPECT_EQ(L"eth0.1002", assigned.AsText());
    EXPECT_EQ(L"eth0.1002", copyOfACopy.AsText());
}

TEST_F(LodgingText, WhatItIsMovedToOutlivesTheBlocksHolder)
{
    const CimValue moved = std::move(*m_lodger);
    CimValue assigned = CimValue::String(L"before");
    CimValue copy = moved;
    assigned = std::move(copy);
    End();
    EXPECT_EQ(L"eth0.1002", moved.AsText());
    EXPECT_EQ(L"eth0.1002", assigned.AsText());
}

TEST_F(LodgingText, CanBeReplacedByAnythingElse)
{
    *m_lodger = CimValue::Unsigned(CimType::UInt32, 7);
    EXPECT_EQ(7U, m_lodger->AsUnsigned());
    EXPECT_TRUE(m_lodger->LodgeText(CimType::Reference, *m_block, L"A.B=1"));
    EXPECT_EQ(CimType::Reference, m_lodger->Type());
    EXPECT_EQ(L"A.B=1", m_lodger->AsText());
    *m_lodger = CimValue::String(L"its own");
    End();
}

TEST_F(LodgingText, StaysWhatItWasWhenTheBlockHasNoRoom)
{
    EXPECT_FALSE(m_lodger->LodgeText(CimType::Reference, *m_block, std::wstring(32, L'x')));
    EXPECT_EQ(CimType::String, m_lodger->Type());
    EXPECT_EQ(L"eth0.1002", m_lodger->AsText());
}

TEST_F(LodgingText, ATextOfAnotherValueCanLodgeInItsPlace)
{
    // The text that is taken lies in the value that takes it.
    EXPECT_TRUE(m_lodger->LodgeText(CimType::String, *m_block, m_lodger->AsText().substr(5)));
    EXPECT_EQ(L"1002", m_lodger->AsText());
}

TEST(SharedText, ReadsAsEmptyAfterAMove)
{
    SharedText text(L"WWPN");
    const SharedText moved(std::move(text));
    EXPECT_EQ(L"WWPN", moved.View());
    EXPECT_EQ(L"", text.View()); // NOLINT(bugprone-use-after-move): what a move leaves is what is asked
    const SharedText copy(text);
    EXPECT_EQ(L"", copy.View());
}

} // namespace
} // namespace wbem
