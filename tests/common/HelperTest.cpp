// CHelper: what is installed, where, and how libraries are loaded.

#include "Common/Src/Helper.h"
#include "Common/Src/LibraryTable.h"
#include "tests/common/TestLibraries.h"
#include "tests/common/TraceTest.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

#include <map>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace orl::test
{

namespace
{

class Helper : public TraceTest
{
protected:
    void SetUp() override { StartLog(); }

    // Starts the log anew, for the next step of a test.
    std::vector<std::string> TakeMessages()
    {
        const std::vector<std::string> messages = Messages();
        StartLog();
        return messages;
    }
};

struct Component
{
    bool (*isInstalled)();
    const wchar_t* value;
    std::string operation;
    std::string noKey;
    std::string noValue;
    std::string notInstalled;
};

const Component Components[] = {
    {CHelper::IsDcbInstalled, L"InstalledQUIL_DCB", "CHelper::IsDcbInstalled",
     "IsDcbInstalled() - Unable to open the QUIL registry key - exiting",
     "IsDcbInstalled() - Unable to open the DCB installation status registry value - exiting",
     "IsDcbInstalled() - DCB was not installed - exiting"},
    {CHelper::IsFcoeInstalled, L"InstalledQUIL_FCOE", "CHelper::IsFcoeInstalled",
     "IsFcoeInstalled() - Unable to open the QUIL registry key - exiting",
     "IsFcoeInstalled() - Unable to open the Fcoe installation status registry value - exiting",
     "IsFcoeInstalled() - fcoe was not installed - exiting"},
    {CHelper::IsIscsiInstalled, L"InstalledQUIL_ISCSI", "CHelper::IsIscsiInstalled",
     "IsIscsiInstalled() - Unable to open the QUIL registry key - exiting",
     "IsIscsiInstalled() - Unable to open the Fcoe installation status registry value - exiting",
     "IsIscsiInstalled() - fcoe was not installed - exiting"},
};

// A loaded module of a test, released at its end.
class Loaded
{
public:
    explicit Loaded(const COrlString& library) : m_module(CHelper::QvLoadLibrary(library)) {}
    ~Loaded()
    {
        if (m_module != nullptr)
            FreeLibrary(m_module);
    }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;

    HMODULE Get() const { return m_module; }

private:
    HMODULE m_module;
};

void ExpectLoadedFrom(const std::filesystem::path& file, const COrlString& library)
{
    SCOPED_TRACE(ToUtf8(library));
    const Loaded loaded(library);
    ASSERT_NE(nullptr, loaded.Get());
    EXPECT_TRUE(std::filesystem::equivalent(file, FileOf(loaded.Get()))) << FileOf(loaded.Get());
    EXPECT_EQ(42, ExportOf<int()>(loaded.Get(), "TestLibraryAnswer")());
}

std::string NoPathLine(const std::string& library)
{
    return "..\\..\\Common\\Src\\Helper (767): ERROR:  Unable to find path to library!  Defaulting to no path " +
           library;
}

} // namespace

TEST_F(Helper, ComponentIsInstalledWhenItsStatusIsOne)
{
    for (const Component& component : Components)
    {
        SCOPED_TRACE(component.operation);
        m_registry.SetText(PackageKey, component.value, L"1");
        EXPECT_TRUE(component.isInstalled());
        EXPECT_THAT(TakeMessages(),
                    ElementsAre("ENTRY:  " + component.operation, "EXIT:  " + component.operation + ", bReturn=true"));
        m_registry.DeleteValue(PackageKey, component.value);
    }
}

TEST_F(Helper, ComponentIsNotInstalledWithAnyOtherStatus)
{
    for (const Component& component : Components)
    {
        for (const wchar_t* status : {L"01", L"true", L"0", L"", L"1 ", L" 1", L"11", L"2"})
        {
            SCOPED_TRACE(component.operation);
            m_registry.SetText(PackageKey, component.value, status);
            EXPECT_FALSE(component.isInstalled());
            EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  " + component.operation, component.notInstalled,
                                                    "EXIT:  " + component.operation + ", bReturn=false"));
        }
    }
}

TEST_F(Helper, ComponentIsNotInstalledWithoutItsStatus)
{
    for (const Component& component : Components)
    {
        SCOPED_TRACE(component.operation);
        m_registry.CreateKey(PackageKey);
        // A number is no status text.
        for (const bool number : {false, true})
        {
            if (number)
                m_registry.SetNumber(PackageKey, component.value, 1);
            EXPECT_FALSE(component.isInstalled());
            EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  " + component.operation, component.noValue,
                                                    "EXIT:  " + component.operation + ", bReturn=false"));
        }
    }
}

TEST_F(Helper, ComponentIsNotInstalledWithoutThePackage)
{
    for (const Component& component : Components)
    {
        SCOPED_TRACE(component.operation);
        EXPECT_FALSE(component.isInstalled());
        EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  " + component.operation, component.noKey,
                                                "EXIT:  " + component.operation + ", bReturn=false"));
    }
}

TEST_F(Helper, ReadsAPathFromTheRegistry)
{
    m_registry.SetText(L"SOFTWARE\\KESTA\\Any", L"Where", L"C:\\some\\place");
    COrlString path(L"before");
    EXPECT_TRUE(CHelper::GetPathFromRegistry(L"SOFTWARE\\KESTA\\Any", L"Where", path));
    EXPECT_EQ(L"C:\\some\\place", path);
    EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  CHelper::GetPathFromRegistry",
                                            "EXIT:  CHelper::GetPathFromRegistry, bReturn=true"));
}

TEST_F(Helper, SaysWhyAPathCannotBeRead)
{
    m_registry.CreateKey(L"SOFTWARE\\KESTA\\Any");
    COrlString path(L"before");
    EXPECT_FALSE(CHelper::GetPathFromRegistry(L"SOFTWARE\\KESTA\\Missing", L"Where", path));
    EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  CHelper::GetPathFromRegistry",
                                            "GetPathFromRegistry() - Unable to open the registry key - exiting",
                                            "EXIT:  CHelper::GetPathFromRegistry, bReturn=false"));
    EXPECT_FALSE(CHelper::GetPathFromRegistry(L"SOFTWARE\\KESTA\\Any", L"Where", path));
    EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  CHelper::GetPathFromRegistry",
                                            "GetPathFromRegistry() - Unable to open the registry value - exiting",
                                            "EXIT:  CHelper::GetPathFromRegistry, bReturn=false"));
    EXPECT_EQ(L"before", path);
}

TEST_F(Helper, FindsTheDirectoryOfAnAgent)
{
    m_registry.SetText(std::wstring(AgentsKey) + L"\\Fcoelink", L"InstalledDir", L"C:\\agents\\f");
    m_registry.SetText(std::wstring(AgentsKey) + L"\\Corelink", L"InstalledDir", L"C:\\agents\\c");
    COrlString directory;
    EXPECT_TRUE(CHelper::GetAgentDirectory(L"Fcoelink", directory));
    EXPECT_EQ(L"C:\\agents\\f", directory);
    EXPECT_TRUE(CHelper::GetAgentDirectory(L"CORELINK", directory));
    EXPECT_EQ(L"C:\\agents\\c", directory);
    EXPECT_FALSE(CHelper::GetAgentDirectory(L"Dcblink", directory));
    EXPECT_EQ(L"C:\\agents\\c", directory);
}

TEST_F(Helper, ReadsTheLanguages)
{
    COrlString language(L"before");
    EXPECT_EQ(-1, CHelper::GetInstalledLanguage(language));
    EXPECT_EQ(-1, CHelper::GetLocalLanguage(language));
    m_registry.CreateKey(PackageKey);
    EXPECT_EQ(-1, CHelper::GetLocalLanguage(language));
    EXPECT_EQ(L"before", language);

    m_registry.SetText(ProductKey, L"InstalledLangShortString", L"ENU");
    m_registry.SetText(PackageKey, L"LocalLanguage", L"DEU");
    EXPECT_EQ(0, CHelper::GetInstalledLanguage(language));
    EXPECT_EQ(L"ENU", language);
    EXPECT_EQ(0, CHelper::GetLocalLanguage(language));
    EXPECT_EQ(L"DEU", language);
}

TEST_F(Helper, StripsLibraryNames)
{
    const struct
    {
        const wchar_t* library;
        const wchar_t* base;
        const wchar_t* sub;
        bool stripped;
    } cases[] = {
        {L"Fcoelink", L"Fcoelink", L"Fcoelink", true},
        {L"Fcoelink.dll", L"Fcoelink", L"Fcoelink", true},
        {L"FCOELINK.Dll", L"FCOELINK", L"FCOELINK", true},
        {L"Fcoelink.dll.dll", L"Fcoelink.dll", L"Fcoelink.dll", true},
        {L"Fcoelink.dllx", L"Fcoelink.dllx", L"Fcoelink.dllx", true},
        {L".\\Fcoelink.DLL", L"Fcoelink", L"Fcoelink", true},
        // Only the first backslash counts.
        {L"C:\\agents\\Fcoelink.dll", L"agents\\Fcoelink", L"agents\\Fcoelink", true},
        {L"CommonRes", L"CommonRes", L"CommonRes", true},
        {L"CommonResENU", L"CommonResENU", L"CommonRes", true},
        {L"COMMONRESde-DE.dll", L"COMMONRESde-DE", L"COMMONRES", true},
        {L"CommonResFRES", L"CommonResFRES", L"CommonRes", true},
        {L".dll", L"", L"", false},
        {L"x\\", L"", L"", false},
        {L"", L"", L"", false},
    };
    for (const auto& [library, base, sub, stripped] : cases)
    {
        COrlString baseName(L"before");
        COrlString subName(L"before");
        EXPECT_EQ(stripped, CHelper::StripLibraryName(library, baseName, subName)) << ToUtf8(library);
        EXPECT_EQ(base, baseName);
        EXPECT_EQ(sub, subName);
        EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  CHelper::StripLibraryName",
                                                std::string("EXIT:  CHelper::StripLibraryName, bReturn=") +
                                                    (stripped ? "true" : "false")));
    }
}

TEST_F(Helper, LoadsAnAgentLibraryFromItsAgentsDirectory)
{
    CopyLibrary("OrlTestLibrary", m_folder / "agent", "Fcoelink");
    const std::filesystem::path file = m_folder / "agent" / LibraryFileName("Fcoelink");
    const std::wstring directory = (m_folder / "agent").wstring();
    for (const std::wstring& stored : {directory, directory + L"\\"})
    {
        m_registry.SetText(std::wstring(AgentsKey) + L"\\Fcoelink", L"InstalledDir", stored);
        for (const wchar_t* name : {L"Fcoelink", L"Fcoelink.dll", L"Fcoelink.DLL"})
        {
            ExpectLoadedFrom(file, name);
            EXPECT_THAT(
                TakeMessages(),
                ElementsAre("ENTRY:  CHelper::QvLoadLibrary", "ENTRY:  CHelper::StripLibraryName",
                            "EXIT:  CHelper::StripLibraryName, bReturn=true", "ENTRY:  CHelper::GetPathFromRegistry",
                            "EXIT:  CHelper::GetPathFromRegistry, bReturn=true", "EXIT:  CHelper::QvLoadLibrary"));
        }
    }
}

TEST_F(Helper, LoadsEachGroupFromItsDirectory)
{
    const std::filesystem::path root = m_folder.Path();
    const std::wstring rootText = root.wstring();
    m_registry.SetText(ProductKey, L"InstalledDir", rootText);
    m_registry.SetText(ProductKey, L"ResourcePath", (root / "texts").wstring());
    m_registry.SetText(PackageKey, L"InstallDir", rootText + L"\\");
    for (const LibraryRow& row : LibraryTable)
    {
        if (row.group == LibraryGroup::AgentLibraries)
            m_registry.SetText(std::wstring(AgentsKey) + L"\\" + row.name, L"InstalledDir", (root / "links").wstring());
    }
    StartLog();

    const std::map<LibraryGroup, std::filesystem::path> folders = {{LibraryGroup::AgentLibraries, root / "links"},
                                                                   {LibraryGroup::AgentNames, root / "Agent"},
                                                                   {LibraryGroup::Services, root / "QUIL"},
                                                                   {LibraryGroup::ResourceLibraries, root / "texts"}};
    std::map<std::wstring, bool> seen;
    for (const LibraryRow& row : LibraryTable)
    {
        const auto folder = folders.find(row.group);
        // A name that stands in two groups belongs to the earlier.
        if (folder == folders.end() || seen[row.name])
            continue;
        seen[row.name] = true;
        // A resource library carries its language in its name.
        const std::wstring name = row.name + std::wstring(row.group == LibraryGroup::ResourceLibraries ? L"DEU" : L"");
        CopyLibrary("OrlTestLibrary", folder->second, ToUtf8(name));
        ExpectLoadedFrom(folder->second / LibraryFileName(ToUtf8(name)), name);
    }
    EXPECT_EQ(22u, seen.size());
    EXPECT_THAT(Messages(), Each(Not(StartsWith("..\\..\\Common\\Src\\Helper"))));
}

TEST_F(Helper, LooksForSystemLibrariesInTheSystemDirectory)
{
    Loaded loaded(L"OrlSysInfo");
    EXPECT_EQ(nullptr, loaded.Get());
    EXPECT_THAT(TakeMessages(),
                ElementsAre("ENTRY:  CHelper::QvLoadLibrary", "ENTRY:  CHelper::StripLibraryName",
                            "EXIT:  CHelper::StripLibraryName, bReturn=true", "EXIT:  CHelper::QvLoadLibrary"));
}

TEST_F(Helper, FallsBackToTheSearchOrderWithoutADirectory)
{
    // Beside the program; the loader looks there first.
    for (const wchar_t* name : {L"OrlTestLibrary", L"OrlTestLibrary.dll"})
    {
        ExpectLoadedFrom(BuiltLibrary("OrlTestLibrary"), name);
        EXPECT_THAT(TakeMessages(), ElementsAre("ENTRY:  CHelper::QvLoadLibrary", "ENTRY:  CHelper::StripLibraryName",
                                                "EXIT:  CHelper::StripLibraryName, bReturn=true",
                                                NoPathLine(ToUtf8(name)), "EXIT:  CHelper::QvLoadLibrary"));
    }
}

TEST_F(Helper, FallsBackToTheSearchOrderWhenTheRegistryNamesNoDirectory)
{
    for (const wchar_t* name : {L"Teamlink", L"OrlAgent", L"QuilService", L"CommonResENU"})
    {
        for (const bool empty : {false, true})
        {
            SCOPED_TRACE(ToUtf8(name) + (empty ? ", empty" : ", missing"));
            m_registry.SetText(ProductKey, L"InstalledDir", m_folder.Text());
            StartLog();
            m_registry.DeleteValue(ProductKey, L"InstalledDir");
            if (empty)
            {
                m_registry.SetText(std::wstring(AgentsKey) + L"\\Teamlink", L"InstalledDir", L"");
                m_registry.SetText(ProductKey, L"InstalledDir", L"");
                m_registry.SetText(ProductKey, L"ResourcePath", L"");
                m_registry.SetText(PackageKey, L"InstallDir", L"");
            }
            EXPECT_EQ(nullptr, CHelper::QvLoadLibrary(name));
            EXPECT_THAT(Messages(), ::testing::Contains(NoPathLine(ToUtf8(name))));
        }
        m_registry.DeleteKey(L"SOFTWARE\\KESTA");
    }
}

TEST_F(Helper, TakesAnIdentifierWithAPathAsItStands)
{
    // A system gives a name with a point in it no extension of its own.
    for (const std::string name : {"Other", "Other.v2"})
    {
        CopyLibrary("OrlTestLibrary", m_folder / "any", name);
        const COrlString path((m_folder / "any").wstring() + L"\\" + std::wstring(name.begin(), name.end()));
        ExpectLoadedFrom(m_folder / "any" / LibraryFileName(name), path);
        EXPECT_THAT(TakeMessages(), ::testing::Contains(NoPathLine(ToUtf8(path))));
    }
}

TEST_F(Helper, DoesNotTraceALibraryThatCannotBeLoaded)
{
    m_registry.SetText(std::wstring(AgentsKey) + L"\\Fcoelink", L"InstalledDir", m_folder.Text());
    StartLog();
    EXPECT_EQ(nullptr, CHelper::QvLoadLibrary(L"Fcoelink"));
    EXPECT_THAT(Messages(),
                ElementsAre("ENTRY:  CHelper::QvLoadLibrary", "ENTRY:  CHelper::StripLibraryName",
                            "EXIT:  CHelper::StripLibraryName, bReturn=true", "ENTRY:  CHelper::GetPathFromRegistry",
                            "EXIT:  CHelper::GetPathFromRegistry, bReturn=true", "EXIT:  CHelper::QvLoadLibrary"));
}

TEST_F(Helper, ReleasesALibraryForGood)
{
    CopyLibrary("OrlTestLibrary", m_folder.Path(), "Fcoelink");
    m_registry.SetText(std::wstring(AgentsKey) + L"\\Fcoelink", L"InstalledDir", m_folder.Text());
    {
        const Loaded loaded(L"Fcoelink");
        ASSERT_NE(nullptr, loaded.Get());
        EXPECT_EQ(loaded.Get(), GetModuleHandleW(L"Fcoelink"));
    }
    EXPECT_EQ(nullptr, GetModuleHandleW(L"Fcoelink"));
}

TEST(LibraryTable, HoldsThirtyOneIdentifiersInTheOrderOfTheirGroups)
{
    std::vector<LibraryGroup> groups;
    for (const LibraryRow& row : LibraryTable)
        groups.push_back(row.group);
    std::vector<LibraryGroup> due;
    for (const auto& [group, count] :
         {std::pair{LibraryGroup::AgentLibraries, 7u}, std::pair{LibraryGroup::AgentNames, 5u},
          std::pair{LibraryGroup::Services, 4u}, std::pair{LibraryGroup::ResourceLibraries, 7u},
          std::pair{LibraryGroup::OtherLibraries, 6u}, std::pair{LibraryGroup::NoDirectory, 2u}})
        due.insert(due.end(), count, group);
    EXPECT_EQ(31u, LibraryTable.size());
    EXPECT_EQ(due, groups);
}

TEST(LibraryTable, MatchesWithoutRegardToCaseAndTheEarlierGroupWins)
{
    EXPECT_EQ(LibraryGroup::AgentLibraries, FindLibraryGroup(L"FCOELINK", L"FCOELINK"));
    EXPECT_EQ(LibraryGroup::AgentLibraries, FindLibraryGroup(L"corelink", L"corelink"));
    EXPECT_EQ(LibraryGroup::AgentLibraries, FindLibraryGroup(L"Diaglink", L"Diaglink"));
    EXPECT_EQ(LibraryGroup::AgentNames, FindLibraryGroup(L"OrlAgent", L"OrlAgent"));
    EXPECT_EQ(LibraryGroup::OtherLibraries, FindLibraryGroup(L"kernel32", L"kernel32"));
    EXPECT_EQ(LibraryGroup::NoDirectory, FindLibraryGroup(L"", L""));
    EXPECT_EQ(LibraryGroup::NoDirectory, FindLibraryGroup(L"Fcoelink2", L"Fcoelink2"));
}

TEST(LibraryTable, KnowsResourceLibrariesByTheirSubNameOnly)
{
    EXPECT_EQ(LibraryGroup::ResourceLibraries, FindLibraryGroup(L"CommonResENU", L"COMMONRES"));
    EXPECT_EQ(LibraryGroup::NoDirectory, FindLibraryGroup(L"CommonRes", L"Other"));
    EXPECT_EQ(LibraryGroup::AgentLibraries, FindLibraryGroup(L"Fcoelink", L"CommonRes"));
    EXPECT_EQ(LibraryGroup::NoDirectory, FindLibraryGroup(L"Other", L"Fcoelink"));
}

} // namespace orl::test
