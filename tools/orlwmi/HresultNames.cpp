// The table of status codes, in ascending order of the unsigned number.
#include "tools/orlwmi/HresultNames.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <iterator>

namespace orl::client
{
namespace
{

constexpr HRESULT Code(ULONG number)
{
    return static_cast<HRESULT>(number);
}

constexpr HresultName Names[] = {
    {Code(0x00000000), "WBEM_S_NO_ERROR", "The request was carried out."},
    {Code(0x00000001), "WBEM_S_FALSE", "The end of the result was reached."},
    {Code(0x00040001), "WBEM_S_ALREADY_EXISTS", "The object existed already and was left alone."},
    {Code(0x00040002), "WBEM_S_RESET_TO_DEFAULT", "The property went back to its default."},
    {Code(0x00040003), "WBEM_S_DIFFERENT", "The objects differ."},
    {Code(0x00040004), "WBEM_S_TIMEDOUT", "The call ran out of time."},
    {Code(0x00040005), "WBEM_S_NO_MORE_DATA", "No more data is there."},
    {Code(0x00040006), "WBEM_S_OPERATION_CANCELLED", "The operation was cancelled."},
    {Code(0x00040007), "WBEM_S_PENDING", "The operation is still going on."},
    {Code(0x00040008), "WBEM_S_DUPLICATE_OBJECTS", "The result holds an object more than once."},
    {Code(0x00040009), "WBEM_S_ACCESS_DENIED", "Part of the result is hidden from this user."},
    {Code(0x00040010), "WBEM_S_PARTIAL_RESULTS", "The result is not whole."},
    {Code(0x80004001), "E_NOTIMPL", "The operation is not implemented."},
    {Code(0x80004002), "E_NOINTERFACE", "The object does not have the interface."},
    {Code(0x80004003), "E_POINTER", "A null pointer was passed."},
    {Code(0x80004004), "E_ABORT", "The operation was aborted."},
    {Code(0x80004005), "E_FAIL", "The operation failed without saying why."},
    {Code(0x8000FFFF), "E_UNEXPECTED", "The call came at a moment when it was not expected."},
    {Code(0x80010106), "RPC_E_CHANGED_MODE", "COM was already set up for this thread in another mode."},
    {Code(0x80010108), "RPC_E_DISCONNECTED", "The service has gone away."},
    {Code(0x80040111), "CLASS_E_CLASSNOTAVAILABLE", "The library does not serve the class for which it is registered."},
    {Code(0x80040154), "REGDB_E_CLASSNOTREG", "No library is registered for the class."},
    {Code(0x800401F0), "CO_E_NOTINITIALIZED", "COM is not set up for this thread."},
    {Code(0x800401F8), "CO_E_DLLNOTFOUND", "The library that is registered for the class was not found."},
    {Code(0x800401F9), "CO_E_ERRORINDLL", "The library that is registered for the class cannot be used."},
    {Code(0x80041001), "WBEM_E_FAILED", "The request failed."},
    {Code(0x80041002), "WBEM_E_NOT_FOUND", "The object was not found."},
    {Code(0x80041003), "WBEM_E_ACCESS_DENIED", "The user, or the class itself, does not allow it."},
    {Code(0x80041004), "WBEM_E_PROVIDER_FAILURE", "The provider failed."},
    {Code(0x80041005), "WBEM_E_TYPE_MISMATCH", "A value is not of the type that is wanted."},
    {Code(0x80041006), "WBEM_E_OUT_OF_MEMORY", "Memory ran out."},
    {Code(0x80041007), "WBEM_E_INVALID_CONTEXT", "The context of the call is not valid."},
    {Code(0x80041008), "WBEM_E_INVALID_PARAMETER", "A parameter is not valid."},
    {Code(0x80041009), "WBEM_E_NOT_AVAILABLE", "The resource is not available at the moment."},
    {Code(0x8004100A), "WBEM_E_CRITICAL_ERROR", "The service met an internal error."},
    {Code(0x8004100B), "WBEM_E_INVALID_STREAM", "A packet of the service was damaged."},
    {Code(0x8004100C), "WBEM_E_NOT_SUPPORTED", "The operation or feature is not supported."},
    {Code(0x8004100D), "WBEM_E_INVALID_SUPERCLASS", "The superclass is not valid."},
    {Code(0x8004100E), "WBEM_E_INVALID_NAMESPACE", "There is no such namespace."},
    {Code(0x8004100F), "WBEM_E_INVALID_OBJECT", "The object is not valid."},
    {Code(0x80041010), "WBEM_E_INVALID_CLASS", "There is no such class."},
    {Code(0x80041011), "WBEM_E_PROVIDER_NOT_FOUND", "The provider of the class is not registered."},
    {Code(0x80041012), "WBEM_E_INVALID_PROVIDER_REGISTRATION", "The registration of the provider is not valid."},
    {Code(0x80041013), "WBEM_E_PROVIDER_LOAD_FAILURE", "The provider's library could not be loaded."},
    {Code(0x80041014), "WBEM_E_INITIALIZATION_FAILURE", "The provider could not be initialised."},
    {Code(0x80041015), "WBEM_E_TRANSPORT_FAILURE", "The connection to the service failed."},
    {Code(0x80041016), "WBEM_E_INVALID_OPERATION", "The operation is not valid here."},
    {Code(0x80041017), "WBEM_E_INVALID_QUERY", "The query is not valid."},
    {Code(0x80041018), "WBEM_E_INVALID_QUERY_TYPE", "The query language is not supported."},
    {Code(0x80041019), "WBEM_E_ALREADY_EXISTS", "An object of that path exists already."},
    {Code(0x8004101A), "WBEM_E_OVERRIDE_NOT_ALLOWED", "The qualifier may not be overridden."},
    {Code(0x8004101B), "WBEM_E_PROPAGATED_QUALIFIER", "The qualifier belongs to the superclass."},
    {Code(0x8004101C), "WBEM_E_PROPAGATED_PROPERTY", "The property belongs to the superclass."},
    {Code(0x8004101D), "WBEM_E_UNEXPECTED", "The call came at a moment when it was not expected."},
    {Code(0x8004101E), "WBEM_E_ILLEGAL_OPERATION", "The operation is not allowed on this object."},
    {Code(0x8004101F), "WBEM_E_CANNOT_BE_KEY", "The property cannot be a key."},
    {Code(0x80041020), "WBEM_E_INCOMPLETE_CLASS", "The class is not complete."},
    {Code(0x80041021), "WBEM_E_INVALID_SYNTAX", "The syntax is not valid."},
    {Code(0x80041022), "WBEM_E_NONDECORATED_OBJECT", "The object cannot be marked read-only."},
    {Code(0x80041023), "WBEM_E_READ_ONLY", "The object or property is read-only."},
    {Code(0x80041024), "WBEM_E_PROVIDER_NOT_CAPABLE", "The provider does not have the operation."},
    {Code(0x80041025), "WBEM_E_CLASS_HAS_CHILDREN", "The class has subclasses."},
    {Code(0x80041026), "WBEM_E_CLASS_HAS_INSTANCES", "The class has instances."},
    {Code(0x80041027), "WBEM_E_QUERY_NOT_IMPLEMENTED", "The kind of query is not implemented."},
    {Code(0x80041028), "WBEM_E_ILLEGAL_NULL", "A value is missing where one is needed."},
    {Code(0x80041029), "WBEM_E_INVALID_QUALIFIER_TYPE", "The type of the qualifier is not valid."},
    {Code(0x8004102A), "WBEM_E_INVALID_PROPERTY_TYPE", "The type of the property is not valid."},
    {Code(0x8004102B), "WBEM_E_VALUE_OUT_OF_RANGE", "A value is out of range."},
    {Code(0x8004102C), "WBEM_E_CANNOT_BE_SINGLETON", "The class cannot be a singleton."},
    {Code(0x8004102D), "WBEM_E_INVALID_CIM_TYPE", "The type is not valid."},
    {Code(0x8004102E), "WBEM_E_INVALID_METHOD", "The class has no such method."},
    {Code(0x8004102F), "WBEM_E_INVALID_METHOD_PARAMETERS", "The parameters of the method are not valid."},
    {Code(0x80041030), "WBEM_E_SYSTEM_PROPERTY", "The property is a system property."},
    {Code(0x80041031), "WBEM_E_INVALID_PROPERTY", "The property is not valid."},
    {Code(0x80041032), "WBEM_E_CALL_CANCELLED", "The call was cancelled."},
    {Code(0x80041033), "WBEM_E_SHUTTING_DOWN", "The service is shutting down."},
    {Code(0x80041034), "WBEM_E_PROPAGATED_METHOD", "The method belongs to the superclass."},
    {Code(0x80041035), "WBEM_E_UNSUPPORTED_PARAMETER", "A parameter or flag is not supported."},
    {Code(0x80041036), "WBEM_E_MISSING_PARAMETER_ID", "A parameter of the method has no id."},
    {Code(0x80041037), "WBEM_E_INVALID_PARAMETER_ID", "The id of a method's parameter is not valid."},
    {Code(0x80041038), "WBEM_E_NONCONSECUTIVE_PARAMETER_IDS", "The ids of the method's parameters have gaps."},
    {Code(0x80041039), "WBEM_E_PARAMETER_ID_ON_RETVAL", "The return value of the method has an id."},
    {Code(0x8004103A), "WBEM_E_INVALID_OBJECT_PATH", "The object path is not valid."},
    {Code(0x8004103B), "WBEM_E_OUT_OF_DISK_SPACE", "The disk is full."},
    {Code(0x8004103C), "WBEM_E_BUFFER_TOO_SMALL", "The buffer is too small."},
    {Code(0x8004103D), "WBEM_E_UNSUPPORTED_PUT_EXTENSION", "The provider cannot write single properties."},
    {Code(0x8004103E), "WBEM_E_UNKNOWN_OBJECT_TYPE", "The object is of an unknown kind."},
    {Code(0x8004103F), "WBEM_E_UNKNOWN_PACKET_TYPE", "A packet of the service is of an unknown kind."},
    {Code(0x80041040), "WBEM_E_MARSHAL_VERSION_MISMATCH", "Client and service speak different versions."},
    {Code(0x80041041), "WBEM_E_MARSHAL_INVALID_SIGNATURE", "A packet of the service has a wrong signature."},
    {Code(0x80041042), "WBEM_E_INVALID_QUALIFIER", "The qualifier is not valid."},
    {Code(0x80041043), "WBEM_E_INVALID_DUPLICATE_PARAMETER", "A parameter stands twice and differs."},
    {Code(0x80041044), "WBEM_E_TOO_MUCH_DATA", "The call has too much data."},
    {Code(0x80041045), "WBEM_E_SERVER_TOO_BUSY", "The service is too busy."},
    {Code(0x80041046), "WBEM_E_INVALID_FLAVOR", "The flavor of the qualifier is not valid."},
    {Code(0x80041047), "WBEM_E_CIRCULAR_REFERENCE", "The objects refer to each other in a circle."},
    {Code(0x80041048), "WBEM_E_UNSUPPORTED_CLASS_UPDATE", "The class cannot be changed in this way."},
    {Code(0x80041049), "WBEM_E_CANNOT_CHANGE_KEY_INHERITANCE", "The key of the class cannot be changed."},
    {Code(0x80041050), "WBEM_E_CANNOT_CHANGE_INDEX_INHERITANCE", "The index of the class cannot be changed."},
    {Code(0x80041051), "WBEM_E_TOO_MANY_PROPERTIES", "The class has too many properties."},
    {Code(0x80041052), "WBEM_E_UPDATE_TYPE_MISMATCH", "A subclass has the property with another type."},
    {Code(0x80041053), "WBEM_E_UPDATE_OVERRIDE_NOT_ALLOWED", "A subclass overrides what may not be overridden."},
    {Code(0x80041054), "WBEM_E_UPDATE_PROPAGATED_METHOD", "A subclass has the method with another signature."},
    {Code(0x80041055), "WBEM_E_METHOD_NOT_IMPLEMENTED", "The method is not implemented."},
    {Code(0x80041056), "WBEM_E_METHOD_DISABLED", "The method is disabled."},
    {Code(0x80041057), "WBEM_E_REFRESHER_BUSY", "The refresher is busy."},
    {Code(0x80041058), "WBEM_E_UNPARSABLE_QUERY", "The query cannot be read."},
    {Code(0x80041059), "WBEM_E_NOT_EVENT_CLASS", "The class is no event class."},
    {Code(0x8004105A), "WBEM_E_MISSING_GROUP_WITHIN", "The query groups without a time."},
    {Code(0x8004105B), "WBEM_E_MISSING_AGGREGATION_LIST", "The query groups without properties."},
    {Code(0x8004105C), "WBEM_E_PROPERTY_NOT_AN_OBJECT", "The property is no embedded object."},
    {Code(0x8004105D), "WBEM_E_AGGREGATING_BY_OBJECT", "The query groups by an embedded object."},
    {Code(0x8004105F), "WBEM_E_UNINTERPRETABLE_PROVIDER_QUERY",
     "The query of the provider's registration cannot be read."},
    {Code(0x80041060), "WBEM_E_BACKUP_RESTORE_WINMGMT_RUNNING", "The service's backup is going on."},
    {Code(0x80041061), "WBEM_E_QUEUE_OVERFLOW", "The queue of results is full."},
    {Code(0x80041062), "WBEM_E_PRIVILEGE_NOT_HELD", "The user lacks a privilege."},
    {Code(0x80041063), "WBEM_E_INVALID_OPERATOR", "The operator is not valid for the type."},
    {Code(0x80041064), "WBEM_E_LOCAL_CREDENTIALS", "A user name was given for this machine itself."},
    {Code(0x80041065), "WBEM_E_CANNOT_BE_ABSTRACT", "The class cannot be abstract."},
    {Code(0x80041066), "WBEM_E_AMENDED_OBJECT", "The object holds localised texts and cannot be written."},
    {Code(0x80041067), "WBEM_E_CLIENT_TOO_SLOW", "The client took the results too slowly."},
    {Code(0x80041068), "WBEM_E_NULL_SECURITY_DESCRIPTOR", "The security descriptor is empty."},
    {Code(0x80041069), "WBEM_E_TIMED_OUT", "The operation ran out of time."},
    {Code(0x8004106A), "WBEM_E_INVALID_ASSOCIATION", "The association is not valid."},
    {Code(0x8004106B), "WBEM_E_AMBIGUOUS_OPERATION", "The operation is ambiguous."},
    {Code(0x8004106C), "WBEM_E_QUOTA_VIOLATION", "A quota of the service is used up."},
    {Code(0x8004106F), "WBEM_E_UNSUPPORTED_LOCALE", "The locale is not supported."},
    {Code(0x80041070), "WBEM_E_HANDLE_OUT_OF_DATE", "The handle is out of date."},
    {Code(0x80041071), "WBEM_E_CONNECTION_FAILED", "The connection failed."},
    {Code(0x80041072), "WBEM_E_INVALID_HANDLE_REQUEST", "The handle is not valid."},
    {Code(0x80041073), "WBEM_E_PROPERTY_NAME_TOO_WIDE", "The name of the property is too long."},
    {Code(0x80041074), "WBEM_E_CLASS_NAME_TOO_WIDE", "The name of the class is too long."},
    {Code(0x80041075), "WBEM_E_METHOD_NAME_TOO_WIDE", "The name of the method is too long."},
    {Code(0x80041076), "WBEM_E_QUALIFIER_NAME_TOO_WIDE", "The name of the qualifier is too long."},
    {Code(0x80041077), "WBEM_E_RERUN_COMMAND", "The command must be run again."},
    {Code(0x80041078), "WBEM_E_DATABASE_VER_MISMATCH", "The repository is of another version."},
    {Code(0x80041079), "WBEM_E_VETO_DELETE", "The provider refused the deletion."},
    {Code(0x8004107A), "WBEM_E_VETO_PUT", "The provider refused the change."},
    {Code(0x80041080), "WBEM_E_INVALID_LOCALE", "The locale is not valid."},
    {Code(0x80041081), "WBEM_E_PROVIDER_SUSPENDED", "The provider is suspended."},
    {Code(0x80041082), "WBEM_E_SYNCHRONIZATION_REQUIRED", "The object must be fetched again."},
    {Code(0x80041083), "WBEM_E_NO_SCHEMA", "No schema is there."},
    {Code(0x80041084), "WBEM_E_PROVIDER_ALREADY_REGISTERED", "The provider is registered already."},
    {Code(0x80041085), "WBEM_E_PROVIDER_NOT_REGISTERED", "The provider is not registered."},
    {Code(0x80041086), "WBEM_E_FATAL_TRANSPORT_ERROR", "The connection to the service is broken."},
    {Code(0x80041087), "WBEM_E_ENCRYPTED_CONNECTION_REQUIRED", "The namespace wants an encrypted connection."},
    {Code(0x80041088), "WBEM_E_PROVIDER_TIMED_OUT", "The provider ran out of time."},
    {Code(0x80041089), "WBEM_E_NO_KEY", "The class has no key."},
    {Code(0x8004108A), "WBEM_E_PROVIDER_DISABLED", "The provider is disabled."},
    {Code(0x80070002), "HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)", "The file was not found."},
    {Code(0x80070003), "HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)", "The folder was not found."},
    {Code(0x80070005), "E_ACCESSDENIED", "Access is denied."},
    {Code(0x80070006), "E_HANDLE", "The handle is not valid."},
    {Code(0x8007000E), "E_OUTOFMEMORY", "Memory ran out."},
    {Code(0x80070057), "E_INVALIDARG", "An argument is not valid."},
    {Code(0x8007007E), "HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND)", "The library, or one that it needs, was not found."},
    {Code(0x8007007F), "HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND)", "The library does not have the function."},
    {Code(0x800706BA), "HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)", "The other machine does not answer."},
};

} // namespace

const HresultName* FindHresult(HRESULT code)
{
    const auto number = static_cast<ULONG>(code);
    const auto* entry =
        std::lower_bound(std::begin(Names), std::end(Names), number,
                         [](const HresultName& name, ULONG wanted) { return static_cast<ULONG>(name.code) < wanted; });
    return entry != std::end(Names) && entry->code == code ? entry : nullptr;
}

std::string HresultLabel(HRESULT code)
{
    const std::string number = "0x" + Hex(static_cast<ULONG>(code), 8);
    const auto* known = FindHresult(code);
    return known == nullptr ? number : known->name + (" (" + number) + ")";
}

std::string DescribeHresult(HRESULT code)
{
    const auto* known = FindHresult(code);
    return known == nullptr ? HresultLabel(code) : HresultLabel(code) + ": " + known->text;
}

} // namespace orl::client
