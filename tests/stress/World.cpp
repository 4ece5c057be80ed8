// What all who take part in a run share.
#include "tests/stress/World.h"

#include <fstream>

namespace orl::test
{
namespace
{

// Adapters that all read and nobody changes.
constexpr const char* Bulk = R"("generate": {"seed": %, "hbas": 2, "fabricsPerHba": 2, "portsPerHba": 2,
  "virtualPortsPerHba": 2, "targetsPerHba": 3, "lunsPerTarget": 20, "vlansPerHba": 3, "settingsPerHba": 4})";

std::string OneHba(const std::wstring& name, std::size_t number)
{
    const std::string digits = std::to_string(10000 + number).substr(1);
    return R"({"deviceId": ")" + std::string(name.begin(), name.end()) + R"(", "worldWidePortName": "2000525400fd)" +
           digits + R"(", "worldWideNodeName": "1000525400fd)" + digits + R"(", "linkStatus": "Online",
      "settings": [{"kind": "integer", "name": "QueueDepth", "min": 1, "max": )" +
           std::to_string(SettingMax) + R"(, "default": )" + std::to_string(SettingDefault) + "}]}";
}

} // namespace

CComPtr<CountingSink> World::MakeSink()
{
    CComPtr<CountingSink> sink = MakeObject<CountingSink>(ledger);
    const std::lock_guard lock(m_mutex);
    m_sinks.push_back(sink);
    return sink;
}

void World::CheckSinks()
{
    for (const CComPtr<CountingSink>& sink : m_sinks)
        sink->Check();
    m_sinks.clear();
}

std::wstring WorkHba(std::size_t number)
{
    return L"work" + std::to_wstring(number);
}

std::wstring KillHba(std::size_t number)
{
    return L"kill" + std::to_wstring(number);
}

void WriteInventory(const std::filesystem::path& file, std::uint64_t seed)
{
    std::string text = "{\"hbas\": [";
    for (std::size_t i = 0; i < WorkHbas + KillHbas; ++i)
        text += (i == 0 ? "\n" : ",\n") + OneHba(i < WorkHbas ? WorkHba(i) : KillHba(i - WorkHbas), i);
    std::string bulk = Bulk;
    bulk.replace(bulk.find('%'), 1, std::to_string(seed));
    std::ofstream(file, std::ios::binary | std::ios::trunc) << text << "],\n" << bulk << "}\n";
}

std::wstring HbaPath(const std::wstring& hba)
{
    return L"Zarn_FCOEHBA.DeviceID=\"" + hba + L"\"";
}

std::wstring PortPath(const std::wstring& hba, const std::wstring& name)
{
    return L"Zarn_FCoEPort.DeviceID=\"" + hba + L"\",WorldWidePortName=\"" + name + L"\"";
}

std::wstring SettingPath(const std::wstring& hba)
{
    return std::wstring(L"Zarn_FCOESettingInt.Caption=\"") + SettingName + L"\",ParentId=\"" + hba +
           L"\",ParentType=\"NIC\"";
}

} // namespace orl::test
