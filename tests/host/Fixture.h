// A service of a test's own: a schema in memory and a scripted provider.
#pragma once

#include "host/Host.h"
#include "tests/host/ScriptedProvider.h"
#include "tests/support/Collector.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace orl::test
{

// What the thread's error object told about the last failure; taking it leaves none. Empty texts are nulls.
struct Told
{
    std::wstring code; // 0x80041002
    std::wstring description;
    std::wstring operation;
    std::wstring parameter;
    std::wstring provider;

    bool operator==(const Told&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Told& told);

Told TakeTold();
// The same of an object that came with SetStatus.
Told ToldBy(IWbemClassObject* status);

// A value for people: numbers in decimal, texts as they are, TRUE, NULL, {a, b}, an object as Class{A=1, B=x}.
std::wstring Shown(const VARIANT& value);
// A property of an object; "<0x80041002>" when Get fails.
std::wstring Show(IWbemClassObject* object, const wchar_t* property);
// The names of a SAFEARRAY of texts, which is destroyed.
std::vector<std::wstring> NamesIn(SAFEARRAY* names);

// The classes that most tests use: Test_Lamp and below it Test_Bulb, served by the scripted provider, and Test_Room,
// whose instances the MOF declares.
extern const wchar_t* const kLampMof;

class HostTest : public ::testing::Test
{
protected:
    HostTest();
    ~HostTest() override;

    // Another schema than kLampMof; before the first connection.
    void Use(std::wstring mof) { m_mof = std::move(mof); }
    CComPtr<IWbemServices> Connect(const wchar_t* nameSpace = L"root\\KESTA");
    IWbemServices& Service(); // one connection, made at the first use
    ScriptedProvider& Provider() { return *m_provider; }
    Host& Own() { return *m_host; }

    // The provider's answer to enumerations of Test_Lamp, gets and queries: lamps of these names with 10, 20, ...
    // watts.
    void ServeLamps(std::vector<std::wstring> names);
    CComPtr<IWbemClassObject> Lamp(const std::wstring& name, int watts);

    CComPtr<IWbemClassObject> GetClass(const wchar_t* name);
    CComPtr<IWbemClassObject> Spawn(const wchar_t* className);

    // What a loader answers instead of the provider.
    HRESULT m_loadAnswer = S_OK;
    int m_loads = 0;

private:
    CComPtr<ScriptedProvider> m_provider;
    std::wstring m_mof;
    std::unique_ptr<Host> m_host;
    CComPtr<IWbemServices> m_service;
};

// All objects that an enumerator yields from where it stands, one property of each.
std::vector<std::wstring> Drain(IEnumWbemClassObject* enumerator, const wchar_t* property, HRESULT* end = nullptr);

} // namespace orl::test
