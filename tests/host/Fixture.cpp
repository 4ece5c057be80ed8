// A service of a test's own.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/Locator.h"

#include <algorithm>

namespace orl::test
{

const wchar_t* const kLampMof = LR"(
#pragma namespace("\\\\.\\root\\KESTA")

instance of __Win32Provider as $P { Name = "LampProvider"; CLSID = "{11111111-2222-3333-4444-555555555555}"; };
instance of __InstanceProviderRegistration
{
    Provider = $P; SupportsGet = TRUE; SupportsEnumeration = TRUE; SupportsPut = TRUE; SupportsDelete = TRUE;
    QuerySupportLevels = { "WQL:UnarySelect" };
};
instance of __MethodProviderRegistration { Provider = $P; };

[Description("Where lamps are")]
class Test_Room
{
    [key] string Name;
    [key] uint32 Floor;
    boolean HasWindow = TRUE;
};

class Test_Shade { string Material; uint8 Layers; };

[dynamic, provider("LampProvider"), Description("Gives light")]
class Test_Lamp
{
    [key, Description("What it is called")] string Name;
    [read, Units("watt")] uint32 Watts;
    uint64 Hours;
    sint64 Balance;
    boolean IsOn;
    string Colors[];
    real64 Dim = 0.5;
    datetime Installed;
    Test_Room ref Room;
    Test_Shade Shade;

    [Implemented] uint32 Switch([in] boolean On, [in, optional] string Reason, [out] boolean WasOn);
    [Implemented, static] uint32 CountAll([out] uint32 Lamps);
    [Implemented] void Polish();
    uint32 Unwired();
    [Implemented, Disabled] uint32 Broken();
};

[dynamic, provider("LampProvider")]
class Test_Bulb : Test_Lamp
{
    string Socket;
    [Implemented] uint32 Unscrew([in] uint8 Turns);
};

instance of Test_Room { Name = "Hall"; Floor = 0; };
instance of Test_Room { Name = "Attic"; Floor = 3; HasWindow = FALSE; };
)";

// Telling -------------------------------------------------------------------------------------------------------------

std::ostream& operator<<(std::ostream& stream, const Told& told)
{
    for (const std::wstring& text : {told.code, told.description, told.operation, told.parameter, told.provider})
        stream << " | " << ::testing::PrintToString(text);
    return stream;
}

Told ToldBy(IWbemClassObject* status)
{
    if (!status)
        return {};
    CComVariant code;
    status->Get(L"StatusCode", 0, &code, nullptr, nullptr);
    const auto text = [&](const wchar_t* name)
    {
        const std::wstring shown = Show(status, name);
        return shown == L"NULL" ? std::wstring() : shown;
    };
    return {code.vt == VT_I4 ? HexText(code.lVal) : std::wstring(), text(L"Description"), text(L"Operation"),
            text(L"ParameterInfo"), text(L"ProviderName")};
}

Told TakeTold()
{
    return ToldBy(TakeExtendedStatus());
}

namespace
{

std::wstring ShownObject(IUnknown* unknown)
{
    const CComQIPtr<IWbemClassObject> object(unknown);
    std::wstring text = Show(object, L"__CLASS") + L"{";
    object->BeginEnumeration(WBEM_FLAG_NONSYSTEM_ONLY);
    CComBSTR name;
    CComVariant value;
    for (bool isFirst = true; object->Next(0, &name, &value, nullptr, nullptr) == WBEM_S_NO_ERROR; isFirst = false)
    {
        text += (isFirst ? L"" : L", ") + TextOf(name) + L"=" + Shown(value);
        name.Empty();
        value.Clear();
    }
    return text + L"}";
}

std::wstring ShownArray(const VARIANT& value)
{
    LONG last = -1;
    SafeArrayGetUBound(value.parray, 1, &last);
    std::wstring text = L"{";
    for (LONG i = 0; i <= last; ++i)
    {
        CComVariant element;
        SafeArrayGetElement(value.parray, &i, &element.llVal);
        element.vt = static_cast<VARTYPE>(value.vt & VT_TYPEMASK);
        text += (i ? L", " : L"") + Shown(element);
    }
    return text + L"}";
}

} // namespace

std::wstring Shown(const VARIANT& value)
{
    if (value.vt & VT_ARRAY)
        return ShownArray(value);
    switch (value.vt)
    {
    case VT_EMPTY:
        return L"EMPTY";
    case VT_NULL:
        return L"NULL";
    case VT_BSTR:
        return TextOf(value.bstrVal);
    case VT_BOOL:
        return value.boolVal ? L"TRUE" : L"FALSE";
    case VT_UI1:
        return std::to_wstring(value.bVal);
    case VT_I2:
        return std::to_wstring(value.iVal);
    case VT_I4:
        return std::to_wstring(value.lVal);
    case VT_R4:
        return std::to_wstring(value.fltVal);
    case VT_R8:
        return std::to_wstring(value.dblVal);
    case VT_UNKNOWN:
        return ShownObject(value.punkVal);
    default:
        return L"vt " + std::to_wstring(value.vt);
    }
}

std::wstring Show(IWbemClassObject* object, const wchar_t* property)
{
    if (!object)
        return L"<no object>";
    CComVariant value;
    const HRESULT code = object->Get(property, 0, &value, nullptr, nullptr);
    return FAILED(code) ? L"<" + HexText(code) + L">" : Shown(value);
}

std::vector<std::wstring> NamesIn(SAFEARRAY* names)
{
    std::vector<std::wstring> found;
    LONG last = -1;
    SafeArrayGetUBound(names, 1, &last);
    for (LONG i = 0; i <= last; ++i)
    {
        CComBSTR name;
        SafeArrayGetElement(names, &i, &name);
        found.push_back(TextOf(name));
    }
    SafeArrayDestroy(names);
    return found;
}

std::vector<std::wstring> Drain(IEnumWbemClassObject* enumerator, const wchar_t* property, HRESULT* end)
{
    std::vector<std::wstring> found;
    for (;;)
    {
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        const HRESULT code = enumerator->Next(30000, 1, &object, &returned);
        if (returned == 0)
        {
            if (end)
                *end = code;
            return found;
        }
        found.push_back(Show(object, property));
    }
}

// The fixture
// -----------------------------------------------------------------------------------------------------------

HostTest::HostTest() : m_provider(MakeObject<ScriptedProvider>()), m_mof(kLampMof)
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    m_host =
        std::make_unique<Host>([this] { return Repository::FromText(m_mof, L"lamps.mof"); },
                               [this](const std::wstring&, IUnknown** provider) -> HRESULT
                               {
                                   ++m_loads;
                                   if (FAILED(m_loadAnswer))
                                       return m_loadAnswer;
                                   return m_provider->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(provider));
                               });
    SetErrorInfo(0, nullptr);
}

HostTest::~HostTest()
{
    SetErrorInfo(0, nullptr);
    m_service = nullptr;
    m_host->Workers().Stop(); // a provider may still be at work for a client that has gone
    m_provider->Forget();
    m_host.reset();
    CoUninitialize();
}

CComPtr<IWbemServices> HostTest::Connect(const wchar_t* nameSpace)
{
    const CComPtr<Locator> locator = MakeObject<Locator>(*m_host);
    CComPtr<IWbemServices> service;
    const HRESULT code =
        locator->ConnectServer(CComBSTR(nameSpace), nullptr, nullptr, nullptr, 0, nullptr, nullptr, &service);
    EXPECT_EQ(HexText(WBEM_S_NO_ERROR), HexText(code)) << TakeTold();
    return service;
}

IWbemServices& HostTest::Service()
{
    if (!m_service)
        m_service = Connect();
    return *m_service;
}

CComPtr<IWbemClassObject> HostTest::Lamp(const std::wstring& name, int watts)
{
    return m_provider->Make(L"Test_Lamp", {{L"Name", name.c_str()}, {L"Watts", watts}});
}

void HostTest::ServeLamps(std::vector<std::wstring> names)
{
    const auto send = [this, names](const std::wstring& what, IWbemObjectSink* sink) -> HRESULT
    {
        for (std::size_t i = 0; i < names.size() && what.find(L"Test_Bulb") == what.npos; ++i)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(names[i], static_cast<int>(i + 1) * 10);
            if (const HRESULT code = sink->Indicate(1, &lamp.p); FAILED(code))
                return sink->SetStatus(0, code, nullptr, nullptr);
        }
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    m_provider->get = send;
    m_provider->enumerate = send;
    m_provider->query = send;
}

CComPtr<IWbemClassObject> HostTest::GetClass(const wchar_t* name)
{
    CComPtr<IWbemClassObject> found;
    const HRESULT code = Service().GetObject(CComBSTR(name), 0, nullptr, &found, nullptr);
    EXPECT_EQ(HexText(WBEM_S_NO_ERROR), HexText(code)) << TakeTold();
    return found;
}

CComPtr<IWbemClassObject> HostTest::Spawn(const wchar_t* className)
{
    CComPtr<IWbemClassObject> instance;
    EXPECT_EQ(WBEM_S_NO_ERROR, GetClass(className)->SpawnInstance(0, &instance));
    return instance;
}

} // namespace orl::test
