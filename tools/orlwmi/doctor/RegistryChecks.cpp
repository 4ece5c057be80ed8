// The registry: keys, values, and whether the places that they name exist.
#include "tools/orlwmi/doctor/Checks.h"

#include "tools/orlwmi/Platform.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/doctor/Installation.h"
#include "tools/orlwmi/doctor/RegistryView.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

constexpr const char* Area = "Registry";
constexpr const char* Reinstall = "Install again, or import the registry file of the installation.";

std::string Subject(const std::wstring& key, const std::wstring& value)
{
    return ToUtf8(key) + ": " + ToUtf8(value);
}

std::string WriteValue(const char* meaning)
{
    return std::string("Set it to ") + meaning + ".";
}

// A value that names a folder or file.
void CheckPlace(Findings& findings, const std::wstring& key, const std::wstring& value, const char* meaning,
                bool (*exists)(const std::wstring&))
{
    const auto text = ReadRegistryText(key, value);
    if (!text)
    {
        findings.push_back({Area, Subject(key, value), Health::Wrong, "missing", WriteValue(meaning)});
        return;
    }
    const bool there = exists(*text);
    findings.push_back({Area, Subject(key, value), there ? Health::Right : Health::Wrong,
                        there ? ToUtf8(*text) : ToUtf8(*text) + " does not exist", there ? "" : WriteValue(meaning)});
}

void CheckAgent(Findings& findings, const std::wstring& agent)
{
    const std::wstring key = AgentKey(agent);
    if (!KeyExists(key))
    {
        findings.push_back({Area, ToUtf8(key), Health::Wrong, "the key is missing", Reinstall});
        return;
    }
    CheckPlace(findings, key, L"InstalledDir", "the folder of the agent's library", FolderExists);
    const auto backend = ReadRegistryText(key, L"Backend");
    const std::string name = backend ? ToUtf8(*backend) : "";
    if (name == "inventory")
    {
        findings.push_back({Area, Subject(key, L"Backend"), Health::Right, name, ""});
        CheckPlace(findings, key, L"Inventory", "the JSON file that describes the simulated SAN", FileExists);
    }
    else if (name == "sysfs")
    {
        findings.push_back({Area, Subject(key, L"Backend"), Health::Right, name, ""});
        CheckPlace(findings, key, L"SysfsRoot", "the folder that holds sys and proc, / for this machine itself",
                   FolderExists);
    }
    else
    {
        findings.push_back({Area, Subject(key, L"Backend"), Health::Wrong,
                            backend ? "\"" + name + "\" is no back end" : "missing",
                            WriteValue("inventory (a simulated SAN) or sysfs (the Linux kernel's FCoE stack)")});
    }
}

void CheckServer(Findings& findings, const std::wstring& clsid, const char* what)
{
    const auto library = ReadServerLibrary(clsid);
    findings.push_back({Area, "CLSID " + ToUtf8(clsid), library ? Health::Right : Health::Wrong,
                        std::string(what) + (library ? " is served by " + ToUtf8(*library) : " has no library"),
                        library ? "" : "Register the library again (regsvr32), or install again."});
}

void CheckFcoeInstalled(Findings& findings)
{
    const auto installed = ReadRegistryText(PackageKey, L"InstalledQUIL_FCOE");
    const bool yes = installed && *installed == L"1";
    findings.push_back({Area, Subject(PackageKey, L"InstalledQUIL_FCOE"), yes ? Health::Right : Health::Note,
                        installed ? ToUtf8(*installed) : "missing",
                        yes ? "" : "The text 1 says that the FCoE component is installed."});
}

} // namespace

void CheckRegistry(Findings& findings)
{
    if (!KeyExists(ProductKey))
    {
        findings.push_back(
            {Area, ToUtf8(ProductKey), Health::Wrong, "the key is missing in " + RegistryPlace(), Reinstall});
        return;
    }
    findings.push_back({Area, ToUtf8(ProductKey), Health::Right, "read from " + RegistryPlace(), ""});
    CheckPlace(findings, ProductKey, L"InstalledDir", "the installation's folder", FolderExists);
    CheckPlace(findings, ProductKey, L"ResourcePath", "the folder of the library CommonRes", FolderExists);
    const auto language = ReadRegistryText(ProductKey, L"InstalledLangShortString");
    findings.push_back({Area, Subject(ProductKey, L"InstalledLangShortString"), language ? Health::Right : Health::Note,
                        language ? ToUtf8(*language) : "missing",
                        language ? "" : "Texts are shown in the language of the resource library."});
    for (const auto* agent : AgentNames)
    {
        CheckAgent(findings, agent);
    }
    CheckServer(findings, LocatorClsid, "the WMI service");
    CheckServer(findings, ProviderClsid, "the provider");
    CheckFcoeInstalled(findings);
}

void CheckSchemaFolder(Findings& findings)
{
    if (HasOwnHost())
    {
        CheckPlace(findings, std::wstring(ProductKey) + L"\\Host", L"Schema", "the folder of the MOF files",
                   FolderExists);
    }
}

void CheckTrace(Findings& findings)
{
    constexpr const char* Trace = "Trace";
    const DWORD level = ReadRegistryNumber(ProductKey, L"TRACE").value_or(1);
    const std::string subject = Subject(ProductKey, L"TRACE");
    if (level == 0)
    {
        findings.push_back({Trace, subject, Health::Right, "0: tracing is off", ""});
        return;
    }
    const std::string what = level == 2 ? "errors only" : level == 4 ? "all lines, to the debugger too" : "all lines";
    findings.push_back({Trace, subject, Health::Note, std::to_string(level) + ": " + what,
                        "Set it to 0 to turn tracing off; every line costs a write."});
    const std::wstring folder = ReadRegistryText(ProductKey, L"InstalledDir").value_or(L"");
    const std::wstring file = LibraryIn(folder, L"FcoeProv.txt");
    const bool there = FileExists(file);
    findings.push_back({Trace, ToUtf8(file), there ? Health::Right : Health::Note,
                        there ? "the provider's log is there" : "the provider's log is not there",
                        there
                            ? ""
                            : "It is made when the provider is loaded. Where the folder cannot be written, the log is "
                              "in the temporary folder of the service."});
}

} // namespace orl::client
