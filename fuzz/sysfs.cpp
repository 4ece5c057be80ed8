// Any tree under the sysfs back end: the input is written to a folder, and every operation is run on it.
//
// The input has one entry a line, KIND PATH CONTENT: f a file, d a folder, l a link, p a FIFO. In a content \n is a
// newline, \0 a zero byte. Lines that make no entry are left out.

#include "agentlibs/fcoelink/Backend.h"
#include "agentlibs/Text.h"
#include "Common/Src/ModuleTrace.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

ORL_MODULE_TRACE_OFF;

namespace
{

constexpr std::size_t MaxEntries = 300;
constexpr std::size_t MaxPath = 400;

// Kept in memory where there is a file system for that: a tree is written for every input.
fs::path RootFolder()
{
    const char* base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    return fs::path(base) / ("orl-fuzz-sysfs-" + std::to_string(getpid()));
}

std::string Unescape(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next != 'n' && next != '0')
        {
            bytes += text[i];
            continue;
        }
        bytes += next == 'n' ? '\n' : '\0';
        ++i;
    }
    return bytes;
}

// Writes entries below a folder and nowhere else. With plain system calls, since this is what an input's time goes to.
class TreeWriter
{
public:
    explicit TreeWriter(std::string root) : m_root(std::move(root) + '/') {}

    void WriteEntry(std::string_view line)
    {
        if (line.size() < 3 || line[1] != ' ')
            return;
        const char kind = line[0];
        line.remove_prefix(2);
        const std::size_t space = std::min(line.find(' '), line.size());
        const std::string path(line.substr(0, space));
        const std::string content = Unescape(line.substr(std::min(space + 1, line.size())));
        if (!IsSafe(path) || !MakeFolder(path.substr(0, std::min(path.rfind('/'), path.size()))))
            return;
        const std::string full = m_root + path;
        if (kind == 'd')
            MakeFolder(path);
        else if (kind == 'l')
            (void)symlink(content.c_str(), full.c_str());
        else if (kind == 'p')
            (void)mkfifo(full.c_str(), 0600);
        else if (kind == 'f')
            WriteFile(full, content);
    }

private:
    static bool IsSafe(const std::string& path)
    {
        // With the slash in front, every part has one.
        const std::string parts = '/' + path + '/';
        return path.size() <= MaxPath && path.find('/') != std::string::npos && path.find('\0') == std::string::npos &&
               parts.find("//") == std::string::npos && parts.find("/../") == std::string::npos &&
               parts.find("/./") == std::string::npos;
    }

    // False when something else is in the way; a link would lead the writer elsewhere.
    bool MakeFolder(const std::string& path)
    {
        if (path.empty() || m_folders.count(path) != 0)
            return true;
        const std::size_t slash = path.rfind('/');
        if (slash != std::string::npos && !MakeFolder(path.substr(0, slash)))
            return false;
        if (mkdir((m_root + path).c_str(), 0700) != 0)
            return false;
        m_folders.insert(path);
        return true;
    }

    static void WriteFile(const std::string& file, const std::string& content)
    {
        const int fd = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
        if (fd < 0)
            return;
        if (write(fd, content.data(), content.size()) != static_cast<ssize_t>(content.size()))
            std::abort();
        close(fd);
    }

    std::string m_root;
    std::set<std::string> m_folders{"sys"};
};

void Check(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

void CheckName(const COrlString& name)
{
    const auto isDigit = [](wchar_t c) { return (c >= L'0' && c <= L'9') || (c >= L'a' && c <= L'f'); };
    Check(name.empty() || (name.size() == 16 && std::all_of(name.begin(), name.end(), isDigit)),
          "a world wide name is 16 lower-case digits or nothing");
}

void CheckText(const COrlString& text)
{
    Check(std::none_of(text.begin(), text.end(), [](wchar_t c) { return c < L' ' || c == 0x7F; }),
          "a text holds no control characters");
}

void CheckRecord(const ORL_FCOE_HBA& hba)
{
    CheckName(hba.worldWidePortName);
    CheckName(hba.worldWideNodeName);
    for (const COrlString& text : {hba.hbaName, hba.name, hba.busInformation, hba.linkSpeed, hba.linkStatus, hba.model})
        CheckText(text);
}
void CheckRecord(const ORL_FCOE_PORT& port)
{
    for (const COrlString& name : {port.nodeWWN, port.portWWN, port.fabricNodeWWN, port.fabricName})
        CheckName(name);
    CheckText(port.name);
}
void CheckRecord(const ORL_FCOE_FABRIC& fabric)
{
    CheckName(fabric.fabricName);
    CheckName(fabric.nodeWWN);
}
void CheckRecord(const ORL_FCOE_TARGET& target)
{
    for (const COrlString& name : {target.nodeWWN, target.portWWN, target.localPortWWN, target.fabricName})
        CheckName(name);
    CheckText(target.vendor);
}
void CheckRecord(const ORL_FCOE_LUN& lun)
{
    CheckName(lun.targetPortWWN);
    CheckText(lun.name);
    Check(lun.capacity.empty() || lun.capacity.IsNumeric(), "a capacity is a number or nothing");
}
void CheckRecord(const ORL_FCOE_VLAN& vlan)
{
    Check(vlan.statusId >= 1 && vlan.statusId <= 3, "a VLAN has a state");
}
void CheckRecord(const ORL_FCOE_STATISTIC& statistic)
{
    Check(!statistic.statistic.empty(), "a counter has a name");
}

template <class Record>
std::vector<Record> Enumerate(orl::FcoeBackend& backend,
                              bool (COrlFcoeAgentIntf::*enumerate)(const COrlString&, std::vector<Record>&, CResult&),
                              const COrlString& deviceId)
{
    std::vector<Record> records;
    CResult status;
    Check((backend.*enumerate)(deviceId, records, status), "an enumeration of a tree succeeds");
    for (const Record& record : records)
    {
        Check(!record.deviceId.empty(), "every record belongs to an HBA");
        CheckText(record.name);
        CheckRecord(record);
    }
    return records;
}

template <class Action>
void Try(Action action)
{
    try
    {
        action();
    }
    catch (const orl::BackendError& error)
    {
        Check(error.Code() != 0 && !error.Text().empty(), "a refusal has a code and a reason");
    }
}

void RunEverything(const fs::path& root)
{
    orl::BackendConfig config;
    config.sysfsRoot = orl::Widen(root.native());
    const auto backend = orl::MakeSysfsBackend(config);
    (void)backend->Status();
    std::vector<ORL_FCOE_HBA> hbas = Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateHBAs, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumeratePorts, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateFabrics, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateTargets, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateLUNs, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateVLANs, L"");
    Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateStatistics, L"");
    if (hbas.empty())
        return;
    const COrlString& id = hbas.front().deviceId;
    Check(!Enumerate(*backend, &COrlFcoeAgentIntf::EnumerateHBAs, id).empty(), "an HBA is found by its device id");
    CResult status;
    std::vector<WarningMessageObj> warnings;
    COrlString name;
    Try([&] { backend->GenerateVirtualPortWWPN(id, name, warnings, status); });
    CheckName(name);
    Try([&] { backend->CreateVirtualPort(id, name, warnings, status); });
    Try([&] { backend->DeleteVirtualPort(id, name, warnings, status); });
    Try([&] { backend->RefreshTargets(id, status); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fs::path root = RootFolder();
    fs::remove_all(root);
    fs::create_directories(root / "sys");
    TreeWriter writer(root);
    writer.WriteEntry("d sys/devices");
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::size_t entries = 0;
    for (std::size_t begin = 0; begin < input.size() && entries < MaxEntries; ++entries)
    {
        const std::size_t end = std::min(input.find('\n', begin), input.size());
        writer.WriteEntry(input.substr(begin, end - begin));
        begin = end + 1;
    }
    RunEverything(root);
    fs::remove_all(root);
    return 0;
}
