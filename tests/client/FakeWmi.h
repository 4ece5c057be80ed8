// A WMI service of a test's own: objects, result sets and failures as the test wrote them down.
#pragma once

#include "com/OrlAtl.h"
#include "com/OrlCom.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orl::test
{

struct FakeProperty
{
    std::wstring name;
    CComVariant value;
    CIMTYPE type = CIM_STRING;
    std::map<std::wstring, CComVariant> qualifiers;
};

struct FakeMethod
{
    std::wstring name;
    std::vector<FakeProperty> in;
    std::vector<FakeProperty> out;
    std::map<std::wstring, CComVariant> qualifiers;
};

// What an object is made of. System properties are looked up by name; the others are listed too.
struct FakeContent
{
    std::map<std::wstring, CComVariant> system;
    std::vector<FakeProperty> properties;
    std::vector<FakeMethod> methods;
    std::map<std::wstring, CComVariant> qualifiers;
    std::wstring mof;
    HRESULT unreadable = S_OK; // what reading answers when it fails
};

// The objects that are alive: a client that streams keeps few.
LONG LiveFakeObjects();
LONG MostLiveFakeObjects();
void ForgetMostLiveFakeObjects();

CComPtr<IWbemClassObject> MakeFakeObject(FakeContent content);

// An instance with text properties.
FakeContent Instance(const std::wstring& className, const std::vector<std::pair<std::wstring, CComVariant>>& texts);

// A class definition with nothing in it yet.
FakeContent Definition(const std::wstring& className, const std::wstring& superclass = L"");

// What a request comes to: objects, then a status. `make` is asked for each object, so a result need not fit in memory.
struct FakeAnswer
{
    HRESULT atOnce = S_OK; // what the call itself answers
    size_t count = 0;
    std::function<FakeContent(size_t)> make;
    HRESULT atEnd = WBEM_S_FALSE;
    int slices = 0;          // how often a wait passes before each batch
    bool never = false;      // every wait passes
    FakeContent explanation; // the failure's __ExtendedStatus, when it has properties
};

FakeAnswer Objects(std::vector<FakeContent> contents);
FakeAnswer Refusal(HRESULT status, FakeContent explanation = {});
FakeContent MakeExtendedStatus(const std::wstring& description, const std::wstring& operation,
                               const std::wstring& parameter, const std::wstring& provider, LONG status);

// Leaves the explanation as the thread's error object, as a failing WMI call does.
void LeaveErrorInfo(const FakeContent& explanation);

// A value of an in-parameter as calls are noted: its VARIANT type and text, as in "BSTR x", "I4 7" or "BOOL[] {true}".
std::wstring NotedValue(const VARIANT& value);

// The service. Requests are noted as "GetObject(path)", "CreateInstanceEnum(class)", "ExecQuery(WQL, query)",
// "CreateClassEnum()", "ExecMethod(path, method)", with in-parameters "ExecMethod(path, method, name = value)",
// "PutInstance(class, name = value)" and "DeleteInstance(path)"; one that the test has no answer for is
// WBEM_E_NOT_FOUND. Of in-parameters and instances only what was put is noted.
class FakeServices
{
public:
    FakeServices();

    IWbemServices* Get() const { return m_services; }

    void OnGetObject(const std::wstring& path, FakeAnswer answer);
    void OnEnumerate(const std::wstring& className, FakeAnswer answer);
    void OnQuery(const std::wstring& wql, FakeAnswer answer);
    void OnClasses(FakeAnswer answer);
    void OnPut(const std::wstring& className, FakeAnswer answer);
    void OnDelete(const std::wstring& path, FakeAnswer answer);
    // For calls with any in-parameters.
    void OnMethod(const std::wstring& path, const std::wstring& method, FakeAnswer answer);

    const std::vector<std::wstring>& Calls() const;

    struct State;

private:
    std::shared_ptr<State> m_state;
    CComPtr<IWbemServices> m_services;
};

} // namespace orl::test
