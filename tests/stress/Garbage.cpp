// Answers that make no sense.
#include "tests/stress/Garbage.h"

#include <algorithm>
#include <string>

namespace orl::test
{
namespace
{

using namespace std::string_literals;

constexpr std::size_t HugeBytes = 10'000'000;
constexpr std::uint64_t OneHugeIn = 150;

const std::wstring Texts[] = {
    L""s,
    L"\0"s,
    L"a\0b\0"s,
    L"\""s,
    L"\\"s,
    L"x\",DeviceID=\"y"s,
    L"\\\"\\\\\"\\"s,
    L"C:\\temp\\\\\"quoted\" 'and' `more`"s,
    L"\r\n\t\x01\x1b[31m\x7f"s,
    L"\xD800"s,
    L"\xDC00\xD800"s,
    L"\xFFFE\xFFFF"s,
    L"%s%n%I64X%1$s"s,
    L"'; SELECT * FROM meta_class --"s,
    L"{\"json\": [\"</script>\"]}"s,
    L"Zarn_FCOEHBA.DeviceID=\"Zarn_FCOEHBA.DeviceID=\\\"x\\\"\""s,
};

// The fields of each record. The first text is its adapter's id, or the setting's name.
template <typename Text, typename Number>
void Visit(ORL_FCOE_HBA& r, Text text, Number number)
{
    for (COrlString* each : {&r.deviceId, &r.hbaName, &r.name, &r.worldWidePortName, &r.worldWideNodeName,
                             &r.busInformation, &r.linkSpeed, &r.linkStatus, &r.instancePath, &r.model})
        text(*each);
    number(r.fcid);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_FABRIC& r, Text text, Number number)
{
    for (COrlString* each :
         {&r.deviceId, &r.nodeWWN, &r.fabricName, &r.portWWN, &r.reservedText, &r.name, &r.fabricType})
        text(*each);
    for (ULONG* each : {&r.fcMap, &r.fabricTypeId, &r.priority, &r.vlanId})
        number(*each);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_PORT& r, Text text, Number number)
{
    for (COrlString* each :
         {&r.deviceId, &r.portWWN, &r.nodeWWN, &r.portType, &r.name, &r.fabricNodeWWN, &r.fabricName})
        text(*each);
    for (ULONG* each : {&r.portTypeId, &r.fcid})
        number(*each);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_TARGET& r, Text text, Number number)
{
    for (COrlString* each : {&r.deviceId, &r.nodeWWN, &r.portWWN, &r.vendor, &r.serialNumber, &r.localPortWWN,
                             &r.reservedText, &r.fabricName, &r.name})
        text(*each);
    for (ULONG* each : {&r.scsiBus, &r.scsiTarget, &r.fcid, &r.targetType})
        number(*each);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_VLAN& r, Text text, Number number)
{
    for (COrlString* each : {&r.deviceId, &r.vlanName, &r.status, &r.name})
        text(*each);
    for (ULONG* each : {&r.vlanId, &r.statusId})
        number(*each);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_LUN& r, Text text, Number number)
{
    for (COrlString* each : {&r.deviceId, &r.osDeviceName, &r.capacity, &r.blockSize, &r.targetPortWWN, &r.reservedText,
                             &r.localPortWWN, &r.fabricName, &r.name})
        text(*each);
    for (ULONG* each : {&r.lunId, &r.busNumber, &r.targetNumber, &r.fcid})
        number(*each);
}
template <typename Text, typename Number>
void Visit(ORL_FCOE_STATISTIC& r, Text text, Number number)
{
    for (COrlString* each : {&r.deviceId, &r.statistic, &r.name})
        text(*each);
    ULONG low = static_cast<ULONG>(r.value);
    number(low);
    r.value = low;
}

} // namespace

COrlString GarbageText(Dice& dice, Ledger& ledger)
{
    if (!dice.OneIn(OneHugeIn))
        return COrlString(Texts[dice.Below(std::size(Texts))]);
    ledger.Add(Ledger::AgentHuge);
    return COrlString(std::wstring(HugeBytes / sizeof(wchar_t), dice.OneIn(2) ? L'"' : L'h'));
}

template <typename Record>
void Spoil(std::vector<Record>& records, Dice& dice, Ledger& ledger)
{
    if (records.empty())
        records.emplace_back(); // of an adapter that nobody has
    if (dice.OneIn(3))
        records.insert(records.end(), records.begin(), records.begin() + static_cast<std::ptrdiff_t>(records.size()));
    const std::uint64_t oneIn = 1 + dice.Below(4);
    const std::size_t spoilt = std::min<std::size_t>(records.size(), 3);
    for (std::size_t i = 0; i < spoilt; ++i)
    {
        bool isKey = true;
        Visit(
            records[i],
            [&](COrlString& text)
            {
                // Most keys stay, so that what follows the key gets its share.
                if (dice.OneIn(isKey ? 3 : oneIn))
                    text = GarbageText(dice, ledger);
                isKey = false;
            },
            [&](ULONG& number)
            {
                if (dice.OneIn(oneIn))
                    number = dice.OneIn(2) ? 0xFFFFFFFF : 0x80000000;
            });
    }
}

template void Spoil(std::vector<ORL_FCOE_HBA>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_FABRIC>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_PORT>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_TARGET>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_VLAN>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_LUN>&, Dice&, Ledger&);
template void Spoil(std::vector<ORL_FCOE_STATISTIC>&, Dice&, Ledger&);

void Spoil(ORL_SETTING& setting, Dice& dice, Ledger& ledger)
{
    for (COrlString* each :
         {&setting.Caption, &setting.Description, &setting.MiniHelp, &setting.DisplayName, &setting.RegistryKeyword})
    {
        if (dice.OneIn(2))
            *each = GarbageText(dice, ledger);
    }
    setting.DetailId = ~0ULL;
    setting.ExposeLevel = 0xFFFFFFFF;
    setting.GroupId = 0xFFFF;
}

} // namespace orl::test
