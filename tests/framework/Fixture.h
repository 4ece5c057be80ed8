// What the tests of the framework share: a manager whose operations a test writes down, and a provider that serves it.
#pragma once

#include "framework/com/OrlInstProvider.h"
#include "framework/include/CWomClassManagerRoot.h"
#include "framework/include/CWomProviderException.h"
#include "tests/support/FakeWbemServices.h"
#include "tests/support/RecordingSink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace orl::test
{

// The HRESULT as everybody writes it, so that a failed comparison can be read.
struct Hex
{
    HRESULT value;
    bool operator==(const Hex&) const = default;
};
std::ostream& operator<<(std::ostream& stream, Hex status);

std::string Narrow(const std::wstring& text);

// Serves one class. An operation that a test did not write is the base's; a get and an enumeration without one send
// nothing.
class ScriptedManager final : public CWomClassManagerRoot
{
public:
    using Path = COrlWmiAutoParsedObjectPath;
    using Sink = CComPtr<IWbemObjectSink>;

    explicit ScriptedManager(std::wstring name) : m_name(std::move(name)) {}
    ~ScriptedManager() override
    {
        if (onDestroy)
            onDestroy();
    }

    std::function<HRESULT(Path&, CWomContext&, Sink)> get;
    std::function<HRESULT(CWomContext&, Sink)> enumerate;
    std::function<HRESULT(CWomClassObject&, CWomContext&, CComBSTR&, Sink)> create;
    std::function<HRESULT(CWomClassObject&, CWomContext&, ULONG_PTR, Sink)> update;
    std::function<HRESULT(Path&, CWomContext&, Sink)> remove;
    std::function<HRESULT(Path&, const wchar_t*, CWomContext&, CWomClassObject&, CWomClassObject&, Sink)> method;
    std::function<HRESULT(CWomWQLParser&, CWomContext&, Sink)> query;
    std::function<void()> onDestroy;

    // Spawns an instance of the manager's class, puts the texts into it and indicates it.
    void Send(CWomContext& context, const Sink& sink, const std::vector<std::pair<std::wstring, std::wstring>>& texts);

    const wchar_t* GetCimClassName() override { return m_name.c_str(); }
    HRESULT GetObjectAsync(Path& path, CWomContext& context, Sink sink) override;
    HRESULT CreateInstanceEnumAsync(CWomContext& context, Sink sink) override;
    HRESULT CreateInstanceAsync(CWomClassObject& instance, CWomContext& context, CComBSTR& path, Sink sink) override;
    HRESULT UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR reserved,
                                Sink sink) override;
    HRESULT DeleteInstanceAsync(Path& path, CWomContext& context, Sink sink) override;
    HRESULT ExecMethodAsync(Path& path, const wchar_t* name, CWomContext& context, CWomClassObject& in,
                            CWomClassObject& out, Sink sink) override;
    HRESULT ExecQueryAsync(CWomWQLParser& parsed, CWomContext& context, Sink sink) override;

private:
    std::wstring m_name;
};

// Answers a table that the test filled, or why there is none.
class GivenManagers final : public ManagerSource
{
public:
    ManagerTable table;
    HRESULT status = WBEM_S_NO_ERROR;
    COrlString reason;
    int asked = 0;

    const ManagerTable* Managers(HRESULT& answer, COrlString& why) noexcept override;
};

class RecordingInitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    std::vector<LONG> statuses;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG) override
    {
        statuses.push_back(status);
        return WBEM_S_NO_ERROR;
    }
};

// A provider that is initialized with a service which knows the class Zarn_Thing and __ExtendedStatus, and a manager
// for that class.
class ProviderTest : public ::testing::Test
{
protected:
    ProviderTest();
    ~ProviderTest() override;

    // Each runs one operation on a new sink, which it answers.
    CComPtr<RecordingSink> Get(const wchar_t* path, IWbemContext* context = nullptr);
    CComPtr<RecordingSink> Enumerate(const wchar_t* className, IWbemContext* context = nullptr);
    CComPtr<RecordingSink> Query(const wchar_t* query, const wchar_t* language = L"WQL");

    FakeClassPtr thing;
    CComPtr<FakeWbemServices> services;
    GivenManagers managers;
    ScriptedManager* manager; // the table's
    CComPtr<OrlInstProvider> provider;
    // Taken for the next operation and then replaced; a test may prepare it.
    CComPtr<RecordingSink> sink;
};

} // namespace orl::test
