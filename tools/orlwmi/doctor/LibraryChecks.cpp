// The libraries: whether they load and export what they are loaded for, and what the agents say of themselves.
#include "tools/orlwmi/doctor/Checks.h"

#include "tools/orlwmi/doctor/Installation.h"
#include "tools/orlwmi/doctor/RegistryView.h"
#include "winport/portable/Utf8.h"

#include "com/OrlCom.h"

#include <array>

namespace orl::client
{
namespace
{

constexpr const char* Area = "Library";

// Exported by an agent library: fills the text, answers 0 when the agent can serve.
using AgentStatus = ULONG (*)(wchar_t* text, ULONG capacity);

std::string WhyNotLoaded(DWORD error)
{
    switch (error)
    {
    case ERROR_MOD_NOT_FOUND:
        return "does not load: it, or a library that it needs, is not there (126)";
    case ERROR_PROC_NOT_FOUND:
        return "does not load: a library that it needs is of another version (127)";
    case ERROR_BAD_EXE_FORMAT:
        return "does not load: the file is no library of this platform (193)";
    default:
        return "does not load (" + std::to_string(error) + ")";
    }
}

// Loaded libraries stay loaded: the service would load them again a moment later.
HMODULE CheckLibrary(Findings& findings, const std::wstring& path, const char* exportName)
{
    const std::string subject = ToUtf8(path);
    HMODULE module = LoadLibraryW(path.c_str());
    if (module == nullptr)
    {
        findings.push_back({Area, subject, Health::Wrong, WhyNotLoaded(GetLastError()),
                            "Install again, or correct the folder in the registry."});
        return nullptr;
    }
    const bool exported = GetProcAddress(module, exportName) != nullptr;
    findings.push_back({Area, subject, exported ? Health::Right : Health::Wrong,
                        std::string(exported ? "loads and exports " : "loads, but does not export ") + exportName,
                        exported ? "" : "The file is not what its name says: install again."});
    return exported ? module : nullptr;
}

void CheckResources(Findings& findings)
{
    const auto folder = ReadRegistryText(ProductKey, L"ResourcePath");
    if (!folder)
    {
        return; // the registry's finding
    }
    const std::wstring path = LibraryIn(*folder, L"CommonRes");
    HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const DWORD error = GetLastError();
    findings.push_back({Area, ToUtf8(path), module != nullptr ? Health::Right : Health::Note,
                        module != nullptr ? "loads" : WhyNotLoaded(error),
                        module != nullptr ? "" : "Messages are without their texts until it is there."});
    if (module != nullptr)
    {
        FreeLibrary(module);
    }
}

void CheckImplementors(Findings& findings, const std::wstring& folder)
{
    std::wstring list =
        ReadRegistryText(std::wstring(ProductKey) + L"\\Framework", L"Implementors").value_or(L"ORL2FCOE");
    for (size_t begin = 0; begin <= list.size();)
    {
        const size_t end = std::min(list.find(L';', begin), list.size());
        if (const std::wstring name = list.substr(begin, end - begin); !name.empty())
        {
            const bool isPath = name.find_first_of(L"\\/") != std::wstring::npos;
            CheckLibrary(findings, isPath ? name : LibraryIn(folder, name), "RegisterCimImplementors");
        }
        begin = end + 1;
    }
}

struct AgentLibrary
{
    const wchar_t* name;
    const char* factory;
};

constexpr AgentLibrary Agents[] = {{L"Fcoelink", "GetFcoeAgent"}, {L"Corelink", "GetCoreAgent"}};

std::optional<std::wstring> AgentPath(const AgentLibrary& agent)
{
    const auto folder = ReadRegistryText(AgentKey(agent.name), L"InstalledDir");
    return folder ? std::optional(LibraryIn(*folder, agent.name)) : std::nullopt;
}

} // namespace

void CheckLibraries(Findings& findings)
{
    if (const auto provider = ReadServerLibrary(ProviderClsid))
    {
        CheckLibrary(findings, *provider, "DllGetClassObject");
        CheckImplementors(findings, FolderOf(*provider));
    }
    for (const auto& agent : Agents)
    {
        if (const auto path = AgentPath(agent))
        {
            CheckLibrary(findings, *path, agent.factory);
        }
    }
    CheckResources(findings);
}

void CheckAgents(Findings& findings)
{
    for (const auto& agent : Agents)
    {
        const auto path = AgentPath(agent);
        HMODULE module = path ? LoadLibraryW(path->c_str()) : nullptr;
        if (module == nullptr)
        {
            continue; // the library's finding
        }
        const std::string name = ToUtf8(agent.name);
        const auto status = GetExport<AgentStatus>(module, "OrlAgentStatus");
        if (status == nullptr)
        {
            findings.push_back({"Agent", name, Health::Note, "the agent does not tell how it stands", ""});
            continue;
        }
        std::array<wchar_t, 2048> text{};
        const bool serves = status(text.data(), static_cast<ULONG>(text.size())) == 0;
        findings.push_back({"Agent", name, serves ? Health::Right : Health::Wrong, ToUtf8(text.data()),
                            serves ? "" : "Correct what the agent names, then ask again."});
    }
}

} // namespace orl::client
