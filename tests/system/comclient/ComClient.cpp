// A client that knows COM and WMI's interfaces only, on the service that the machine registers: qualifiers, spawned
// objects, objects that are changed, written, created and deleted. Prints what it is told, one line a step.

#include "com/OrlAtl.h"
#include "winport/portable/Utf8.h"

#include <cstdio>
#include <string>

namespace
{

constexpr wchar_t SettingPath[] =
    L"Zarn_FCOESettingInt.Caption=\"DevLossTimeout\",ParentId=\"eth0.1002\",ParentType=\"NIC\"";
constexpr wchar_t AdapterPath[] = L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"";

std::wstring Shown(const VARIANT& value)
{
    CComVariant text;
    if (value.vt == VT_NULL || value.vt == VT_EMPTY)
        return L"null";
    if ((value.vt & VT_ARRAY) != 0)
        return L"array of type " + std::to_wstring(value.vt & ~VT_ARRAY);
    return SUCCEEDED(text.ChangeType(VT_BSTR, &value)) ? std::wstring(text.bstrVal) : L"?";
}

void Print(const std::wstring& line)
{
    std::puts(orl::ToUtf8(line).c_str());
}

std::wstring Code(HRESULT status)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
    return std::wstring(text, text + 10);
}

// What the service says beside the status: the description of its __ExtendedStatus.
std::wstring Reason()
{
    CComPtr<IErrorInfo> error;
    if (GetErrorInfo(0, &error) != S_OK)
        return {};
    const CComQIPtr<IWbemClassObject> object(error);
    CComVariant description;
    if (object == nullptr || FAILED(object->Get(L"Description", 0, &description, nullptr, nullptr)))
        return {};
    return L": " + Shown(description);
}

// Prints a step's outcome; whether it succeeded.
bool Told(const std::wstring& what, HRESULT status)
{
    Print(what + L": " + Code(status) + (FAILED(status) ? Reason() : std::wstring()));
    return SUCCEEDED(status);
}

class Client
{
public:
    HRESULT Connect()
    {
        CComPtr<IWbemLocator> locator;
        const HRESULT made = locator.CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER);
        if (FAILED(made))
            return made;
        return locator->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                                      &m_service);
    }

    void ShowQualifiers()
    {
        const CComPtr<IWbemClassObject> definition = Get(L"Zarn_FCOESettingInt");
        if (definition == nullptr)
            return;
        CComPtr<IWbemQualifierSet> qualifiers;
        if (Told(L"qualifiers of the class", definition->GetQualifierSet(&qualifiers)))
            ShowQualifiers(qualifiers);
        for (const wchar_t* property : {L"Caption", L"CurrentValue"})
        {
            qualifiers.Release();
            if (Told(std::wstring(L"qualifiers of ") + property,
                     definition->GetPropertyQualifierSet(property, &qualifiers)))
                ShowQualifiers(qualifiers);
        }
        CComPtr<IWbemClassObject> in;
        Told(L"parameters of SetDefault", definition->GetMethod(L"SetDefault", 0, &in, nullptr));
        Print(in == nullptr ? L"  none go in" : L"  some go in");
    }

    // An object that the client makes itself holds the keys and what it changes.
    void WriteSpawned()
    {
        const CComPtr<IWbemClassObject> definition = Get(L"Zarn_FCOESettingInt");
        CComPtr<IWbemClassObject> spawned;
        if (definition == nullptr || !Told(L"spawn", definition->SpawnInstance(0, &spawned)))
            return;
        for (const auto& [name, value] :
             {std::pair(L"Caption", L"DevLossTimeout"), std::pair(L"ParentId", L"eth0.1002"),
              std::pair(L"ParentType", L"NIC"), std::pair(L"CurrentValue", L"45")})
            Put(spawned, name, CComVariant(value));
        Told(L"write it", m_service->PutInstance(spawned, WBEM_FLAG_UPDATE_ONLY, nullptr, nullptr));
        ShowValue();
        Told(L"create it", m_service->PutInstance(spawned, WBEM_FLAG_CREATE_ONLY, nullptr, nullptr));
    }

    // An object that the service gave, changed in a copy, with values of several types.
    void WriteChanged()
    {
        const CComPtr<IWbemClassObject> setting = Get(SettingPath);
        CComPtr<IWbemClassObject> copy;
        if (setting == nullptr || !Told(L"clone", setting->Clone(&copy)))
            return;
        Put(copy, L"CurrentValue", CComVariant(50U));
        Put(copy, L"NoSuchProperty", CComVariant(1));
        Told(L"compare", copy->CompareTo(WBEM_COMPARISON_INCLUDE_ALL, setting));
        CComPtr<IWbemCallResult> call;
        if (Told(L"write it later", m_service->PutInstance(copy, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &call)))
        {
            LONG status = 0;
            Told(L"wait", call->GetCallStatus(10000, &status));
            Told(L"the call", status);
        }
        ShowValue();
        Put(copy, L"CurrentValue", CComVariant(L"99999"));
        Told(L"write too much", m_service->PutInstance(copy, 0, nullptr, nullptr));
        ShowValue();
    }

    void CreateAndDelete()
    {
        CComPtr<IWbemClassObject> in;
        const CComPtr<IWbemClassObject> definition = Get(L"Zarn_FCOEHBA");
        if (definition == nullptr ||
            !Told(L"parameters of CreateVirtualPort", definition->GetMethod(L"CreateVirtualPort", 0, &in, nullptr)))
            return;
        CComPtr<IWbemClassObject> given;
        CComPtr<IWbemClassObject> out;
        Told(L"spawn", in->SpawnInstance(0, &given));
        Put(given, L"WorldWidePortName", CComVariant(L"2102525400fc0001"));
        if (!Told(L"CreateVirtualPort", m_service->ExecMethod(CComBSTR(AdapterPath), CComBSTR(L"CreateVirtualPort"), 0,
                                                              nullptr, given, &out, nullptr)))
            return;
        CComVariant path;
        out->Get(L"PortPath", 0, &path, nullptr, nullptr);
        Print(L"  " + Shown(path));
        Get(Shown(path).c_str());
        Told(L"delete", m_service->DeleteInstance(CComBSTR(Shown(path).c_str()), 0, nullptr, nullptr));
        Get(Shown(path).c_str());
        Told(L"delete the adapter", m_service->DeleteInstance(CComBSTR(AdapterPath), 0, nullptr, nullptr));
    }

private:
    CComPtr<IWbemClassObject> Get(const wchar_t* path)
    {
        CComPtr<IWbemClassObject> object;
        Told(std::wstring(L"get ") + path, m_service->GetObject(CComBSTR(path), 0, nullptr, &object, nullptr));
        return object;
    }
    void Put(IWbemClassObject* object, const wchar_t* name, CComVariant value)
    {
        Told(std::wstring(L"put ") + name + L" = " + Shown(value), object->Put(name, 0, &value, 0));
    }
    void ShowValue()
    {
        const CComPtr<IWbemClassObject> setting = Get(SettingPath);
        CComVariant value;
        if (setting != nullptr && SUCCEEDED(setting->Get(L"CurrentValue", 0, &value, nullptr, nullptr)))
            Print(L"  CurrentValue " + Shown(value));
    }
    static void ShowQualifiers(IWbemQualifierSet* qualifiers)
    {
        qualifiers->BeginEnumeration(0);
        while (true)
        {
            CComBSTR name;
            CComVariant value;
            if (qualifiers->Next(0, &name, &value, nullptr) != WBEM_S_NO_ERROR)
                break;
            // Descriptions are for people and may change.
            Print(L"  " + std::wstring(name.m_str) + (name == L"Description" ? std::wstring() : L" " + Shown(value)));
        }
        qualifiers->EndEnumeration();
    }

    CComPtr<IWbemServices> m_service;
};

} // namespace

int main()
{
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)))
        return 2;
    {
        Client client;
        if (!Told(L"connect", client.Connect()))
            return 1;
        client.ShowQualifiers();
        client.WriteSpawned();
        client.WriteChanged();
        client.CreateAndDelete();
    }
    CoUninitialize();
    return 0;
}
