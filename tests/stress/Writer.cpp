// A client that changes an adapter.
#include "tests/stress/Writer.h"

#include <sstream>

namespace orl::test
{
namespace
{

// A pool of names, so that they are created, deleted and created again.
std::wstring SomePortName(const std::wstring& hba, Dice& dice)
{
    std::size_t hash = 7;
    for (const wchar_t c : hba)
        hash = hash * 31 + static_cast<std::size_t>(c);
    std::wostringstream name;
    name << std::hex << 0x2001525400000000 + ((hash & 0xFFFFF) << 8) + dice.Below(12);
    return name.str();
}

std::string Narrow(const std::wstring& ascii)
{
    return {ascii.begin(), ascii.end()};
}

bool Set(IWbemClassObject* object, const wchar_t* name, const CComVariant& value)
{
    return object != nullptr && SUCCEEDED(object->Put(name, 0, const_cast<CComVariant*>(&value), 0));
}

std::optional<LONG> NumberIn(IWbemClassObject* object, const wchar_t* name)
{
    CComVariant value;
    if (object == nullptr || FAILED(object->Get(name, 0, &value, nullptr, nullptr)))
        return std::nullopt;
    if (value.vt == VT_I4)
        return value.lVal;
    if (value.vt == VT_BSTR) // 64-bit numbers travel as texts
        return static_cast<LONG>(std::wcstol(value.bstrVal, nullptr, 10));
    return std::nullopt;
}

// Whether a method's results tell of an error. A list that cannot be read may.
bool TellsError(IWbemClassObject& out)
{
    CComVariant list;
    if (FAILED(out.Get(L"WarningMessages", 0, &list, nullptr, nullptr)))
        return false; // the method has no such list
    if (list.vt == VT_NULL)
        return false;
    LONG last = -1;
    SafeArrayGetUBound(list.parray, 1, &last);
    for (LONG i = 0; i <= last; ++i)
    {
        CComPtr<IUnknown> element;
        if (FAILED(SafeArrayGetElement(list.parray, &i, &element)))
            return true;
        const CComQIPtr<IWbemClassObject> message(element);
        if (NumberIn(message, L"Kind").value_or(1) == 1)
            return true;
    }
    return false;
}

} // namespace

Writer::Writer(Ledger& ledger, CComPtr<IWbemServices> services, const std::wstring& hba, Witness witness)
    : m_ledger(ledger), m_services(std::move(services)), m_witness(std::move(witness)), m_account(hba, SettingDefault)
{
}

void Writer::Tell(const std::string& line) const
{
    if (m_witness)
        m_witness(line);
}

void Writer::Step(Dice& dice)
{
    switch (dice.Below(8))
    {
    case 0:
    case 1:
    case 2:
        return Create(dice);
    case 3:
    case 4:
        return Delete(dice);
    case 5:
        return Reset();
    default:
        return Write(dice);
    }
}

// True when the answer says that the action was done.
bool Writer::CallMethod(const std::wstring& path, const wchar_t* method, IWbemClassObject* in,
                        CComPtr<IWbemClassObject>& out)
{
    const CComBSTR object(path.c_str());
    const CComBSTR name(method);
    const HRESULT code =
        Ask(m_ledger, [&] { return m_services->ExecMethod(object, name, 0, nullptr, in, &out, nullptr); });
    return SUCCEEDED(code) && out && NumberIn(out, L"ReturnValue") == 0 && !TellsError(*out);
}

void Writer::Create(Dice& dice)
{
    const std::wstring name = SomePortName(m_account.Hba(), dice);
    const CComPtr<IWbemClassObject> in = ParametersOf(*m_services, L"Zarn_FCOEHBA", L"CreateVirtualPort");
    if (!Set(in, L"WorldWidePortName", CComVariant(name.c_str())))
        return;
    m_account.AskCreate(name);
    Tell("create " + Narrow(name));
    CComPtr<IWbemClassObject> out;
    if (!CallMethod(HbaPath(m_account.Hba()), L"CreateVirtualPort", in, out))
        return;
    m_account.Created(name);
    Tell("created " + Narrow(name));
    m_ledger.Add(Ledger::Created);
}

void Writer::Delete(Dice& dice)
{
    const std::wstring name = SomePortName(m_account.Hba(), dice);
    bool isDone = false;
    if (dice.OneIn(2))
    {
        const CComBSTR path(PortPath(m_account.Hba(), name).c_str());
        m_account.AskDelete(name);
        Tell("delete " + Narrow(name));
        isDone = SUCCEEDED(Ask(m_ledger, [&] { return m_services->DeleteInstance(path, 0, nullptr, nullptr); }));
    }
    else
    {
        const CComPtr<IWbemClassObject> in = ParametersOf(*m_services, L"Zarn_FCOEHBA", L"DeleteVirtualPort");
        if (!Set(in, L"WorldWidePortName", CComVariant(name.c_str())))
            return;
        m_account.AskDelete(name);
        Tell("delete " + Narrow(name));
        CComPtr<IWbemClassObject> out;
        isDone = CallMethod(HbaPath(m_account.Hba()), L"DeleteVirtualPort", in, out);
    }
    if (!isDone)
        return;
    m_account.Deleted(name);
    Tell("deleted " + Narrow(name));
    m_ledger.Add(Ledger::Deleted);
}

void Writer::Write(Dice& dice)
{
    const LONG value = 1 + static_cast<LONG>(dice.Below(SettingMax));
    const CComVariant text(std::to_wstring(value).c_str());
    bool isDone = false;
    if (dice.OneIn(2))
    {
        const CComPtr<IWbemClassObject> setting = SpawnOf(*m_services, L"Zarn_FCOESettingInt");
        if (!Set(setting, L"ParentType", CComVariant(L"NIC")) ||
            !Set(setting, L"ParentId", CComVariant(m_account.Hba().c_str())) ||
            !Set(setting, L"Caption", CComVariant(SettingName)) || !Set(setting, L"CurrentValue", text))
            return;
        m_account.AskWrite(value);
        Tell("write " + std::to_string(value));
        isDone = SUCCEEDED(Ask(m_ledger, [&] { return m_services->PutInstance(setting, 0, nullptr, nullptr); }));
    }
    else
    {
        const CComPtr<IWbemClassObject> in =
            ParametersOf(*m_services, L"Zarn_FCOESettingInt", L"ValidateAndSetSetting");
        if (!Set(in, L"CurrentValue", text) || !Set(in, L"SetValuesOnNoError", CComVariant(LONG{1})))
            return;
        m_account.AskWrite(value);
        Tell("write " + std::to_string(value));
        CComPtr<IWbemClassObject> out;
        isDone = CallMethod(SettingPath(m_account.Hba()), L"ValidateAndSetSetting", in, out);
    }
    if (isDone)
        WrittenAs(value);
}

void Writer::Reset()
{
    m_account.AskWrite(SettingDefault);
    Tell("write " + std::to_string(SettingDefault));
    CComPtr<IWbemClassObject> out;
    if (CallMethod(SettingPath(m_account.Hba()), L"SetDefault", nullptr, out))
        WrittenAs(SettingDefault);
}

void Writer::WrittenAs(LONG value)
{
    m_account.Written(value);
    Tell("written " + std::to_string(value));
    m_ledger.Add(Ledger::Written);
}

void Enter(Account& account, const std::string& line)
{
    const std::size_t space = line.find(' ');
    const std::string verb = line.substr(0, space);
    const std::string rest = space == line.npos ? std::string() : line.substr(space + 1);
    const std::wstring name(rest.begin(), rest.end());
    if (verb == "create")
        account.AskCreate(name);
    else if (verb == "created")
        account.Created(name);
    else if (verb == "delete")
        account.AskDelete(name);
    else if (verb == "deleted")
        account.Deleted(name);
    else if (verb == "write")
        account.AskWrite(static_cast<LONG>(std::stol(rest)));
    else if (verb == "written")
        account.Written(static_cast<LONG>(std::stol(rest)));
}

// What is there -------------------------------------------------------------------------------------------------------

std::optional<std::set<std::wstring>> VirtualPortsOf(IWbemServices& services, const std::wstring& hba)
{
    CComPtr<IEnumWbemClassObject> objects;
    const std::wstring query = L"SELECT * FROM Zarn_FCoEPort WHERE PortTypeID = 2 AND DeviceID = '" + hba + L"'";
    if (FAILED(services.ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &objects)))
        return std::nullopt;
    std::set<std::wstring> names;
    for (;;)
    {
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        const HRESULT code = objects->Next(WBEM_INFINITE, 1, &object, &returned);
        if (returned == 0)
            return code == WBEM_S_FALSE ? std::optional(names) : std::nullopt;
        names.insert(TextIn(object, L"WorldWidePortName"));
    }
}

std::optional<LONG> SettingOf(IWbemServices& services, const std::wstring& hba)
{
    CComPtr<IWbemClassObject> setting;
    services.GetObject(CComBSTR(SettingPath(hba).c_str()), 0, nullptr, &setting, nullptr);
    return NumberIn(setting, L"CurrentValue");
}

void CheckAccount(Ledger& ledger, IWbemServices& services, const Account& account)
{
    const auto ports = VirtualPortsOf(services, account.Hba());
    if (!ports)
        ledger.Wrong("the ports cannot be listed at the end");
    else
    {
        for (const std::string& broken : account.Broken(*ports, SettingOf(services, account.Hba())))
            ledger.Wrong(broken);
    }
}

} // namespace orl::test
