// The doctor: what it finds in a registry, and how its findings read.
#include "tools/orlwmi/doctor/Checks.h"
#include "tools/orlwmi/doctor/Doctor.h"

#include "tests/client/ClientRun.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"
#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace orl::client;
using orl::test::AgentsKey;
using orl::test::MemoryOutput;
using orl::test::PackageKey;
using orl::test::ProductKey;
using orl::test::TestFolder;
using orl::test::TestRegistry;
using testing::Contains;
using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace
{

const std::wstring ClsidKey = L"SOFTWARE\\Classes\\CLSID\\";

class ClientDoctor : public testing::Test
{
protected:
    TestRegistry registry;
    TestFolder folder;

    void SetUp() override
    {
        registry.SetText(ProductKey, L"InstalledDir", folder.Text());
        registry.SetText(ProductKey, L"ResourcePath", folder.Text());
        registry.SetText(ProductKey, L"InstalledLangShortString", L"ENU");
        registry.SetNumber(ProductKey, L"TRACE", 0);
        for (const std::wstring agent : {L"\\Fcoelink", L"\\Corelink"})
        {
            registry.SetText(AgentsKey + agent, L"InstalledDir", folder.Text());
            registry.SetText(AgentsKey + agent, L"Backend", L"sysfs");
            registry.SetText(AgentsKey + agent, L"SysfsRoot", folder.Text());
        }
        registry.SetText(PackageKey, L"InstalledQUIL_FCOE", L"1");
        SetServer(L"{4590F811-1D3A-11D0-891F-00AA004B2E24}", L"orlwmihost");
        SetServer(L"{8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}", L"Orl2InstUtility");
    }

    void SetServer(const std::wstring& clsid, const std::wstring& library)
    {
        registry.SetText(ClsidKey + clsid + L"\\InprocServer32", L"", folder.Text() + L"\\" + library + L".dll");
    }

    static Findings Registry()
    {
        Findings findings;
        CheckRegistry(findings);
        return findings;
    }

    // The one finding about a subject that ends so.
    static Finding About(const Findings& findings, const std::string& end)
    {
        Findings found;
        for (const auto& finding : findings)
        {
            if (finding.subject.size() >= end.size() &&
                finding.subject.compare(finding.subject.size() - end.size(), end.size(), end) == 0)
            {
                found.push_back(finding);
            }
        }
        EXPECT_THAT(found, SizeIs(1)) << end;
        return found.empty() ? Finding{} : found.front();
    }
};

TEST_F(ClientDoctor, IsContentWithAWholeRegistry)
{
    const Findings findings = Registry();
    EXPECT_THAT(findings, SizeIs(13));
    EXPECT_THAT(findings, Each(Field(&Finding::health, Health::Right)));
    EXPECT_THAT(findings, Each(Field(&Finding::advice, "")));
    EXPECT_EQ(Verdict(findings), ExitCode::Done);
}

TEST_F(ClientDoctor, SaysThatNothingIsInstalled)
{
    registry.DeleteKey(ProductKey);
    const Findings findings = Registry();
    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].subject, "SOFTWARE\\KESTA\\Network_Services\\ORL2");
    EXPECT_THAT(findings[0].found, HasSubstr("the key is missing in "));
    EXPECT_EQ(findings[0].advice, "Install again, or import the registry file of the installation.");
    EXPECT_EQ(Verdict(findings), ExitCode::Unhealthy);
}

TEST_F(ClientDoctor, FindsAFolderThatIsNotThere)
{
    const std::wstring gone = folder.Text() + L"\\gone";
    registry.SetText(ProductKey, L"InstalledDir", gone);
    const Finding finding = About(Registry(), "ORL2: InstalledDir");
    EXPECT_EQ(finding.health, Health::Wrong);
    EXPECT_EQ(finding.found, orl::ToUtf8(gone) + " does not exist");
    EXPECT_EQ(finding.advice, "Set it to the installation's folder.");
}

TEST_F(ClientDoctor, FindsMissingValues)
{
    registry.DeleteValue(ProductKey, L"ResourcePath");
    registry.DeleteValue(ProductKey, L"InstalledLangShortString");
    registry.DeleteValue(PackageKey, L"InstalledQUIL_FCOE");
    const Findings findings = Registry();
    EXPECT_EQ(About(findings, "ResourcePath").health, Health::Wrong);
    EXPECT_EQ(About(findings, "ResourcePath").found, "missing");
    EXPECT_EQ(About(findings, "InstalledLangShortString").health, Health::Note);
    EXPECT_EQ(About(findings, "InstalledQUIL_FCOE").health, Health::Note);
}

TEST_F(ClientDoctor, TakesAValueOfAnotherTypeForMissing)
{
    registry.SetNumber(ProductKey, L"ResourcePath", 7);
    EXPECT_EQ(About(Registry(), "ResourcePath").found, "missing");
}

TEST_F(ClientDoctor, FindsAnAgentWithoutKey)
{
    registry.DeleteKey(std::wstring(AgentsKey) + L"\\Corelink");
    const Finding finding = About(Registry(), "Agents\\Corelink");
    EXPECT_EQ(finding.health, Health::Wrong);
    EXPECT_EQ(finding.found, "the key is missing");
}

TEST_F(ClientDoctor, FindsABackEndThatDoesNotExist)
{
    registry.SetText(std::wstring(AgentsKey) + L"\\Fcoelink", L"Backend", L"magic");
    const Finding finding = About(Registry(), "Fcoelink: Backend");
    EXPECT_EQ(finding.health, Health::Wrong);
    EXPECT_EQ(finding.found, "\"magic\" is no back end");
    EXPECT_EQ(finding.advice, "Set it to inventory (a simulated SAN) or sysfs (the Linux kernel's FCoE stack).");
}

TEST_F(ClientDoctor, WantsTheFileOfAnInventory)
{
    const std::wstring key = std::wstring(AgentsKey) + L"\\Fcoelink";
    registry.SetText(key, L"Backend", L"inventory");
    EXPECT_EQ(About(Registry(), "Fcoelink: Inventory").found, "missing");
    registry.SetText(key, L"Inventory", folder.Text());
    EXPECT_EQ(About(Registry(), "Fcoelink: Inventory").health, Health::Wrong) << "a folder is no file";
    std::ofstream(folder / "lab.json") << "{}";
    registry.SetText(key, L"Inventory", folder.Text() + L"\\lab.json");
    EXPECT_EQ(About(Registry(), "Fcoelink: Inventory").health, Health::Right);
}

TEST_F(ClientDoctor, FindsAClassWithoutLibrary)
{
    registry.DeleteKey(ClsidKey + L"{8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}");
    const Finding finding = About(Registry(), "{8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}");
    EXPECT_EQ(finding.health, Health::Wrong);
    EXPECT_EQ(finding.found, "the provider has no library");
}

TEST_F(ClientDoctor, AsksForTheSchemaFolderOfItsOwnHostOnly)
{
    Findings findings;
    CheckSchemaFolder(findings);
    EXPECT_EQ(About(findings, "ORL2\\Host: Schema").found, "missing");
    SetServer(L"{4590F811-1D3A-11D0-891F-00AA004B2E24}", L"wbemprox");
    findings.clear();
    CheckSchemaFolder(findings);
    EXPECT_THAT(findings, IsEmpty());
}

TEST_F(ClientDoctor, FindsLibrariesThatDoNotLoad)
{
    Findings findings;
    CheckLibraries(findings);
    EXPECT_THAT(findings, Each(Field(&Finding::area, "Library")));
    for (const std::string name : {"Orl2InstUtility.dll", "ORL2FCOE", "Fcoelink", "Corelink"})
    {
        const Finding finding = About(findings, name);
        EXPECT_EQ(finding.health, Health::Wrong) << name;
        EXPECT_EQ(finding.found, "does not load: it, or a library that it needs, is not there (126)") << name;
    }
    EXPECT_EQ(About(findings, "CommonRes").health, Health::Note);
    findings.clear();
    CheckAgents(findings);
    EXPECT_THAT(findings, IsEmpty()) << "the libraries' findings have said it";
}

TEST_F(ClientDoctor, TellsHowTracingIsSet)
{
    const auto trace = []
    {
        Findings findings;
        CheckTrace(findings);
        return findings;
    };
    ASSERT_THAT(trace(), SizeIs(1));
    EXPECT_EQ(trace()[0].found, "0: tracing is off");
    registry.SetNumber(ProductKey, L"TRACE", 2);
    EXPECT_EQ(trace().at(0).found, "2: errors only");
    registry.SetNumber(ProductKey, L"TRACE", 4);
    EXPECT_EQ(trace().at(0).found, "4: all lines, to the debugger too");
    registry.DeleteValue(ProductKey, L"TRACE");
    EXPECT_EQ(trace().at(0).found, "1: all lines") << "tracing is on where nothing is said";
    EXPECT_EQ(trace().at(1).found, "the provider's log is not there");
    std::ofstream(folder / "FcoeProv.txt") << "x";
    EXPECT_EQ(trace().at(1).found, "the provider's log is there");
}

Findings Sample()
{
    return {{"Registry", "A: B", Health::Right, "/x", ""},
            {"Agent", "Fcoelink", Health::Wrong, "back end: sysfs\nstate: \x1B[2J", "Do this."},
            {"Trace", "T", Health::Note, "on", "Do that."}};
}

TEST(ClientDoctorReport, ReadsAsPlainLines)
{
    MemoryOutput output;
    PrintFindings(Sample(), std::nullopt, output);
    output.Flush();
    EXPECT_EQ(output.Text(), "ok     Registry A: B\n"
                             "       /x\n"
                             "wrong  Agent Fcoelink\n"
                             "       back end: sysfs\n"
                             "       state: \\x1B[2J\n"
                             "       -> Do this.\n"
                             "note   Trace T\n"
                             "       on\n"
                             "       -> Do that.\n"
                             "\n"
                             "1 ok, 1 to note, 1 wrong\n");
}

TEST(ClientDoctorReport, ReadsAsRecords)
{
    MemoryOutput output;
    PrintFindings(Sample(), Format::Csv, output);
    output.Flush();
    EXPECT_EQ(output.Text(), "State,Area,Subject,Found,Advice\r\n"
                             "ok,Registry,A: B,/x,\r\n"
                             "wrong,Agent,Fcoelink,\"back end: sysfs\nstate: \x1B[2J\",Do this.\r\n"
                             "note,Trace,T,on,Do that.\r\n");
}

TEST(ClientDoctorReport, IsUnhealthyWithOneWrongThing)
{
    EXPECT_EQ(Verdict(Sample()), ExitCode::Unhealthy);
    EXPECT_EQ(Verdict({Sample()[0], Sample()[2]}), ExitCode::Done);
    EXPECT_EQ(Verdict({}), ExitCode::Done);
}

} // namespace
