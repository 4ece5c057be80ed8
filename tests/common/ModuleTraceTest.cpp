// A module's own log, from its load to its unload.

#include "tests/common/TestLibraries.h"
#include "tests/common/TraceTest.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

namespace orl::test
{

namespace
{

class ModuleTrace : public TraceTest
{
protected:
    HMODULE Load() const { return LoadLibraryW(PathText(BuiltLibrary("OrlTracedModule")).c_str()); }

    std::filesystem::path ProviderLog() const { return m_folder / "FcoeProv.txt"; }
};

} // namespace

TEST_F(ModuleTrace, IsConfiguredAtLoadAndClosedAtUnload)
{
    const HMODULE module = Load();
    ASSERT_NE(nullptr, module);
    EXPECT_TRUE(std::filesystem::exists(ProviderLog()));
    EXPECT_EQ(0, ExportOf<int()>(module, "TracedModuleConfigured")());

    ExportOf<void()>(module, "TracedModuleTrace")();
    EXPECT_THAT(SplitLines(BytesOfFile(ProviderLog())),
                ElementsAre(MatchesRegex("FCOE_PROV_\tPID:.*TIER 1\t\tENTRY:  TracedModuleTrace"),
                            MatchesRegex("FCOE_PROV_\tPID:.*TIER 1\t\tEXIT:  TracedModuleTrace")));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(std::filesystem::remove(ProviderLog()));
}

TEST_F(ModuleTrace, IsTruncatedAtEachLoad)
{
    for (int load = 1; load <= 2; ++load)
    {
        const HMODULE module = Load();
        ASSERT_NE(nullptr, module);
        ExportOf<void()>(module, "TracedModuleTrace")();
        EXPECT_EQ(2u, SplitLines(BytesOfFile(ProviderLog())).size());
        EXPECT_TRUE(FreeLibrary(module));
    }
}

TEST_F(ModuleTrace, IsSwitchedOffByTheRegistry)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 0);
    const HMODULE module = Load();
    ASSERT_NE(nullptr, module);
    EXPECT_EQ(-1, ExportOf<int()>(module, "TracedModuleConfigured")());
    ExportOf<void()>(module, "TracedModuleTrace")();
    EXPECT_FALSE(std::filesystem::exists(ProviderLog()));
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(ModuleTrace, WritesErrorsOnlyAtLevelTwoOfTheRegistry)
{
    const std::string head = "FCOE_PROV_\tPID:.*TIER 1\t\t";
    for (const ULONG level : {1u, 2u, 3u, 4u, 5u})
    {
        SCOPED_TRACE(level);
        m_registry.SetNumber(ProductKey, L"TRACE", level);
        const HMODULE module = Load();
        ASSERT_NE(nullptr, module);
        ExportOf<void()>(module, "TracedModuleFail")();
        const std::vector<std::string> lines = SplitLines(BytesOfFile(ProviderLog()));
        EXPECT_TRUE(FreeLibrary(module));
        if (level == 2)
        {
            EXPECT_THAT(lines, ElementsAre(MatchesRegex(head + "file \\(7\\): bad")));
        }
        else
        {
            EXPECT_THAT(lines, ElementsAre(MatchesRegex(head + "ENTRY:  TracedModuleFail"),
                                           MatchesRegex(head + "file \\(7\\): bad"),
                                           MatchesRegex(head + "EXIT:  TracedModuleFail")));
        }
    }
}

TEST_F(ModuleTrace, IsOffWithoutTheProductsKey)
{
    m_registry.DeleteKey(L"SOFTWARE\\KESTA");
    const TestFolder temp;
    const EnvironmentSetting setting(L"Temp", temp.Text().c_str());
    const HMODULE module = Load();
    ASSERT_NE(nullptr, module);
    EXPECT_EQ(-1, ExportOf<int()>(module, "TracedModuleConfigured")());
    ExportOf<void()>(module, "TracedModuleFail")();
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
    EXPECT_TRUE(std::filesystem::is_empty(temp.Path()));
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(ModuleTrace, IsNotTheLogOfAnotherModule)
{
    StartLog();
    const HMODULE module = Load();
    ASSERT_NE(nullptr, module);
    ExportOf<void()>(module, "TracedModuleTrace")();
    EXPECT_THAT(Messages(), IsEmpty());
    g_OrlDebug.Print(L"mine");
    EXPECT_THAT(Messages(), ElementsAre("mine"));
    EXPECT_EQ(2u, SplitLines(BytesOfFile(ProviderLog())).size());
    EXPECT_TRUE(FreeLibrary(module));
}

} // namespace orl::test
