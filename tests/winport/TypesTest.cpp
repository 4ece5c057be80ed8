// The sizes, values and identifiers that all code relies on: the same table compiles against the system's own headers.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <wbemcli.h>
#include <wbemprov.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <type_traits>

namespace
{

static_assert(sizeof(BYTE) == 1 && std::is_unsigned_v<BYTE>);
static_assert(sizeof(SHORT) == 2 && std::is_signed_v<SHORT>);
static_assert(sizeof(USHORT) == 2 && sizeof(WORD) == 2);
static_assert(sizeof(LONG) == 4 && std::is_signed_v<LONG>);
static_assert(sizeof(ULONG) == 4 && std::is_unsigned_v<ULONG>);
static_assert(sizeof(DWORD) == 4 && std::is_unsigned_v<DWORD>);
static_assert(sizeof(UINT) == 4 && sizeof(INT) == 4 && sizeof(BOOL) == 4);
static_assert(sizeof(HRESULT) == 4 && std::is_signed_v<HRESULT>);
static_assert(sizeof(LONGLONG) == 8 && sizeof(ULONGLONG) == 8 && sizeof(LARGE_INTEGER) == 8);
static_assert(sizeof(INT_PTR) == sizeof(void*) && sizeof(SIZE_T) == sizeof(void*));
static_assert(sizeof(HKEY) == sizeof(void*) && sizeof(HMODULE) == sizeof(void*));
static_assert(std::is_same_v<HMODULE, HINSTANCE>);
static_assert(std::is_same_v<WCHAR, wchar_t> && std::is_same_v<OLECHAR, wchar_t>);
static_assert(std::is_same_v<BSTR, wchar_t*>);
static_assert(sizeof(GUID) == 16 && offsetof(GUID, Data4) == 8);
static_assert(sizeof(SYSTEMTIME) == 16);
static_assert(sizeof(VARIANT_BOOL) == 2 && VARIANT_TRUE == -1 && VARIANT_FALSE == 0);
static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, bstrVal) == 8 && offsetof(VARIANT, parray) == 8);
static_assert(sizeof(SAFEARRAYBOUND) == 8 && offsetof(SAFEARRAY, pvData) == 16);
static_assert(sizeof(CIMTYPE) == 4);

static_assert(VT_EMPTY == 0 && VT_NULL == 1 && VT_I2 == 2 && VT_I4 == 3 && VT_R4 == 4 && VT_R8 == 5 && VT_BSTR == 8);
static_assert(VT_BOOL == 11 && VT_VARIANT == 12 && VT_UNKNOWN == 13 && VT_I1 == 16 && VT_UI1 == 17 && VT_UI2 == 18);
static_assert(VT_UI4 == 19 && VT_I8 == 20 && VT_UI8 == 21 && VT_ARRAY == 0x2000 && VT_BYREF == 0x4000);

static_assert(MAX_PATH == 260);
static_assert(CP_ACP == 0 && CP_UTF8 == 65001);
static_assert(REG_SZ == 1 && REG_EXPAND_SZ == 2 && REG_BINARY == 3 && REG_DWORD == 4 && REG_MULTI_SZ == 7);
static_assert(KEY_READ == 0x20019 && KEY_WRITE == 0x20006 && KEY_ALL_ACCESS == 0xF003F);
static_assert(LOCALE_IDEFAULTANSICODEPAGE == 0x1004);

static_assert(CIM_SINT8 == 16 && CIM_UINT8 == 17 && CIM_SINT16 == 2 && CIM_UINT16 == 18 && CIM_SINT32 == 3);
static_assert(CIM_UINT32 == 19 && CIM_SINT64 == 20 && CIM_UINT64 == 21 && CIM_REAL32 == 4 && CIM_REAL64 == 5);
static_assert(CIM_BOOLEAN == 11 && CIM_STRING == 8 && CIM_DATETIME == 101 && CIM_REFERENCE == 102);
static_assert(CIM_CHAR16 == 103 && CIM_OBJECT == 13 && CIM_FLAG_ARRAY == 0x2000);

static_assert(WBEM_FLAG_RETURN_IMMEDIATELY == 0x10 && WBEM_FLAG_FORWARD_ONLY == 0x20 && WBEM_INFINITE == -1);
static_assert(WBEM_FLAG_SEND_STATUS == 0x80 && WBEM_STATUS_COMPLETE == 0 && WBEM_STATUS_PROGRESS == 2);
static_assert(WBEM_FLAG_KEYS_ONLY == 4 && WBEM_FLAG_SYSTEM_ONLY == 0x30 && WBEM_FLAG_NONSYSTEM_ONLY == 0x40);

struct Code
{
    const char* name;
    LONG value;
    ULONG expected;
};

#define CODE(name, expected)                                                                                           \
    {                                                                                                                  \
#name, static_cast < LONG>(name), expected                                                                     \
    }

constexpr Code Codes[] = {
    CODE(S_OK, 0),
    CODE(S_FALSE, 1),
    CODE(E_NOTIMPL, 0x80004001),
    CODE(E_NOINTERFACE, 0x80004002),
    CODE(E_POINTER, 0x80004003),
    CODE(E_ABORT, 0x80004004),
    CODE(E_FAIL, 0x80004005),
    CODE(E_UNEXPECTED, 0x8000FFFF),
    CODE(E_ACCESSDENIED, 0x80070005),
    CODE(E_HANDLE, 0x80070006),
    CODE(E_OUTOFMEMORY, 0x8007000E),
    CODE(E_INVALIDARG, 0x80070057),
    CODE(DISP_E_TYPEMISMATCH, 0x80020005),
    CODE(DISP_E_BADVARTYPE, 0x80020008),
    CODE(DISP_E_OVERFLOW, 0x8002000A),
    CODE(DISP_E_BADINDEX, 0x8002000B),
    CODE(DISP_E_ARRAYISLOCKED, 0x8002000D),
    CODE(CLASS_E_NOAGGREGATION, 0x80040110),
    CODE(CLASS_E_CLASSNOTAVAILABLE, 0x80040111),
    CODE(REGDB_E_CLASSNOTREG, 0x80040154),
    CODE(CO_E_NOTINITIALIZED, 0x800401F0),
    CODE(CO_E_CLASSSTRING, 0x800401F3),
    CODE(CO_E_ERRORINDLL, 0x800401F9),
    CODE(ERROR_FILE_NOT_FOUND, 2),
    CODE(ERROR_PATH_NOT_FOUND, 3),
    CODE(ERROR_ACCESS_DENIED, 5),
    CODE(ERROR_INVALID_HANDLE, 6),
    CODE(ERROR_INVALID_PARAMETER, 87),
    CODE(ERROR_BUFFER_OVERFLOW, 111),
    CODE(ERROR_INSUFFICIENT_BUFFER, 122),
    CODE(ERROR_MOD_NOT_FOUND, 126),
    CODE(ERROR_PROC_NOT_FOUND, 127),
    CODE(ERROR_BAD_EXE_FORMAT, 193),
    CODE(ERROR_ENVVAR_NOT_FOUND, 203),
    CODE(ERROR_MORE_DATA, 234),
    CODE(ERROR_NO_MORE_ITEMS, 259),
    CODE(ERROR_INVALID_FLAGS, 1004),
    CODE(ERROR_BADDB, 1009),
    CODE(ERROR_KEY_DELETED, 1018),
    CODE(ERROR_NO_UNICODE_TRANSLATION, 1113),
    CODE(ERROR_RESOURCE_NAME_NOT_FOUND, 1814),
    CODE(WBEM_S_NO_ERROR, 0),
    CODE(WBEM_S_FALSE, 1),
    CODE(WBEM_S_TIMEDOUT, 0x40004),
    CODE(WBEM_S_NO_MORE_DATA, 0x40005),
    CODE(WBEM_S_OPERATION_CANCELLED, 0x40006),
    CODE(WBEM_S_DUPLICATE_OBJECTS, 0x40008),
    CODE(WBEM_E_FAILED, 0x80041001),
    CODE(WBEM_E_NOT_FOUND, 0x80041002),
    CODE(WBEM_E_ACCESS_DENIED, 0x80041003),
    CODE(WBEM_E_PROVIDER_FAILURE, 0x80041004),
    CODE(WBEM_E_TYPE_MISMATCH, 0x80041005),
    CODE(WBEM_E_OUT_OF_MEMORY, 0x80041006),
    CODE(WBEM_E_INVALID_CONTEXT, 0x80041007),
    CODE(WBEM_E_INVALID_PARAMETER, 0x80041008),
    CODE(WBEM_E_NOT_AVAILABLE, 0x80041009),
    CODE(WBEM_E_NOT_SUPPORTED, 0x8004100C),
    CODE(WBEM_E_INVALID_NAMESPACE, 0x8004100E),
    CODE(WBEM_E_INVALID_OBJECT, 0x8004100F),
    CODE(WBEM_E_INVALID_CLASS, 0x80041010),
    CODE(WBEM_E_PROVIDER_NOT_FOUND, 0x80041011),
    CODE(WBEM_E_PROVIDER_LOAD_FAILURE, 0x80041013),
    CODE(WBEM_E_INVALID_OPERATION, 0x80041016),
    CODE(WBEM_E_INVALID_QUERY, 0x80041017),
    CODE(WBEM_E_INVALID_QUERY_TYPE, 0x80041018),
    CODE(WBEM_E_ALREADY_EXISTS, 0x80041019),
    CODE(WBEM_E_UNEXPECTED, 0x8004101D),
    CODE(WBEM_E_READ_ONLY, 0x80041023),
    CODE(WBEM_E_PROVIDER_NOT_CAPABLE, 0x80041024),
    CODE(WBEM_E_ILLEGAL_NULL, 0x80041028),
    CODE(WBEM_E_VALUE_OUT_OF_RANGE, 0x8004102B),
    CODE(WBEM_E_INVALID_METHOD, 0x8004102E),
    CODE(WBEM_E_INVALID_METHOD_PARAMETERS, 0x8004102F),
    CODE(WBEM_E_INVALID_PROPERTY, 0x80041031),
    CODE(WBEM_E_CALL_CANCELLED, 0x80041032),
    CODE(WBEM_E_SHUTTING_DOWN, 0x80041033),
    CODE(WBEM_E_INVALID_OBJECT_PATH, 0x8004103A),
    CODE(WBEM_E_METHOD_NOT_IMPLEMENTED, 0x80041055),
    CODE(WBEM_E_UNPARSABLE_QUERY, 0x80041058),
    CODE(WBEM_E_TIMED_OUT, 0x80041069),
};

TEST(Types, ErrorCodesAreTheSystems)
{
    for (const Code& code : Codes)
        EXPECT_EQ(static_cast<ULONG>(code.value), code.expected) << code.name;
}

TEST(Types, AnErrorBecomesAnHResultOfTheSystemsFacility)
{
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_SUCCESS), S_OK);
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), E_ACCESSDENIED);
    // What is an HRESULT already stays.
    EXPECT_EQ(HRESULT_FROM_WIN32(static_cast<DWORD>(E_FAIL)), E_FAIL);
    EXPECT_TRUE(SUCCEEDED(S_FALSE));
    EXPECT_TRUE(FAILED(WBEM_E_FAILED));
}

struct Identifier
{
    const GUID& guid;
    const wchar_t* text;
};

const Identifier Identifiers[] = {
    {IID_IUnknown, L"{00000000-0000-0000-C000-000000000046}"},
    {IID_IClassFactory, L"{00000001-0000-0000-C000-000000000046}"},
    {IID_IErrorInfo, L"{1CF2B120-547D-101B-8E65-08002B2BD119}"},
    {IID_IWbemClassObject, L"{DC12A681-737F-11CF-884D-00AA004B2E24}"},
    {IID_IWbemQualifierSet, L"{DC12A680-737F-11CF-884D-00AA004B2E24}"},
    {IID_IWbemLocator, L"{DC12A687-737F-11CF-884D-00AA004B2E24}"},
    {IID_IWbemObjectSink, L"{7C857801-7381-11CF-884D-00AA004B2E24}"},
    {IID_IEnumWbemClassObject, L"{027947E1-D731-11CE-A357-000000000001}"},
    {IID_IWbemContext, L"{44ACA674-E8FC-11D0-A07C-00C04FB68820}"},
    {IID_IWbemCallResult, L"{44ACA675-E8FC-11D0-A07C-00C04FB68820}"},
    {IID_IWbemServices, L"{9556DC99-828C-11CF-A37E-00AA003240C7}"},
    {IID_IWbemShutdown, L"{B7B31DF9-D515-11D3-A11C-00105A1F515A}"},
    {IID_IWbemProviderInit, L"{1BE41572-91DD-11D1-AEB2-00C04FB68820}"},
    {IID_IWbemProviderInitSink, L"{1BE41571-91DD-11D1-AEB2-00C04FB68820}"},
    {CLSID_WbemLocator, L"{4590F811-1D3A-11D0-891F-00AA004B2E24}"},
    {CLSID_WbemContext, L"{674B6698-EE92-11D0-AD71-00C04FD8FDFF}"},
};

TEST(Types, IdentifiersAreTheSystems)
{
    for (const Identifier& identifier : Identifiers)
    {
        wchar_t text[39] = {};
        ASSERT_EQ(StringFromGUID2(identifier.guid, text, 39), 39);
        EXPECT_EQ(std::wstring(text), identifier.text);
    }
}

} // namespace
