#include "tests/framework/Fixture.h"

#include "Common/Src/ModuleTrace.h"

#include <iomanip>
#include <ostream>

ORL_MODULE_TRACE_OFF;

namespace orl::test
{

std::ostream& operator<<(std::ostream& stream, Hex status)
{
    return stream << "0x" << std::hex << std::uppercase << static_cast<ULONG>(status.value) << std::dec;
}

std::string Narrow(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

void ScriptedManager::Send(CWomContext& context, const Sink& sink,
                           const std::vector<std::pair<std::wstring, std::wstring>>& texts)
{
    CWomClassObject classObject(context);
    classObject.CreateClass(CComBSTR(GetCimClassName()));
    CWomClassObject instance(context);
    instance.SpawnInstanceFromClass(classObject);
    for (const auto& [name, text] : texts)
        instance.SetProperty(name.c_str(), COrlString(text));
    instance.Indicate(sink);
}

HRESULT ScriptedManager::GetObjectAsync(Path& path, CWomContext& context, Sink sink)
{
    return get ? get(path, context, sink) : WBEM_S_NO_ERROR;
}

HRESULT ScriptedManager::CreateInstanceEnumAsync(CWomContext& context, Sink sink)
{
    return enumerate ? enumerate(context, sink) : WBEM_S_NO_ERROR;
}

HRESULT ScriptedManager::CreateInstanceAsync(CWomClassObject& instance, CWomContext& context, CComBSTR& path, Sink sink)
{
    return create ? create(instance, context, path, sink)
                  : CWomClassManagerRoot::CreateInstanceAsync(instance, context, path, sink);
}

HRESULT ScriptedManager::UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR reserved,
                                             Sink sink)
{
    return update ? update(instance, context, reserved, sink)
                  : CWomClassManagerRoot::UpdateInstanceAsync(instance, context, reserved, sink);
}

HRESULT ScriptedManager::DeleteInstanceAsync(Path& path, CWomContext& context, Sink sink)
{
    return remove ? remove(path, context, sink) : CWomClassManagerRoot::DeleteInstanceAsync(path, context, sink);
}

HRESULT ScriptedManager::ExecMethodAsync(Path& path, const wchar_t* name, CWomContext& context, CWomClassObject& in,
                                         CWomClassObject& out, Sink sink)
{
    return method ? method(path, name, context, in, out, sink)
                  : CWomClassManagerRoot::ExecMethodAsync(path, name, context, in, out, sink);
}

HRESULT ScriptedManager::ExecQueryAsync(CWomWQLParser& parsed, CWomContext& context, Sink sink)
{
    return query ? query(parsed, context, sink) : CWomClassManagerRoot::ExecQueryAsync(parsed, context, sink);
}

const ManagerTable* GivenManagers::Managers(HRESULT& answer, COrlString& why) noexcept
{
    ++asked;
    answer = status;
    why = reason;
    return SUCCEEDED(status) ? &table : nullptr;
}

ProviderTest::ProviderTest()
    : thing(MakeFakeClass(L"Zarn_Thing", {{L"DeviceID", CIM_STRING}, {L"Name", CIM_STRING}})),
      services(MakeObject<FakeWbemServices>()), manager(new ScriptedManager(L"Zarn_Thing")),
      provider(MakeObject<OrlInstProvider>(managers)), sink(MakeObject<RecordingSink>())
{
    services->Add(thing);
    services->Add(FakeExtendedStatus());
    managers.table.AddClassManager(CComBSTR(L"Zarn_Thing"), manager);
    const CComPtr<RecordingInitSink> told = MakeObject<RecordingInitSink>();
    EXPECT_EQ(Hex{provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, told)}, Hex{WBEM_S_NO_ERROR});
}

ProviderTest::~ProviderTest() = default;

CComPtr<RecordingSink> ProviderTest::Get(const wchar_t* path, IWbemContext* context)
{
    const CComPtr<RecordingSink> used = sink;
    EXPECT_EQ(Hex{provider->GetObjectAsync(CComBSTR(path), 0, context, used)}, Hex{WBEM_S_NO_ERROR});
    sink = MakeObject<RecordingSink>();
    return used;
}

CComPtr<RecordingSink> ProviderTest::Enumerate(const wchar_t* className, IWbemContext* context)
{
    const CComPtr<RecordingSink> used = sink;
    EXPECT_EQ(Hex{provider->CreateInstanceEnumAsync(CComBSTR(className), 0, context, used)}, Hex{WBEM_S_NO_ERROR});
    sink = MakeObject<RecordingSink>();
    return used;
}

CComPtr<RecordingSink> ProviderTest::Query(const wchar_t* query, const wchar_t* language)
{
    const CComPtr<RecordingSink> used = sink;
    EXPECT_EQ(Hex{provider->ExecQueryAsync(CComBSTR(language), CComBSTR(query), 0, nullptr, used)},
              Hex{WBEM_S_NO_ERROR});
    sink = MakeObject<RecordingSink>();
    return used;
}

} // namespace orl::test
