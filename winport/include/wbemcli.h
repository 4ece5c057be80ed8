// The WMI client interfaces, their flags and status codes. The order of the operations is the order of their slots.
#pragma once

#include <oleauto.h>

struct IWbemCallResult;
struct IWbemClassObject;
struct IWbemContext;
struct IWbemObjectSink;
struct IWbemQualifierSet;
struct IWbemServices;
struct IEnumWbemClassObject;

typedef LONG CIMTYPE;

// Types of properties.
typedef enum tag_CIMTYPE_ENUMERATION
{
    CIM_ILLEGAL = 0xfff,
    CIM_EMPTY = 0,
    CIM_SINT8 = 16,
    CIM_UINT8 = 17,
    CIM_SINT16 = 2,
    CIM_UINT16 = 18,
    CIM_SINT32 = 3,
    CIM_UINT32 = 19,
    CIM_SINT64 = 20,
    CIM_UINT64 = 21,
    CIM_REAL32 = 4,
    CIM_REAL64 = 5,
    CIM_BOOLEAN = 11,
    CIM_STRING = 8,
    CIM_DATETIME = 101,
    CIM_REFERENCE = 102,
    CIM_CHAR16 = 103,
    CIM_OBJECT = 13,
    CIM_FLAG_ARRAY = 0x2000
} CIMTYPE_ENUMERATION;

// Kinds of objects (__GENUS).
inline constexpr LONG WBEM_GENUS_CLASS = 1;
inline constexpr LONG WBEM_GENUS_INSTANCE = 2;

// Writing of classes and instances.
inline constexpr LONG WBEM_FLAG_CREATE_OR_UPDATE = 0;
inline constexpr LONG WBEM_FLAG_UPDATE_ONLY = 0x1;
inline constexpr LONG WBEM_FLAG_CREATE_ONLY = 0x2;

// How a call runs.
inline constexpr LONG WBEM_FLAG_RETURN_IMMEDIATELY = 0x10;
inline constexpr LONG WBEM_FLAG_RETURN_WBEM_COMPLETE = 0;
inline constexpr LONG WBEM_FLAG_BIDIRECTIONAL = 0;
inline constexpr LONG WBEM_FLAG_FORWARD_ONLY = 0x20;
inline constexpr LONG WBEM_FLAG_NO_ERROR_OBJECT = 0x40;
inline constexpr LONG WBEM_FLAG_RETURN_ERROR_OBJECT = 0;
inline constexpr LONG WBEM_FLAG_SEND_STATUS = 0x80;
inline constexpr LONG WBEM_FLAG_DONT_SEND_STATUS = 0;
inline constexpr LONG WBEM_FLAG_ENSURE_LOCATABLE = 0x100;
inline constexpr LONG WBEM_FLAG_DIRECT_READ = 0x200;
inline constexpr LONG WBEM_FLAG_USE_AMENDED_QUALIFIERS = 0x20000;
inline constexpr LONG WBEM_FLAG_CONNECT_USE_MAX_WAIT = 0x80;

// What a query asks for beside its result.
inline constexpr LONG WBEM_FLAG_DEEP = 0;
inline constexpr LONG WBEM_FLAG_SHALLOW = 1;
inline constexpr LONG WBEM_FLAG_PROTOTYPE = 2;

// Kinds of SetStatus.
inline constexpr LONG WBEM_STATUS_COMPLETE = 0;
inline constexpr LONG WBEM_STATUS_REQUIREMENTS = 1;
inline constexpr LONG WBEM_STATUS_PROGRESS = 2;

// Timeouts, in milliseconds.
inline constexpr LONG WBEM_NO_WAIT = 0;
inline constexpr LONG WBEM_INFINITE = static_cast<LONG>(0xFFFFFFFFu);

// Which names GetNames and BeginEnumeration yield.
inline constexpr LONG WBEM_FLAG_ALWAYS = 0;
inline constexpr LONG WBEM_FLAG_ONLY_IF_TRUE = 0x1;
inline constexpr LONG WBEM_FLAG_ONLY_IF_FALSE = 0x2;
inline constexpr LONG WBEM_FLAG_ONLY_IF_IDENTICAL = 0x3;
inline constexpr LONG WBEM_MASK_PRIMARY_CONDITION = 0x3;
inline constexpr LONG WBEM_FLAG_KEYS_ONLY = 0x4;
inline constexpr LONG WBEM_FLAG_REFS_ONLY = 0x8;
inline constexpr LONG WBEM_FLAG_LOCAL_ONLY = 0x10;
inline constexpr LONG WBEM_FLAG_PROPAGATED_ONLY = 0x20;
inline constexpr LONG WBEM_FLAG_SYSTEM_ONLY = 0x30;
inline constexpr LONG WBEM_FLAG_NONSYSTEM_ONLY = 0x40;
inline constexpr LONG WBEM_MASK_CONDITION_ORIGIN = 0x70;

// Qualifier flavors, and the origin of properties.
inline constexpr LONG WBEM_FLAVOR_DONT_PROPAGATE = 0;
inline constexpr LONG WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE = 0x1;
inline constexpr LONG WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS = 0x2;
inline constexpr LONG WBEM_FLAVOR_MASK_PROPAGATION = 0xF;
inline constexpr LONG WBEM_FLAVOR_OVERRIDABLE = 0;
inline constexpr LONG WBEM_FLAVOR_NOT_OVERRIDABLE = 0x10;
inline constexpr LONG WBEM_FLAVOR_MASK_PERMISSIONS = 0x10;
inline constexpr LONG WBEM_FLAVOR_ORIGIN_LOCAL = 0;
inline constexpr LONG WBEM_FLAVOR_ORIGIN_PROPAGATED = 0x20;
inline constexpr LONG WBEM_FLAVOR_ORIGIN_SYSTEM = 0x40;
inline constexpr LONG WBEM_FLAVOR_MASK_ORIGIN = 0x60;
inline constexpr LONG WBEM_FLAVOR_NOT_AMENDED = 0;
inline constexpr LONG WBEM_FLAVOR_AMENDED = 0x80;

// GetObjectText.
inline constexpr LONG WBEM_FLAG_NO_FLAVORS = 0x1;

// CompareTo.
inline constexpr LONG WBEM_COMPARISON_INCLUDE_ALL = 0;
inline constexpr LONG WBEM_FLAG_IGNORE_QUALIFIERS = 0x1;
inline constexpr LONG WBEM_FLAG_IGNORE_OBJECT_SOURCE = 0x2;
inline constexpr LONG WBEM_FLAG_IGNORE_DEFAULT_VALUES = 0x4;
inline constexpr LONG WBEM_FLAG_IGNORE_CLASS = 0x8;
inline constexpr LONG WBEM_FLAG_IGNORE_CASE = 0x10;
inline constexpr LONG WBEM_FLAG_IGNORE_FLAVOR = 0x20;

// Why a provider is shut down.
inline constexpr LONG WBEM_SHUTDOWN_UNLOAD_COMPONENT = 1;
inline constexpr LONG WBEM_SHUTDOWN_WMI = 2;
inline constexpr LONG WBEM_SHUTDOWN_OS = 3;

// Status codes.
inline constexpr HRESULT WBEM_NO_ERROR = 0;
inline constexpr HRESULT WBEM_S_NO_ERROR = 0;
inline constexpr HRESULT WBEM_S_SAME = 0;
inline constexpr HRESULT WBEM_S_FALSE = 1;
inline constexpr HRESULT WBEM_S_ALREADY_EXISTS = 0x00040001;
inline constexpr HRESULT WBEM_S_RESET_TO_DEFAULT = 0x00040002;
inline constexpr HRESULT WBEM_S_DIFFERENT = 0x00040003;
inline constexpr HRESULT WBEM_S_TIMEDOUT = 0x00040004;
inline constexpr HRESULT WBEM_S_NO_MORE_DATA = 0x00040005;
inline constexpr HRESULT WBEM_S_OPERATION_CANCELLED = 0x00040006;
inline constexpr HRESULT WBEM_S_PENDING = 0x00040007;
inline constexpr HRESULT WBEM_S_DUPLICATE_OBJECTS = 0x00040008;
inline constexpr HRESULT WBEM_S_ACCESS_DENIED = 0x00040009;
inline constexpr HRESULT WBEM_S_PARTIAL_RESULTS = 0x00040010;
inline constexpr HRESULT WBEM_S_SOURCE_NOT_AVAILABLE = 0x00040017;
inline constexpr HRESULT WBEM_E_FAILED = static_cast<HRESULT>(0x80041001u);
inline constexpr HRESULT WBEM_E_NOT_FOUND = static_cast<HRESULT>(0x80041002u);
inline constexpr HRESULT WBEM_E_ACCESS_DENIED = static_cast<HRESULT>(0x80041003u);
inline constexpr HRESULT WBEM_E_PROVIDER_FAILURE = static_cast<HRESULT>(0x80041004u);
inline constexpr HRESULT WBEM_E_TYPE_MISMATCH = static_cast<HRESULT>(0x80041005u);
inline constexpr HRESULT WBEM_E_OUT_OF_MEMORY = static_cast<HRESULT>(0x80041006u);
inline constexpr HRESULT WBEM_E_INVALID_CONTEXT = static_cast<HRESULT>(0x80041007u);
inline constexpr HRESULT WBEM_E_INVALID_PARAMETER = static_cast<HRESULT>(0x80041008u);
inline constexpr HRESULT WBEM_E_NOT_AVAILABLE = static_cast<HRESULT>(0x80041009u);
inline constexpr HRESULT WBEM_E_CRITICAL_ERROR = static_cast<HRESULT>(0x8004100Au);
inline constexpr HRESULT WBEM_E_INVALID_STREAM = static_cast<HRESULT>(0x8004100Bu);
inline constexpr HRESULT WBEM_E_NOT_SUPPORTED = static_cast<HRESULT>(0x8004100Cu);
inline constexpr HRESULT WBEM_E_INVALID_SUPERCLASS = static_cast<HRESULT>(0x8004100Du);
inline constexpr HRESULT WBEM_E_INVALID_NAMESPACE = static_cast<HRESULT>(0x8004100Eu);
inline constexpr HRESULT WBEM_E_INVALID_OBJECT = static_cast<HRESULT>(0x8004100Fu);
inline constexpr HRESULT WBEM_E_INVALID_CLASS = static_cast<HRESULT>(0x80041010u);
inline constexpr HRESULT WBEM_E_PROVIDER_NOT_FOUND = static_cast<HRESULT>(0x80041011u);
inline constexpr HRESULT WBEM_E_INVALID_PROVIDER_REGISTRATION = static_cast<HRESULT>(0x80041012u);
inline constexpr HRESULT WBEM_E_PROVIDER_LOAD_FAILURE = static_cast<HRESULT>(0x80041013u);
inline constexpr HRESULT WBEM_E_INITIALIZATION_FAILURE = static_cast<HRESULT>(0x80041014u);
inline constexpr HRESULT WBEM_E_TRANSPORT_FAILURE = static_cast<HRESULT>(0x80041015u);
inline constexpr HRESULT WBEM_E_INVALID_OPERATION = static_cast<HRESULT>(0x80041016u);
inline constexpr HRESULT WBEM_E_INVALID_QUERY = static_cast<HRESULT>(0x80041017u);
inline constexpr HRESULT WBEM_E_INVALID_QUERY_TYPE = static_cast<HRESULT>(0x80041018u);
inline constexpr HRESULT WBEM_E_ALREADY_EXISTS = static_cast<HRESULT>(0x80041019u);
inline constexpr HRESULT WBEM_E_OVERRIDE_NOT_ALLOWED = static_cast<HRESULT>(0x8004101Au);
inline constexpr HRESULT WBEM_E_PROPAGATED_QUALIFIER = static_cast<HRESULT>(0x8004101Bu);
inline constexpr HRESULT WBEM_E_PROPAGATED_PROPERTY = static_cast<HRESULT>(0x8004101Cu);
inline constexpr HRESULT WBEM_E_UNEXPECTED = static_cast<HRESULT>(0x8004101Du);
inline constexpr HRESULT WBEM_E_ILLEGAL_OPERATION = static_cast<HRESULT>(0x8004101Eu);
inline constexpr HRESULT WBEM_E_CANNOT_BE_KEY = static_cast<HRESULT>(0x8004101Fu);
inline constexpr HRESULT WBEM_E_INCOMPLETE_CLASS = static_cast<HRESULT>(0x80041020u);
inline constexpr HRESULT WBEM_E_INVALID_SYNTAX = static_cast<HRESULT>(0x80041021u);
inline constexpr HRESULT WBEM_E_NONDECORATED_OBJECT = static_cast<HRESULT>(0x80041022u);
inline constexpr HRESULT WBEM_E_READ_ONLY = static_cast<HRESULT>(0x80041023u);
inline constexpr HRESULT WBEM_E_PROVIDER_NOT_CAPABLE = static_cast<HRESULT>(0x80041024u);
inline constexpr HRESULT WBEM_E_CLASS_HAS_CHILDREN = static_cast<HRESULT>(0x80041025u);
inline constexpr HRESULT WBEM_E_CLASS_HAS_INSTANCES = static_cast<HRESULT>(0x80041026u);
inline constexpr HRESULT WBEM_E_QUERY_NOT_IMPLEMENTED = static_cast<HRESULT>(0x80041027u);
inline constexpr HRESULT WBEM_E_ILLEGAL_NULL = static_cast<HRESULT>(0x80041028u);
inline constexpr HRESULT WBEM_E_INVALID_QUALIFIER_TYPE = static_cast<HRESULT>(0x80041029u);
inline constexpr HRESULT WBEM_E_INVALID_PROPERTY_TYPE = static_cast<HRESULT>(0x8004102Au);
inline constexpr HRESULT WBEM_E_VALUE_OUT_OF_RANGE = static_cast<HRESULT>(0x8004102Bu);
inline constexpr HRESULT WBEM_E_CANNOT_BE_SINGLETON = static_cast<HRESULT>(0x8004102Cu);
inline constexpr HRESULT WBEM_E_INVALID_CIM_TYPE = static_cast<HRESULT>(0x8004102Du);
inline constexpr HRESULT WBEM_E_INVALID_METHOD = static_cast<HRESULT>(0x8004102Eu);
inline constexpr HRESULT WBEM_E_INVALID_METHOD_PARAMETERS = static_cast<HRESULT>(0x8004102Fu);
inline constexpr HRESULT WBEM_E_SYSTEM_PROPERTY = static_cast<HRESULT>(0x80041030u);
inline constexpr HRESULT WBEM_E_INVALID_PROPERTY = static_cast<HRESULT>(0x80041031u);
inline constexpr HRESULT WBEM_E_CALL_CANCELLED = static_cast<HRESULT>(0x80041032u);
inline constexpr HRESULT WBEM_E_SHUTTING_DOWN = static_cast<HRESULT>(0x80041033u);
inline constexpr HRESULT WBEM_E_PROPAGATED_METHOD = static_cast<HRESULT>(0x80041034u);
inline constexpr HRESULT WBEM_E_UNSUPPORTED_PARAMETER = static_cast<HRESULT>(0x80041035u);
inline constexpr HRESULT WBEM_E_MISSING_PARAMETER_ID = static_cast<HRESULT>(0x80041036u);
inline constexpr HRESULT WBEM_E_INVALID_PARAMETER_ID = static_cast<HRESULT>(0x80041037u);
inline constexpr HRESULT WBEM_E_NONCONSECUTIVE_PARAMETER_IDS = static_cast<HRESULT>(0x80041038u);
inline constexpr HRESULT WBEM_E_PARAMETER_ID_ON_RETVAL = static_cast<HRESULT>(0x80041039u);
inline constexpr HRESULT WBEM_E_INVALID_OBJECT_PATH = static_cast<HRESULT>(0x8004103Au);
inline constexpr HRESULT WBEM_E_OUT_OF_DISK_SPACE = static_cast<HRESULT>(0x8004103Bu);
inline constexpr HRESULT WBEM_E_BUFFER_TOO_SMALL = static_cast<HRESULT>(0x8004103Cu);
inline constexpr HRESULT WBEM_E_UNSUPPORTED_PUT_EXTENSION = static_cast<HRESULT>(0x8004103Du);
inline constexpr HRESULT WBEM_E_UNKNOWN_OBJECT_TYPE = static_cast<HRESULT>(0x8004103Eu);
inline constexpr HRESULT WBEM_E_UNKNOWN_PACKET_TYPE = static_cast<HRESULT>(0x8004103Fu);
inline constexpr HRESULT WBEM_E_MARSHAL_VERSION_MISMATCH = static_cast<HRESULT>(0x80041040u);
inline constexpr HRESULT WBEM_E_MARSHAL_INVALID_SIGNATURE = static_cast<HRESULT>(0x80041041u);
inline constexpr HRESULT WBEM_E_INVALID_QUALIFIER = static_cast<HRESULT>(0x80041042u);
inline constexpr HRESULT WBEM_E_INVALID_DUPLICATE_PARAMETER = static_cast<HRESULT>(0x80041043u);
inline constexpr HRESULT WBEM_E_TOO_MUCH_DATA = static_cast<HRESULT>(0x80041044u);
inline constexpr HRESULT WBEM_E_SERVER_TOO_BUSY = static_cast<HRESULT>(0x80041045u);
inline constexpr HRESULT WBEM_E_INVALID_FLAVOR = static_cast<HRESULT>(0x80041046u);
inline constexpr HRESULT WBEM_E_CIRCULAR_REFERENCE = static_cast<HRESULT>(0x80041047u);
inline constexpr HRESULT WBEM_E_UNSUPPORTED_CLASS_UPDATE = static_cast<HRESULT>(0x80041048u);
inline constexpr HRESULT WBEM_E_CANNOT_CHANGE_KEY_INHERITANCE = static_cast<HRESULT>(0x80041049u);
inline constexpr HRESULT WBEM_E_CANNOT_CHANGE_INDEX_INHERITANCE = static_cast<HRESULT>(0x80041050u);
inline constexpr HRESULT WBEM_E_TOO_MANY_PROPERTIES = static_cast<HRESULT>(0x80041051u);
inline constexpr HRESULT WBEM_E_UPDATE_TYPE_MISMATCH = static_cast<HRESULT>(0x80041052u);
inline constexpr HRESULT WBEM_E_UPDATE_OVERRIDE_NOT_ALLOWED = static_cast<HRESULT>(0x80041053u);
inline constexpr HRESULT WBEM_E_UPDATE_PROPAGATED_METHOD = static_cast<HRESULT>(0x80041054u);
inline constexpr HRESULT WBEM_E_METHOD_NOT_IMPLEMENTED = static_cast<HRESULT>(0x80041055u);
inline constexpr HRESULT WBEM_E_METHOD_DISABLED = static_cast<HRESULT>(0x80041056u);
inline constexpr HRESULT WBEM_E_UNPARSABLE_QUERY = static_cast<HRESULT>(0x80041058u);
inline constexpr HRESULT WBEM_E_NOT_EVENT_CLASS = static_cast<HRESULT>(0x80041059u);
inline constexpr HRESULT WBEM_E_MISSING_GROUP_WITHIN = static_cast<HRESULT>(0x8004105Au);
inline constexpr HRESULT WBEM_E_MISSING_AGGREGATION_LIST = static_cast<HRESULT>(0x8004105Bu);
inline constexpr HRESULT WBEM_E_PROPERTY_NOT_AN_OBJECT = static_cast<HRESULT>(0x8004105Cu);
inline constexpr HRESULT WBEM_E_AGGREGATING_BY_OBJECT = static_cast<HRESULT>(0x8004105Du);
inline constexpr HRESULT WBEM_E_UNINTERPRETABLE_PROVIDER_QUERY = static_cast<HRESULT>(0x8004105Fu);
inline constexpr HRESULT WBEM_E_QUEUE_OVERFLOW = static_cast<HRESULT>(0x80041061u);
inline constexpr HRESULT WBEM_E_INVALID_OPERATOR = static_cast<HRESULT>(0x80041063u);
inline constexpr HRESULT WBEM_E_LOCAL_CREDENTIALS = static_cast<HRESULT>(0x80041064u);
inline constexpr HRESULT WBEM_E_CANNOT_BE_ABSTRACT = static_cast<HRESULT>(0x80041065u);
inline constexpr HRESULT WBEM_E_AMENDED_OBJECT = static_cast<HRESULT>(0x80041066u);
inline constexpr HRESULT WBEM_E_CLIENT_TOO_SLOW = static_cast<HRESULT>(0x80041067u);
inline constexpr HRESULT WBEM_E_NULL_SECURITY_DESCRIPTOR = static_cast<HRESULT>(0x80041068u);
inline constexpr HRESULT WBEM_E_TIMED_OUT = static_cast<HRESULT>(0x80041069u);
inline constexpr HRESULT WBEM_E_INVALID_ASSOCIATION = static_cast<HRESULT>(0x8004106Au);
inline constexpr HRESULT WBEM_E_AMBIGUOUS_OPERATION = static_cast<HRESULT>(0x8004106Bu);
inline constexpr HRESULT WBEM_E_RESERVED_001 = static_cast<HRESULT>(0x8004106Du);
inline constexpr HRESULT WBEM_E_RESERVED_002 = static_cast<HRESULT>(0x8004106Eu);
inline constexpr HRESULT WBEM_E_UNSUPPORTED_LOCALE = static_cast<HRESULT>(0x8004106Fu);
inline constexpr HRESULT WBEM_E_HANDLE_OUT_OF_DATE = static_cast<HRESULT>(0x80041070u);
inline constexpr HRESULT WBEM_E_CONNECTION_FAILED = static_cast<HRESULT>(0x80041071u);
inline constexpr HRESULT WBEM_E_INVALID_HANDLE_REQUEST = static_cast<HRESULT>(0x80041072u);
inline constexpr HRESULT WBEM_E_PROPERTY_NAME_TOO_WIDE = static_cast<HRESULT>(0x80041073u);
inline constexpr HRESULT WBEM_E_CLASS_NAME_TOO_WIDE = static_cast<HRESULT>(0x80041074u);
inline constexpr HRESULT WBEM_E_METHOD_NAME_TOO_WIDE = static_cast<HRESULT>(0x80041075u);
inline constexpr HRESULT WBEM_E_QUALIFIER_NAME_TOO_WIDE = static_cast<HRESULT>(0x80041076u);
inline constexpr HRESULT WBEM_E_RERUN_COMMAND = static_cast<HRESULT>(0x80041077u);
inline constexpr HRESULT WBEM_E_VETO_DELETE = static_cast<HRESULT>(0x80041079u);
inline constexpr HRESULT WBEM_E_VETO_PUT = static_cast<HRESULT>(0x8004107Au);
inline constexpr HRESULT WBEM_E_INVALID_LOCALE = static_cast<HRESULT>(0x80041080u);
inline constexpr HRESULT WBEM_E_PROVIDER_SUSPENDED = static_cast<HRESULT>(0x80041081u);
inline constexpr HRESULT WBEM_E_SYNCHRONIZATION_REQUIRED = static_cast<HRESULT>(0x80041082u);
inline constexpr HRESULT WBEM_E_NO_SCHEMA = static_cast<HRESULT>(0x80041083u);
inline constexpr HRESULT WBEM_E_PROVIDER_ALREADY_REGISTERED = static_cast<HRESULT>(0x80041084u);
inline constexpr HRESULT WBEM_E_PROVIDER_NOT_REGISTERED = static_cast<HRESULT>(0x80041085u);
inline constexpr HRESULT WBEM_E_FATAL_TRANSPORT_ERROR = static_cast<HRESULT>(0x80041086u);
inline constexpr HRESULT WBEM_E_ENCRYPTED_CONNECTION_REQUIRED = static_cast<HRESULT>(0x80041087u);
inline constexpr HRESULT WBEM_E_PROVIDER_TIMED_OUT = static_cast<HRESULT>(0x80041088u);
inline constexpr HRESULT WBEM_E_NO_KEY = static_cast<HRESULT>(0x80041089u);
inline constexpr HRESULT WBEM_E_PROVIDER_DISABLED = static_cast<HRESULT>(0x8004108Au);

// The qualifiers of a class, an instance, a property or a method.
struct IWbemQualifierSet : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, LONG* flavor) = 0;
    virtual HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, VARIANT* value, LONG flavor) = 0;
    virtual HRESULT STDMETHODCALLTYPE Delete(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNames(LONG flags, SAFEARRAY** names) = 0;
    virtual HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value, LONG* flavor) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndEnumeration() = 0;
};

// A class or an instance.
struct IWbemClassObject : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet** qualifiers) = 0;
    virtual HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE* type, LONG* flavor) = 0;
    virtual HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE type) = 0;
    virtual HRESULT STDMETHODCALLTYPE Delete(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR qualifier, LONG flags, VARIANT* qualifierValue,
                                               SAFEARRAY** names) = 0;
    virtual HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value, CIMTYPE* type, LONG* flavor) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndEnumeration() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR property, IWbemQualifierSet** qualifiers) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject** copy) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetObjectText(LONG flags, BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG flags, IWbemClassObject** derived) = 0;
    virtual HRESULT STDMETHODCALLTYPE SpawnInstance(LONG flags, IWbemClassObject** instance) = 0;
    virtual HRESULT STDMETHODCALLTYPE CompareTo(LONG flags, IWbemClassObject* other) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR name, BSTR* className) = 0;
    virtual HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR ancestor) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR name, LONG flags, IWbemClassObject** inSignature,
                                                IWbemClassObject** outSignature) = 0;
    virtual HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR name, LONG flags, IWbemClassObject* inSignature,
                                                IWbemClassObject* outSignature) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE NextMethod(LONG flags, BSTR* name, IWbemClassObject** inSignature,
                                                 IWbemClassObject** outSignature) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndMethodEnumeration() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR method, IWbemQualifierSet** qualifiers) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR method, BSTR* className) = 0;
};

// Receives objects and then one final status.
struct IWbemObjectSink : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT result, BSTR parameter,
                                                IWbemClassObject* objectParameter) = 0;
};

// A result set.
struct IEnumWbemClassObject : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject** objects, ULONG* returned) = 0;
    virtual HRESULT STDMETHODCALLTYPE NextAsync(ULONG count, IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject** enumerator) = 0;
    virtual HRESULT STDMETHODCALLTYPE Skip(LONG timeout, ULONG count) = 0;
};

// Named values that travel with a call.
struct IWbemContext : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Clone(IWbemContext** copy) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNames(LONG flags, SAFEARRAY** names) = 0;
    virtual HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndEnumeration() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR name, LONG flags, VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetValue(LPCWSTR name, LONG flags, VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteValue(LPCWSTR name, LONG flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteAll() = 0;
};

// The outcome of a semisynchronous call.
struct IWbemCallResult : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetResultObject(LONG timeout, IWbemClassObject** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResultString(LONG timeout, BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResultServices(LONG timeout, IWbemServices** services) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCallStatus(LONG timeout, LONG* status) = 0;
};

// One namespace.
struct IWbemServices : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR name, LONG flags, IWbemContext* context,
                                                    IWbemServices** services, IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG flags, IWbemObjectSink** sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetObject(const BSTR path, LONG flags, IWbemContext* context,
                                                IWbemClassObject** object, IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR path, LONG flags, IWbemContext* context,
                                                     IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject* object, LONG flags, IWbemContext* context,
                                               IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject* object, LONG flags, IWbemContext* context,
                                                    IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR className, LONG flags, IWbemContext* context,
                                                  IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR className, LONG flags, IWbemContext* context,
                                                       IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR superclass, LONG flags, IWbemContext* context,
                                                      IEnumWbemClassObject** enumerator) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR superclass, LONG flags, IWbemContext* context,
                                                           IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                                  IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                                       IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR path, LONG flags, IWbemContext* context,
                                                     IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR path, LONG flags, IWbemContext* context,
                                                          IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR filter, LONG flags, IWbemContext* context,
                                                         IEnumWbemClassObject** enumerator) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR filter, LONG flags, IWbemContext* context,
                                                              IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags,
                                                IWbemContext* context, IEnumWbemClassObject** enumerator) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR language, const BSTR query, LONG flags,
                                                     IWbemContext* context, IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR language, const BSTR query, LONG flags,
                                                            IWbemContext* context,
                                                            IEnumWbemClassObject** enumerator) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR language, const BSTR query, LONG flags,
                                                                 IWbemContext* context, IWbemObjectSink* sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                                 IWbemClassObject* inParameters, IWbemClassObject** outParameters,
                                                 IWbemCallResult** result) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR path, const BSTR method, LONG flags,
                                                      IWbemContext* context, IWbemClassObject* inParameters,
                                                      IWbemObjectSink* sink) = 0;
};

// The way to a namespace.
struct IWbemLocator : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR resource, const BSTR user, const BSTR password,
                                                    const BSTR locale, LONG flags, const BSTR authority,
                                                    IWbemContext* context, IWbemServices** services) = 0;
};

// Told before a provider goes.
struct IWbemShutdown : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Shutdown(LONG reason, ULONG milliseconds, IWbemContext* context) = 0;
};

extern const IID IID_IWbemQualifierSet;
extern const IID IID_IWbemClassObject;
extern const IID IID_IWbemObjectSink;
extern const IID IID_IEnumWbemClassObject;
extern const IID IID_IWbemContext;
extern const IID IID_IWbemCallResult;
extern const IID IID_IWbemServices;
extern const IID IID_IWbemLocator;
extern const IID IID_IWbemShutdown;
extern const CLSID CLSID_WbemLocator;
extern const CLSID CLSID_WbemContext;
