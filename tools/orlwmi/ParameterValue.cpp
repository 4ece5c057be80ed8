// From text to VARIANT.
#include "tools/orlwmi/ParameterValue.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Integer.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/TypeNames.h"
#include "winport/portable/Utf8.h"

#include <charconv>
#include <cstdint>
#include <limits>

namespace orl::client
{
namespace
{

constexpr const char* Null = "NULL";

[[noreturn]] void Refuse(const std::string& name, const std::string& wanted, const std::string& text)
{
    throw Failure(ExitCode::Usage, name + " wants " + wanted + ", not " + text);
}

// The text between double quotes, or the text itself.
std::string Unquoted(const std::string& text)
{
    if (text.size() < 2 || text.front() != '"' || text.back() != '"')
    {
        return text;
    }
    std::string plain;
    for (size_t i = 1; i + 1 < text.size(); ++i)
    {
        const bool escapes = text[i] == '\\' && i + 2 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\');
        i += escapes ? 1 : 0;
        plain += text[i];
    }
    return plain;
}

std::string Trimmed(const std::string& text)
{
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

// The elements of "a, b", which may stand between double quotes.
std::vector<std::string> Elements(const std::string& list)
{
    std::vector<std::string> elements;
    std::string element;
    bool quoted = false;
    for (size_t i = 0; i < list.size(); ++i)
    {
        if (quoted && list[i] == '\\' && i + 1 < list.size())
        {
            element += list[i++];
        }
        else if (list[i] == '"')
        {
            quoted = !quoted;
        }
        else if (list[i] == ',' && !quoted)
        {
            elements.push_back(Trimmed(element));
            element.clear();
            continue;
        }
        element += list[i];
    }
    if (!list.empty())
    {
        elements.push_back(Trimmed(element));
    }
    return elements;
}

template <typename T>
std::int64_t SignedIn(const std::string& name, const std::string& text)
{
    const auto number = ParseInteger(text);
    const auto most = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    if (!number || number->magnitude > most + (number->isNegative ? 1 : 0))
    {
        Refuse(name,
               "a whole number from " + std::to_string(std::numeric_limits<T>::min()) + " to " + std::to_string(most),
               text);
    }
    return static_cast<std::int64_t>(number->isNegative ? 0 - number->magnitude : number->magnitude);
}

template <typename T>
std::uint64_t UnsignedIn(const std::string& name, const std::string& text)
{
    const auto number = ParseInteger(text);
    const auto most = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    if (!number || number->magnitude > most || (number->isNegative && number->magnitude != 0))
    {
        Refuse(name, "a whole number from 0 to " + std::to_string(most), text);
    }
    return number->magnitude;
}

double RealFrom(const std::string& name, const std::string& text)
{
    double value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
    {
        Refuse(name, "a number", text);
    }
    return value;
}

bool BooleanFrom(const std::string& name, const std::string& text)
{
    if (!SameName(text, "TRUE") && !SameName(text, "FALSE"))
    {
        Refuse(name, "TRUE or FALSE", text);
    }
    return SameName(text, "TRUE");
}

short Char16From(const std::string& name, const std::string& text)
{
    std::string_view rest = text;
    const char32_t c = rest.empty() ? 0 : TakeCodePoint(rest);
    if (text.empty() || !rest.empty() || c > 0xFFFF)
    {
        Refuse(name, "one character", text);
    }
    return static_cast<short>(c);
}

CComVariant TextVariant(const std::string& text)
{
    return CComVariant(FromUtf8(text).c_str());
}

// Integers travel in the smallest signed type that is at least as wide, those of 64 bits as decimal texts.
CComVariant Scalar(const std::string& name, LONG type, const std::string& text)
{
    switch (type)
    {
    case CIM_SINT8:
        return CComVariant(static_cast<short>(SignedIn<std::int8_t>(name, text)));
    case CIM_UINT8:
        return CComVariant(static_cast<BYTE>(UnsignedIn<std::uint8_t>(name, text)));
    case CIM_SINT16:
        return CComVariant(static_cast<short>(SignedIn<std::int16_t>(name, text)));
    case CIM_UINT16:
        return CComVariant(static_cast<int>(UnsignedIn<std::uint16_t>(name, text)));
    case CIM_SINT32:
        return CComVariant(static_cast<int>(SignedIn<std::int32_t>(name, text)));
    case CIM_UINT32:
        return CComVariant(static_cast<int>(static_cast<std::uint32_t>(UnsignedIn<std::uint32_t>(name, text))));
    case CIM_SINT64:
        return TextVariant(std::to_string(SignedIn<std::int64_t>(name, text)));
    case CIM_UINT64:
        return TextVariant(std::to_string(UnsignedIn<std::uint64_t>(name, text)));
    case CIM_REAL32:
        return CComVariant(static_cast<float>(RealFrom(name, text)));
    case CIM_REAL64:
        return CComVariant(RealFrom(name, text));
    case CIM_BOOLEAN:
        return CComVariant(BooleanFrom(name, text));
    case CIM_CHAR16:
        return CComVariant(Char16From(name, Unquoted(text)));
    case CIM_STRING:
    case CIM_DATETIME:
    case CIM_REFERENCE:
        return TextVariant(Unquoted(text));
    default:
        throw Failure(ExitCode::Usage,
                      name + " is of the type " + TypeName(type) + ", which a command line cannot say");
    }
}

VARTYPE ElementType(LONG type)
{
    switch (type)
    {
    case CIM_UINT8:
        return VT_UI1;
    case CIM_SINT8:
    case CIM_SINT16:
    case CIM_CHAR16:
        return VT_I2;
    case CIM_UINT16:
    case CIM_SINT32:
    case CIM_UINT32:
        return VT_I4;
    case CIM_REAL32:
        return VT_R4;
    case CIM_REAL64:
        return VT_R8;
    case CIM_BOOLEAN:
        return VT_BOOL;
    default:
        return VT_BSTR;
    }
}

CComVariant ArrayOf(const std::string& name, LONG type, const std::vector<std::string>& texts)
{
    const std::string failure = "cannot make the array " + name;
    CComVariant array;
    array.parray = SafeArrayCreateVector(ElementType(type), 0, static_cast<ULONG>(texts.size()));
    Check(array.parray == nullptr ? E_OUTOFMEMORY : S_OK, failure);
    array.vt = static_cast<VARTYPE>(VT_ARRAY | ElementType(type));
    for (size_t i = 0; i < texts.size(); ++i)
    {
        if (texts[i] == Null)
        {
            throw Failure(ExitCode::Usage, "the elements of " + name + " cannot be NULL");
        }
        CComVariant element = Scalar(name, type, texts[i]);
        auto index = static_cast<LONG>(i);
        // Texts are passed as they are, everything else by its place.
        void* place = element.vt == VT_BSTR ? static_cast<void*>(element.bstrVal) : &element.llVal;
        Check(SafeArrayPutElement(array.parray, &index, place), failure);
    }
    return array;
}

} // namespace

CComVariant MakeParameterValue(const std::string& name, LONG cimType, const std::vector<std::string>& texts)
{
    const bool isArray = (cimType & CIM_FLAG_ARRAY) != 0;
    if (texts.size() == 1 && texts.front() == Null)
    {
        CComVariant null;
        null.vt = VT_NULL;
        return null;
    }
    if (!isArray && texts.size() != 1)
    {
        throw Failure(ExitCode::Usage,
                      name + " is given " + std::to_string(texts.size()) + " times and takes one value");
    }
    if (!isArray)
    {
        return Scalar(name, cimType, texts.front());
    }
    const LONG type = cimType & ~static_cast<LONG>(CIM_FLAG_ARRAY);
    const std::string& first = texts.front();
    const bool isList = texts.size() == 1 && first.size() >= 2 && first.front() == '[' && first.back() == ']';
    return ArrayOf(name, type, isList ? Elements(first.substr(1, first.size() - 2)) : texts);
}

} // namespace orl::client
