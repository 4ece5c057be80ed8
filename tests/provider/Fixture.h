// What the tests of the provider share: a scripted agent, a service that knows the classes, and the requests that a
// framework would make of a manager.
#pragma once

#include "tests/support/FakeWbemServices.h"
#include "tests/support/RecordingSink.h"
#include "tests/support/ScriptedAgent.h"
#include "tests/support/TraceCapture.h"

#include "framework/include/CWomClassManagerRoot.h"
#include "framework/include/CWomProviderException.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orl::test
{

// ASCII text for messages.
std::string Narrow(const std::wstring& text);

// What one request came to.
struct Outcome
{
    HRESULT status = E_UNEXPECTED;
    // The puts of each instance that was indicated, in order.
    std::vector<std::vector<FakePut>> instances;
};

// An exception as a test expects it.
struct ExpectedRefusal
{
    ULONG providerCode;
    std::wstring text;
    ULONG wbemStatus;
    std::wstring sourceName;
    int line;
    // The agent's record that the exception was made from, if it was.
    std::optional<CResult> result = {};
};

// Runs what must throw and compares all that the exception carries.
void ExpectRefusal(const std::function<void()>& request, const ExpectedRefusal& expected);

// In-parameters by name; null ones are left unset.
using FakeParameters = std::vector<std::pair<const wchar_t*, const wchar_t*>>;

// A manager's test makes its requests through this.
class ManagerTest : public ::testing::Test
{
protected:
    ManagerTest();
    // No request may keep a reference to the sink.
    ~ManagerTest() override;

    Outcome Get(CWomClassManagerRoot& manager, const wchar_t* path);
    Outcome Enumerate(CWomClassManagerRoot& manager);
    Outcome Query(CWomClassManagerRoot& manager, const wchar_t* text);
    Outcome Delete(CWomClassManagerRoot& manager, const wchar_t* path);
    // Without an instance the update carries nothing.
    Outcome Update(CWomClassManagerRoot& manager, IWbemClassObject* instance = nullptr);
    // Either of the parameters may be null.
    Outcome Call(CWomClassManagerRoot& manager, const wchar_t* path, const wchar_t* method, IWbemClassObject* in,
                 IWbemClassObject* out);
    // The out-parameters take what `out` declares; what is set in them is the outcome's only "instance".
    Outcome Call(CWomClassManagerRoot& manager, const wchar_t* path, const wchar_t* method, const FakeClassPtr& out,
                 const FakeParameters& in = {});
    // The instance's puts as "Name=value".
    static std::vector<std::wstring> Shown(const std::vector<FakePut>& puts);
    // The value that the instance was sent with, "<none>" when it was not put.
    static std::wstring ValueOf(const std::vector<FakePut>& puts, const std::wstring& name);

    ScriptedAgent agent;
    CComPtr<FakeWbemServices> services;
    CComPtr<RecordingSink> sink;
    // The flags of the request to come.
    ULONG suppressProperties = 0;
    ULONG omitSystemKeys = 1;
    ULONG displayValueUnsupported = 0;
    ULONG status = 0;

    // Runs a request with those flags.
    Outcome Run(const std::function<HRESULT(CWomContext&)>& request);
};

} // namespace orl::test
