// Loading the implementor libraries that the registry names.
#include "framework/com/Implementors.h"
#include "tests/framework/Fixture.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TraceCapture.h"

#include <filesystem>

namespace orl::test
{
namespace
{

using ::testing::Contains;
using ::testing::HasSubstr;

constexpr wchar_t FrameworkKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Framework";

class ImplementorsTest : public ::testing::Test
{
protected:
    ImplementorsTest() { registry.CreateKey(FrameworkKey); }

    static std::wstring Library(const char* name)
    {
        return (std::filesystem::path(ORL_TEST_IMPLEMENTORS) / name).wstring();
    }
    HRESULT Load(const std::wstring& list)
    {
        registry.SetText(FrameworkKey, L"Implementors", list);
        return LoadImplementors(table, reason);
    }

    TestRegistry registry;
    TraceCapture trace;
    ManagerTable table;
    COrlString reason;
};

TEST_F(ImplementorsTest, RegistersTheManagersOfALibrary)
{
    EXPECT_EQ(Hex{Load(Library("implementor_good"))}, Hex{WBEM_S_NO_ERROR});
    EXPECT_NE(table.Find(L"Zarn_Thing"), nullptr);
    EXPECT_EQ(table.Size(), 1u);
    EXPECT_EQ(reason, L"");
    EXPECT_THAT(trace.Messages(), Contains("1 class managers are registered"));
}

TEST_F(ImplementorsTest, ReadsAListWithSpacesAndEmptyPlaces)
{
    EXPECT_EQ(Hex{Load(L" ; " + Library("implementor_good") + L" ;;")}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(table.Size(), 1u);
}

TEST_F(ImplementorsTest, LooksForTheProductsOwnBesideItselfWhenNoneAreNamed)
{
    for (const wchar_t* list : {L"", L" ; "})
    {
        reason.clear();
        EXPECT_EQ(Hex{Load(list)}, Hex{WBEM_E_FAILED});
        // Beside this program, where it is not.
        EXPECT_THAT(Narrow(reason), ::testing::StartsWith("The implementor library "));
        EXPECT_THAT(Narrow(reason), ::testing::EndsWith("ORL2FCOE cannot be loaded: error 126"));
        EXPECT_THAT(Narrow(reason), HasSubstr("bin"));
    }
    registry.DeleteKey(FrameworkKey);
    reason.clear();
    EXPECT_EQ(Hex{LoadImplementors(table, reason)}, Hex{WBEM_E_FAILED});
    EXPECT_THAT(Narrow(reason), HasSubstr("ORL2FCOE cannot be loaded"));
}

TEST_F(ImplementorsTest, NamesTheLibraryThatCannotBeLoaded)
{
    EXPECT_EQ(Hex{Load(L"/nowhere/missing")}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(reason, L"The implementor library /nowhere/missing cannot be loaded: error 126");
    EXPECT_THAT(trace.Messages(), Contains("The implementor library /nowhere/missing cannot be loaded: error 126 "
                                           "(0x80041001)"));
}

TEST_F(ImplementorsTest, NamesTheLibraryThatHasNoExport)
{
    const std::wstring library = Library("implementor_without_export");
    EXPECT_EQ(Hex{Load(library)}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(reason, L"The implementor library " + library + L" has no export RegisterCimImplementors");
}

TEST_F(ImplementorsTest, NamesTheLibraryThatLeavesItsResultAlone)
{
    const std::wstring library = Library("implementor_failing");
    EXPECT_EQ(Hex{Load(library)}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(reason, L"The implementor library " + library + L" did not register its classes; its trace log says why");
    EXPECT_EQ(table.Size(), 0u);
}

TEST_F(ImplementorsTest, KeepsWhatWasRegisteredBeforeTheExportThrew)
{
    EXPECT_EQ(Hex{Load(Library("implementor_throwing"))}, Hex{E_OUTOFMEMORY});
    EXPECT_NE(table.Find(L"Zarn_Thing"), nullptr);
}

TEST_F(ImplementorsTest, TriesEveryLibraryAndReportsTheFirstFailure)
{
    EXPECT_EQ(Hex{Load(L"/nowhere/first;" + Library("implementor_good") + L";/nowhere/second")}, Hex{WBEM_E_FAILED});
    EXPECT_THAT(Narrow(reason), HasSubstr("/nowhere/first"));
    EXPECT_EQ(table.Size(), 1u);
    EXPECT_THAT(trace.Messages(), Contains(HasSubstr("/nowhere/second cannot be loaded")));
}

} // namespace
} // namespace orl::test
