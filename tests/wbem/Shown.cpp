#include "Shown.h"

#include "wbem/Text.h"

#include <ostream>

namespace wbem
{

std::string Utf8(std::wstring_view text)
{
    return ToUtf8(text);
}

std::string Shown(const CimValue& value)
{
    std::string type = ToUtf8(CimTypeName(value.Type()));
    if (value.IsArray())
        type += "[]";
    return (type.empty() ? type : type + " ") + ToUtf8(PrintMofValue(value));
}

std::string Shown(const ObjectPath& path)
{
    std::string text;
    if (!path.server.empty())
        text += "\\\\" + ToUtf8(path.server) + "\\";
    text += ToUtf8(path.NamespaceText());
    if (!path.namespaces.empty())
        text += ":";
    text += ToUtf8(path.className);
    if (path.isSingleton)
        text += " | @";
    for (const PathKey& key : path.keys)
        text += " | " + ToUtf8(key.name) + "=" + Shown(key.value);
    return text;
}

std::string Shown(const ParseError& error)
{
    return ToUtf8(error.Text());
}

void PrintTo(const CimValue& value, std::ostream* out)
{
    *out << Shown(value);
}

} // namespace wbem
