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
