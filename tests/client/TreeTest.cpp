// Drawing trees, and Fibre Channel's names for people.
#include "tools/orlwmi/FcNames.h"
#include "tools/orlwmi/Tree.h"

#include "tests/client/ClientRun.h"

#include <gtest/gtest.h>

using namespace orl::client;
using orl::test::MemoryOutput;

namespace
{

std::string Drawn(const TreeNode& node)
{
    MemoryOutput output;
    DrawTree(output, node);
    output.Flush();
    return output.Text();
}

TEST(ClientTree, ShowsFactsInOneColumnAndNoEmptyOnes)
{
    EXPECT_EQ(Drawn({"adapter", {{"state", "Online"}, {"a longer name", ""}, {"port name", "20"}}, {}}),
              "adapter\n    state      Online\n    port name  20\n");
}

TEST(ClientTree, DrawsChildrenBelowTheirParent)
{
    const TreeNode tree{"hba",
                        {{"state", "up"}},
                        {{"fabric", {{"vlan", "1002"}}, {{"port", {{"fcid", "0x1"}}, {}}}}, {"fabric 2", {}, {}}}};
    EXPECT_EQ(Drawn(tree), "hba\n"
                           "│   state  up\n"
                           "├── fabric\n"
                           "│   │   vlan  1002\n"
                           "│   └── port\n"
                           "│           fcid  0x1\n"
                           "└── fabric 2\n");
}

TEST(ClientTree, CannotSteerATerminal)
{
    EXPECT_EQ(Drawn({"a\nb", {{"x", "\x1B[0m"}}, {{"c\rd", {}, {}}}}), "a\\nb\n│   x  \\x1B[0m\n└── c\\rd\n");
}

TEST(FcNames, WritesWorldWideNamesWithColons)
{
    struct Case
    {
        std::string name;
        std::string shown;
    };
    const Case cases[] = {
        {"2000525400fc0001", "20:00:52:54:00:fc:00:01"},
        {"0x2000525400FC0001", "20:00:52:54:00:fc:00:01"},
        {"20:00:52:54:00:FC:00:01", "20:00:52:54:00:fc:00:01"},
        {"", ""},
        {"2000525400fc000", "2000525400fc000"},
        {"2000525400fc00011", "2000525400fc00011"},
        {"2000525400fc000g", "2000525400fc000g"},
        {"0x0", "0x0"},
        {"unknown", "unknown"},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(ColonName(c.name), c.shown) << c.name;
    }
}

TEST(FcNames, SaysWhenAPortHasNoAddress)
{
    EXPECT_EQ(FcidText("0x10203"), "0x10203");
    EXPECT_EQ(FcidText("0x0"), "none, not logged in (0x0)");
    EXPECT_EQ(FcidText("0xFFFFFFFF"), "none, not logged in (0xFFFFFFFF)");
    EXPECT_EQ(FcidText(""), "");
}

} // namespace
