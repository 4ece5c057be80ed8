// Writing a key as its type wants it.
#include "tools/orlwmi/InstancePath.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Text.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

LONG KeyType(const std::string& className, const std::string& key, IWbemClassObject* definition)
{
    CComVariant value;
    CIMTYPE type = CIM_EMPTY;
    const HRESULT status = definition->Get(FromUtf8(key).c_str(), 0, &value, &type, nullptr);
    if (status == WBEM_E_NOT_FOUND)
    {
        throw Failure(ExitCode::NotFound, className + " has no key " + key);
    }
    Check(status, "cannot read the definition of " + className);
    return type;
}

bool IsInteger(const std::string& value)
{
    size_t at = !value.empty() && (value[0] == '-' || value[0] == '+') ? 1 : 0;
    const bool hexadecimal = value.compare(at, 2, "0x") == 0 || value.compare(at, 2, "0X") == 0;
    at += hexadecimal ? 2 : 0;
    const char* digits = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    return at < value.size() && value.find_first_not_of(digits, at) == std::string::npos;
}

std::string Written(const std::string& key, const std::string& value, LONG type)
{
    switch (type)
    {
    case CIM_BOOLEAN:
        if (!SameName(value, "TRUE") && !SameName(value, "FALSE"))
        {
            throw Failure(ExitCode::Usage, "the key " + key + " wants TRUE or FALSE, not " + value);
        }
        return value;
    case CIM_SINT8:
    case CIM_UINT8:
    case CIM_SINT16:
    case CIM_UINT16:
    case CIM_SINT32:
    case CIM_UINT32:
    case CIM_SINT64:
    case CIM_UINT64:
        if (!IsInteger(value))
        {
            throw Failure(ExitCode::Usage, "the key " + key + " wants a whole number, not " + value);
        }
        return value;
    default:
        return Quoted(value);
    }
}

} // namespace

std::string MakeInstancePath(const std::string& className, const std::vector<std::pair<std::string, std::string>>& keys,
                             IWbemClassObject* definition)
{
    std::string path = className;
    char separator = '.';
    for (const auto& [key, value] : keys)
    {
        path += separator + key + "=" + Written(key, value, KeyType(className, key, definition));
        separator = ',';
    }
    return path;
}

std::string ClassPathOf(const std::string& path)
{
    // A server's name may hold dots; a colon before the first value ends server and namespace.
    const auto values = path.find_first_of("\"=");
    const auto colon = path.find(':');
    const auto begin = colon != std::string::npos && colon < values ? colon + 1 : 0;
    return path.substr(0, path.find_first_of(".=", begin));
}

} // namespace orl::client
