// OrlWmiAppendSystemKeys.
#include "tests/framework/Fixture.h"

#include "framework/include/OrlWmiAppendSystemKeys.h"

namespace orl::test
{
namespace
{

std::wstring HostName()
{
    wchar_t name[256]{};
    DWORD size = 256;
    EXPECT_TRUE(GetComputerNameExW(ComputerNameDnsHostname, name, &size));
    return name;
}

TEST(OrlWmiAppendSystemKeys, AppendsTheClassTheSystemAndTheHost)
{
    COrlString path(L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"");
    OrlWmiAppendSystemKeys(path, L"Zarn_PhysicalEthernetAdapter");
    EXPECT_EQ(path, L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\",CreationClassName=\"Zarn_PhysicalEthernetAdapter\","
                    L"SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"" +
                        HostName() + L"\"");
}

TEST(OrlWmiAppendSystemKeys, LeavesAPathThatParses)
{
    COrlString path(L"C.A=\"1\"");
    OrlWmiAppendSystemKeys(path, L"C");
    COrlWmiAutoParsedObjectPath parsed;
    ASSERT_EQ(parsed.Parse(path), WBEM_S_NO_ERROR);
    EXPECT_EQ(parsed.Keys().size(), 4u);
    EXPECT_EQ(parsed.GetKeyRef(L"SystemName")->Text(), HostName());
}

} // namespace
} // namespace orl::test
