// A library that brings class managers, in one of three ways (ORL_TEST_IMPLEMENTOR).
#include "Common/Src/ModuleTrace.h"
#include "framework/include/CWomProviderException.h"
#include "framework/include/ImplementorRegistry.h"

#include <cstdlib>
#include <memory>
#include <stdexcept>

ORL_MODULE_TRACE_OFF;

namespace
{

enum Kind
{
    Good,
    Failing,
    Throwing
};

// How often the export ran in this process, and how many managers live.
LONG g_registrations = 0;
LONG g_managers = 0;

// Stands for the library's own objects, its trace log first of all: managers use them when they are destroyed.
struct OwnObjects
{
    bool alive = true;
    ~OwnObjects() { alive = false; }
} g_ownObjects;

// Throws what the path's key "Kind" names; otherwise sends one instance.
class Manager final : public CWomClassManagerRoot
{
public:
    Manager() { ++g_managers; }
    ~Manager() override
    {
        --g_managers;
        if (!g_ownObjects.alive)
            std::abort();
    }

    const wchar_t* GetCimClassName() override { return L"Zarn_Thing"; }

    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                           CComPtr<IWbemObjectSink> sink) override
    {
        const COrlWmiNamedValue* key = path.GetKeyRef(L"Kind");
        const COrlString kind = key != nullptr ? key->Text() : COrlString();
        if (kind == L"provider")
        {
            throw CWomProviderException(context, 0x8004090F, path.PathText(), WBEM_E_ACCESS_DENIED, L"Src\\Test", 1,
                                        COrlString(L"extra"), {CComBSTR(L"insert")});
        }
        if (kind == L"atl")
            AtlThrow(E_OUTOFMEMORY);
        if (kind == L"alloc")
            throw std::bad_alloc();
        if (kind == L"std")
            throw std::runtime_error("thrown by an implementor");
        if (kind == L"int")
            throw 5;
        return CreateInstanceEnumAsync(context, sink);
    }

    HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) override
    {
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(GetCimClassName()));
        CWomClassObject instance(context);
        instance.SpawnInstanceFromClass(classObject);
        instance.SetProperty(L"DeviceID", COrlString(L"X"));
        instance.Indicate(sink);
        return WBEM_S_NO_ERROR;
    }
};

} // namespace

extern "C" __declspec(dllexport) LONG TestRegistrations()
{
    return g_registrations;
}

extern "C" __declspec(dllexport) LONG TestManagers()
{
    return g_managers;
}

extern "C" __declspec(dllexport) void RegisterCimImplementors(void* context, ImplementorRegistry* registry,
                                                              CResult* result)
{
    ++g_registrations;
    // Says that the context is not null by registering nothing.
    if (context != nullptr || ORL_TEST_IMPLEMENTOR == Failing)
        return;
    registry->AddClassManager(CComBSTR(L"Zarn_Thing"), new Manager);
    if (ORL_TEST_IMPLEMENTOR == Throwing)
        AtlThrow(E_OUTOFMEMORY);
    *result = CResult{0, 0};
}
