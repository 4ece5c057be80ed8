// The section of virtual ports: written, read again, and refused where it is damaged.

#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/VirtualPortState.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

namespace orl::test
{

namespace
{

VirtualPortState ReadSection(const std::string& section)
{
    return VirtualPortState::Read(StateDocument(L"s", "{\"version\": 1, \"virtualPorts\": " + section + "}"));
}

std::string ErrorOfSection(const std::string& section)
{
    try
    {
        ReadSection(section);
    }
    catch (const BackendError& error)
    {
        EXPECT_EQ(error.Code(), static_cast<ULONG>(ERROR_INVALID_DATA));
        return ToUtf8(error.Text());
    }
    return "is read";
}

} // namespace

TEST(VirtualPortStates, AreReadAsTheyWereWritten)
{
    VirtualPortState state;
    state.Of(L"eth\"0\u00E4").created = {{0x2101525400FC0001, 0x1101525400FC0001, 0x010301}, {0x5, 0, 0}};
    state.Of(L"eth1").deleted = {0x2102525400FC0001};
    state.SetLastExtension(0x525400FC0001, 0x101);
    state.SetLastExtension(0, 0xFFF);
    const VirtualPortState again = ReadSection(state.Text());
    ASSERT_EQ(again.Hbas().size(), 2u);
    const VirtualPortState::Hba* first = again.Find(L"ETH\"0\u00E4");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->deviceId, L"eth\"0\u00E4");
    ASSERT_EQ(first->created.size(), 2u);
    EXPECT_EQ(first->created[0].portName, 0x2101525400FC0001u);
    EXPECT_EQ(first->created[0].nodeName, 0x1101525400FC0001u);
    EXPECT_EQ(first->created[0].fcid, 0x010301u);
    EXPECT_EQ(first->created[1].nodeName, 0u);
    EXPECT_TRUE(first->deleted.empty());
    EXPECT_EQ(again.Find(L"eth1")->deleted, std::vector<std::uint64_t>{0x2102525400FC0001});
    EXPECT_EQ(again.LastExtension(0x525400FC0001, 1), 0x101u);
    EXPECT_EQ(again.LastExtension(0, 1), 0xFFFu);
    EXPECT_EQ(again.LastExtension(7, 1), 1u);
    EXPECT_EQ(again.CreatorOf(5), first);
    EXPECT_EQ(again.CreatorOf(0x2102525400FC0001), nullptr);
    EXPECT_EQ(again.Text(), state.Text());
}

TEST(VirtualPortStates, AreEmptyWithoutTheSection)
{
    EXPECT_TRUE(VirtualPortState::Read(StateDocument(L"s")).Empty());
    EXPECT_TRUE(ReadSection("{}").Empty());
}

TEST(VirtualPortStates, AreRefusedWhereTheyAreDamaged)
{
    const std::string name = "\"worldWidePortName\": \"2101525400fc0001\"";
    const struct
    {
        std::string section;
        const char* error;
    } cases[] = {
        {"[]", "s:1:32: /virtualPorts: expected an object, found a list"},
        {"{\"hba\": []}", "s:1:33: /virtualPorts: unknown key \"hba\"; the nearest known key is \"hbas\""},
        {"{\"hbas\": [{}]}", "s:1:42: /virtualPorts/hbas/0: the key \"deviceId\" is missing"},
        {"{\"hbas\": [{\"deviceId\": 1}]}", "s:1:55: /virtualPorts/hbas/0/deviceId: expected a text, found a number"},
        {"{\"hbas\": [{\"deviceId\": \"a\"},\n{\"deviceId\": \"A\"}]}",
         "s:2:14: /virtualPorts/hbas/1/deviceId: another entry is of this device id, at line 1, column 55"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"created\": [{}]}]}",
         "s:1:72: /virtualPorts/hbas/0/created/0: the key \"worldWidePortName\" is missing"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"created\": [{\"worldWidePortName\": \"\"}]}]}",
         "s:1:94: /virtualPorts/hbas/0/created/0/worldWidePortName: the name is empty"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"created\": [{\"worldWidePortName\": \"2101\"}]}]}",
         "s:1:94: /virtualPorts/hbas/0/created/0/worldWidePortName: \"2101\" is no world wide name: 16 hexadecimal "
         "digits, not all 0"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"created\": [{" + name + ", \"fcid\": 16777216}]}]}",
         "s:1:122: /virtualPorts/hbas/0/created/0/fcid: expected a whole number from 0 to 16777215, found 16777216"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"created\": [{" + name + "}]},\n{\"deviceId\": \"b\", \"created\": [{" +
             name + "}]}]}",
         "s:2:53: /virtualPorts/hbas/1/created/0/worldWidePortName: another virtual port has this name, at line 1, "
         "column 94"},
        {"{\"hbas\": [{\"deviceId\": \"a\", \"deleted\": [{}]}]}",
         "s:1:72: /virtualPorts/hbas/0/deleted/0: the key \"worldWidePortName\" is missing"},
        {"{\"generatedNames\": [{}]}", "s:1:52: /virtualPorts/generatedNames/0: the key \"address\" is missing"},
        {"{\"generatedNames\": [{\"address\": 1}]}",
         "s:1:52: /virtualPorts/generatedNames/0: the key \"lastExtension\" is missing"},
        {"{\"generatedNames\": [{\"address\": \"0x1000000000000\", \"lastExtension\": 1}]}",
         "s:1:64: /virtualPorts/generatedNames/0/address: a MAC address has 48 bits"},
        {"{\"generatedNames\": [{\"address\": 1, \"lastExtension\": 4096}]}",
         "s:1:84: /virtualPorts/generatedNames/0/lastExtension: expected a whole number from 0 to 4095, found 4096"},
    };
    for (const auto& [section, error] : cases)
        EXPECT_EQ(ErrorOfSection(section), error) << section;
}

TEST(VirtualPortStates, HoldNoMorePortsOfAnHbaThanThereCanBe)
{
    VirtualPortState state;
    for (std::uint64_t name = 1; name <= VirtualPortState::MaxPerHba; ++name)
        state.Of(L"a").created.push_back({name, 0, 0});
    EXPECT_EQ(ReadSection(state.Text()).Find(L"a")->created.size(), VirtualPortState::MaxPerHba);
    state.Of(L"a").created.push_back({1000, 0, 0});
    const std::string error = ErrorOfSection(state.Text());
    EXPECT_TRUE(error.ends_with(": /virtualPorts/hbas/0/created/255: an HBA has at most 255 virtual ports")) << error;
}

} // namespace orl::test
