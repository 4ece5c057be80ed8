#include "tests/provider/Fixture.h"

#include "Common/Src/ModuleTrace.h"

ORL_MODULE_TRACE_OFF;

namespace orl::test
{

std::string Narrow(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

void ExpectRefusal(const std::function<void()>& request, const ExpectedRefusal& expected)
{
    try
    {
        request();
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const CWomProviderException& refusal)
    {
        EXPECT_EQ(refusal.ProviderCode(), expected.providerCode);
        EXPECT_EQ(std::wstring(refusal.Text()), expected.text);
        EXPECT_EQ(static_cast<ULONG>(refusal.WbemStatus()), expected.wbemStatus);
        EXPECT_EQ(std::wstring(refusal.SourceName()), expected.sourceName);
        EXPECT_EQ(refusal.Line(), expected.line);
        EXPECT_TRUE(refusal.ExtraText().empty());
        EXPECT_TRUE(refusal.Inserts().empty());
        ASSERT_EQ(refusal.Result() != nullptr, expected.result.has_value());
        if (expected.result)
        {
            EXPECT_EQ(refusal.Result()->ulErrCode, expected.result->ulErrCode);
            EXPECT_EQ(refusal.Result()->ulReserved, expected.result->ulReserved);
        }
    }
}

ManagerTest::ManagerTest()
{
    services.Attach(new FakeWbemServices());
    sink.Attach(new RecordingSink());
}

ManagerTest::~ManagerTest()
{
    EXPECT_EQ(sink->References(), 1U) << "a request kept a reference to its sink";
}

Outcome ManagerTest::Run(const std::function<HRESULT(CWomContext&)>& request)
{
    CWomContext context(services);
    context.ulSuppressProperties = suppressProperties;
    context.ulOmitSystemKeys = omitSystemKeys;
    context.ulDisplayValueUnsupported = displayValueUnsupported;
    context.ulStatus = status;
    Outcome outcome;
    const std::size_t before = sink->Objects().size();
    outcome.status = request(context);
    for (std::size_t i = before; i < sink->Objects().size(); ++i)
        outcome.instances.push_back(sink->Fake(i)->Puts());
    EXPECT_TRUE(sink->Statuses().empty()) << "the end of a request is the framework's to tell";
    return outcome;
}

Outcome ManagerTest::Get(CWomClassManagerRoot& manager, const wchar_t* path)
{
    COrlWmiAutoParsedObjectPath parsed;
    EXPECT_EQ(parsed.Parse(path), WBEM_S_NO_ERROR) << Narrow(path);
    return Run([&](CWomContext& context)
               { return manager.GetObjectAsync(parsed, context, CComPtr<IWbemObjectSink>(sink.p)); });
}

Outcome ManagerTest::Enumerate(CWomClassManagerRoot& manager)
{
    return Run([&](CWomContext& context)
               { return manager.CreateInstanceEnumAsync(context, CComPtr<IWbemObjectSink>(sink.p)); });
}

Outcome ManagerTest::Query(CWomClassManagerRoot& manager, const wchar_t* text)
{
    CWomWQLParser query;
    query.Parse(text);
    return Run([&](CWomContext& context)
               { return manager.ExecQueryAsync(query, context, CComPtr<IWbemObjectSink>(sink.p)); });
}

Outcome ManagerTest::Delete(CWomClassManagerRoot& manager, const wchar_t* path)
{
    COrlWmiAutoParsedObjectPath parsed;
    EXPECT_EQ(parsed.Parse(path), WBEM_S_NO_ERROR) << Narrow(path);
    return Run([&](CWomContext& context)
               { return manager.DeleteInstanceAsync(parsed, context, CComPtr<IWbemObjectSink>(sink.p)); });
}

Outcome ManagerTest::Update(CWomClassManagerRoot& manager, IWbemClassObject* instance)
{
    return Run(
        [&](CWomContext& context)
        {
            CWomClassObject written(context, instance);
            return manager.UpdateInstanceAsync(written, context, 0, CComPtr<IWbemObjectSink>(sink.p));
        });
}

Outcome ManagerTest::Call(CWomClassManagerRoot& manager, const wchar_t* path, const wchar_t* method,
                          IWbemClassObject* in, IWbemClassObject* out)
{
    COrlWmiAutoParsedObjectPath parsed;
    EXPECT_EQ(parsed.Parse(path), WBEM_S_NO_ERROR) << Narrow(path);
    return Run(
        [&](CWomContext& context)
        {
            CWomClassObject inParameters(context, in);
            CWomClassObject outParameters(context, out);
            return manager.ExecMethodAsync(parsed, method, context, inParameters, outParameters,
                                           CComPtr<IWbemObjectSink>(sink.p));
        });
}

Outcome ManagerTest::Call(CWomClassManagerRoot& manager, const wchar_t* path, const wchar_t* method,
                          const FakeClassPtr& out, const FakeParameters& in)
{
    const auto given = MakeObject<FakeClassObject>(MakeFakeClass(L"__PARAMETERS"));
    for (const auto& [name, value] : in)
        given->Preset(name, CComVariant(value));
    const auto set = MakeObject<FakeClassObject>(out);
    Outcome outcome = Call(manager, path, method, given, set);
    EXPECT_TRUE(outcome.instances.empty()) << "out-parameters are the framework's to send";
    outcome.instances.push_back(set->Puts());
    return outcome;
}

std::vector<std::wstring> ManagerTest::Shown(const std::vector<FakePut>& puts)
{
    std::vector<std::wstring> shown;
    for (const FakePut& put : puts)
        shown.push_back(put.name + L"=" + put.value);
    return shown;
}

std::wstring ManagerTest::ValueOf(const std::vector<FakePut>& puts, const std::wstring& name)
{
    std::wstring value = L"<none>";
    for (const FakePut& put : puts)
        value = put.name == name ? put.value : value;
    return value;
}

} // namespace orl::test
