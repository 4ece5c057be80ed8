// ManagerTable: owning managers and finding them.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

ScriptedManager* Counted(int& destroyed)
{
    auto* manager = new ScriptedManager(L"Zarn_Any");
    manager->onDestroy = [&destroyed] { ++destroyed; };
    return manager;
}

TEST(ManagerTable, FindsAManagerByItsNameLetterForLetter)
{
    ManagerTable table;
    auto* hba = new ScriptedManager(L"x");
    auto* port = new ScriptedManager(L"x");
    EXPECT_EQ(table.AddClassManager(CComBSTR(L"Zarn_FCOEHBA"), hba), WBEM_S_NO_ERROR);
    EXPECT_EQ(table.AddClassManager(CComBSTR(L"Zarn_FCoEPort"), port), WBEM_S_NO_ERROR);
    EXPECT_EQ(table.Size(), 2u);
    EXPECT_EQ(table.Find(L"Zarn_FCOEHBA"), hba);
    EXPECT_EQ(table.Find(L"Zarn_FCoEPort"), port);
    EXPECT_EQ(table.Find(L"Zarn_FCOEPort"), nullptr);
    EXPECT_EQ(table.Find(L"Zarn_FCOEHB"), nullptr);
    EXPECT_EQ(table.Find(L""), nullptr);
}

TEST(ManagerTable, DestroysItsManagers)
{
    int destroyed = 0;
    {
        ManagerTable table;
        table.AddClassManager(CComBSTR(L"A"), Counted(destroyed));
        table.AddClassManager(CComBSTR(L"B"), Counted(destroyed));
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 2);
}

TEST(ManagerTable, RefusesASecondManagerForANameAndDestroysIt)
{
    int destroyed = 0;
    ManagerTable table;
    auto* first = new ScriptedManager(L"x");
    table.AddClassManager(CComBSTR(L"A"), first);
    EXPECT_EQ(Hex{table.AddClassManager(CComBSTR(L"A"), Counted(destroyed))}, Hex{WBEM_E_ALREADY_EXISTS});
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(table.Find(L"A"), first);
    EXPECT_EQ(table.Size(), 1u);
}

TEST(ManagerTable, RefusesAManagerWithoutANameAndANameWithoutAManager)
{
    int destroyed = 0;
    ManagerTable table;
    EXPECT_EQ(Hex{table.AddClassManager(CComBSTR(), Counted(destroyed))}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{table.AddClassManager(CComBSTR(L""), Counted(destroyed))}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(Hex{table.AddClassManager(CComBSTR(L"A"), nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(table.Size(), 0u);
}

} // namespace
} // namespace orl::test
