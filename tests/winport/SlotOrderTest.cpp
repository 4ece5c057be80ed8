// The order of the operations in the interfaces' tables: a binary contract. Each operation of the objects here answers
// the number of its slot, and each table is called slot by slot, without the interface's names.
#include <windows.h>
#include <oleauto.h>
#include <wbemcli.h>
#include <wbemprov.h>

#include <gtest/gtest.h>

namespace
{

// Calls a slot as an operation without arguments: the operations here look at none.
HRESULT CallSlot(void* object, size_t slot)
{
    using Operation = HRESULT(STDMETHODCALLTYPE*)(void*);
    return (*static_cast<Operation**>(object))[slot](object);
}

template <class Object>
void ExpectSlots(size_t count)
{
    Object object;
    for (size_t slot = 0; slot < count; ++slot)
        EXPECT_EQ(CallSlot(&object, slot), static_cast<HRESULT>(slot)) << "slot " << slot;
}

template <class Interface>
class Numbered : public Interface
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return 0; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 2; }
};

#define SLOT(number, name, ...)                                                                                        \
    HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override                                                               \
    {                                                                                                                  \
        return number;                                                                                                 \
    }

class Factory final : public Numbered<IClassFactory>
{
public:
    SLOT(3, CreateInstance, IUnknown*, REFIID, void**)
    SLOT(4, LockServer, BOOL)
};

class ErrorInfo final : public Numbered<IErrorInfo>
{
public:
    SLOT(3, GetGUID, GUID*)
    SLOT(4, GetSource, BSTR*)
    SLOT(5, GetDescription, BSTR*)
    SLOT(6, GetHelpFile, BSTR*)
    SLOT(7, GetHelpContext, DWORD*)
};

class QualifierSet final : public Numbered<IWbemQualifierSet>
{
public:
    SLOT(3, Get, LPCWSTR, LONG, VARIANT*, LONG*)
    SLOT(4, Put, LPCWSTR, VARIANT*, LONG)
    SLOT(5, Delete, LPCWSTR)
    SLOT(6, GetNames, LONG, SAFEARRAY**)
    SLOT(7, BeginEnumeration, LONG)
    SLOT(8, Next, LONG, BSTR*, VARIANT*, LONG*)
    SLOT(9, EndEnumeration, )
};

class ClassObject final : public Numbered<IWbemClassObject>
{
public:
    SLOT(3, GetQualifierSet, IWbemQualifierSet**)
    SLOT(4, Get, LPCWSTR, LONG, VARIANT*, CIMTYPE*, LONG*)
    SLOT(5, Put, LPCWSTR, LONG, VARIANT*, CIMTYPE)
    SLOT(6, Delete, LPCWSTR)
    SLOT(7, GetNames, LPCWSTR, LONG, VARIANT*, SAFEARRAY**)
    SLOT(8, BeginEnumeration, LONG)
    SLOT(9, Next, LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*)
    SLOT(10, EndEnumeration, )
    SLOT(11, GetPropertyQualifierSet, LPCWSTR, IWbemQualifierSet**)
    SLOT(12, Clone, IWbemClassObject**)
    SLOT(13, GetObjectText, LONG, BSTR*)
    SLOT(14, SpawnDerivedClass, LONG, IWbemClassObject**)
    SLOT(15, SpawnInstance, LONG, IWbemClassObject**)
    SLOT(16, CompareTo, LONG, IWbemClassObject*)
    SLOT(17, GetPropertyOrigin, LPCWSTR, BSTR*)
    SLOT(18, InheritsFrom, LPCWSTR)
    SLOT(19, GetMethod, LPCWSTR, LONG, IWbemClassObject**, IWbemClassObject**)
    SLOT(20, PutMethod, LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*)
    SLOT(21, DeleteMethod, LPCWSTR)
    SLOT(22, BeginMethodEnumeration, LONG)
    SLOT(23, NextMethod, LONG, BSTR*, IWbemClassObject**, IWbemClassObject**)
    SLOT(24, EndMethodEnumeration, )
    SLOT(25, GetMethodQualifierSet, LPCWSTR, IWbemQualifierSet**)
    SLOT(26, GetMethodOrigin, LPCWSTR, BSTR*)
};

class ObjectSink final : public Numbered<IWbemObjectSink>
{
public:
    SLOT(3, Indicate, LONG, IWbemClassObject**)
    SLOT(4, SetStatus, LONG, HRESULT, BSTR, IWbemClassObject*)
};

class Enumerator final : public Numbered<IEnumWbemClassObject>
{
public:
    SLOT(3, Reset, )
    SLOT(4, Next, LONG, ULONG, IWbemClassObject**, ULONG*)
    SLOT(5, NextAsync, ULONG, IWbemObjectSink*)
    SLOT(6, Clone, IEnumWbemClassObject**)
    SLOT(7, Skip, LONG, ULONG)
};

class Context final : public Numbered<IWbemContext>
{
public:
    SLOT(3, Clone, IWbemContext**)
    SLOT(4, GetNames, LONG, SAFEARRAY**)
    SLOT(5, BeginEnumeration, LONG)
    SLOT(6, Next, LONG, BSTR*, VARIANT*)
    SLOT(7, EndEnumeration, )
    SLOT(8, SetValue, LPCWSTR, LONG, VARIANT*)
    SLOT(9, GetValue, LPCWSTR, LONG, VARIANT*)
    SLOT(10, DeleteValue, LPCWSTR, LONG)
    SLOT(11, DeleteAll, )
};

class CallResult final : public Numbered<IWbemCallResult>
{
public:
    SLOT(3, GetResultObject, LONG, IWbemClassObject**)
    SLOT(4, GetResultString, LONG, BSTR*)
    SLOT(5, GetResultServices, LONG, IWbemServices**)
    SLOT(6, GetCallStatus, LONG, LONG*)
};

class Services final : public Numbered<IWbemServices>
{
public:
    SLOT(3, OpenNamespace, const BSTR, LONG, IWbemContext*, IWbemServices**, IWbemCallResult**)
    SLOT(4, CancelAsyncCall, IWbemObjectSink*)
    SLOT(5, QueryObjectSink, LONG, IWbemObjectSink**)
    SLOT(6, GetObject, const BSTR, LONG, IWbemContext*, IWbemClassObject**, IWbemCallResult**)
    SLOT(7, GetObjectAsync, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(8, PutClass, IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**)
    SLOT(9, PutClassAsync, IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(10, DeleteClass, const BSTR, LONG, IWbemContext*, IWbemCallResult**)
    SLOT(11, DeleteClassAsync, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(12, CreateClassEnum, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
    SLOT(13, CreateClassEnumAsync, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(14, PutInstance, IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**)
    SLOT(15, PutInstanceAsync, IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(16, DeleteInstance, const BSTR, LONG, IWbemContext*, IWbemCallResult**)
    SLOT(17, DeleteInstanceAsync, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(18, CreateInstanceEnum, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
    SLOT(19, CreateInstanceEnumAsync, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(20, ExecQuery, const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
    SLOT(21, ExecQueryAsync, const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(22, ExecNotificationQuery, const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
    SLOT(23, ExecNotificationQueryAsync, const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
    SLOT(24, ExecMethod, const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*, IWbemClassObject**,
         IWbemCallResult**)
    SLOT(25, ExecMethodAsync, const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*, IWbemObjectSink*)
};

class Locator final : public Numbered<IWbemLocator>
{
public:
    SLOT(3, ConnectServer, const BSTR, const BSTR, const BSTR, const BSTR, LONG, const BSTR, IWbemContext*,
         IWbemServices**)
};

class Shutdowner final : public Numbered<IWbemShutdown>
{
public:
    SLOT(3, Shutdown, LONG, ULONG, IWbemContext*)
};

class ProviderInit final : public Numbered<IWbemProviderInit>
{
public:
    SLOT(3, Initialize, LPWSTR, LONG, LPWSTR, LPWSTR, IWbemServices*, IWbemContext*, IWbemProviderInitSink*)
};

class ProviderInitSink final : public Numbered<IWbemProviderInitSink>
{
public:
    SLOT(3, SetStatus, LONG, LONG)
};

TEST(SlotOrder, EveryInterfaceHasTheSystemsOrder)
{
    ExpectSlots<Factory>(5);
    ExpectSlots<ErrorInfo>(8);
    ExpectSlots<QualifierSet>(10);
    ExpectSlots<ClassObject>(27);
    ExpectSlots<ObjectSink>(5);
    ExpectSlots<Enumerator>(8);
    ExpectSlots<Context>(12);
    ExpectSlots<CallResult>(7);
    ExpectSlots<Services>(26);
    ExpectSlots<Locator>(4);
    ExpectSlots<Shutdowner>(4);
    ExpectSlots<ProviderInit>(4);
    ExpectSlots<ProviderInitSink>(4);
}

} // namespace
