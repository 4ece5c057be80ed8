// CIM values: types and storage.
#include "wbem/CimValue.h"

#include "wbem/Number.h"
#include "wbem/Text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace wbem
{

namespace
{

struct TypeName
{
    CimType type;
    std::wstring_view name;
};

constexpr TypeName kTypeNames[] = {
    {CimType::Boolean, L"boolean"}, {CimType::SInt8, L"sint8"},       {CimType::UInt8, L"uint8"},
    {CimType::SInt16, L"sint16"},   {CimType::UInt16, L"uint16"},     {CimType::SInt32, L"sint32"},
    {CimType::UInt32, L"uint32"},   {CimType::SInt64, L"sint64"},     {CimType::UInt64, L"uint64"},
    {CimType::Real32, L"real32"},   {CimType::Real64, L"real64"},     {CimType::Char16, L"char16"},
    {CimType::String, L"string"},   {CimType::DateTime, L"datetime"}, {CimType::Object, L"object"},
    {CimType::Reference, L"ref"},
};

} // namespace

std::wstring_view CimTypeName(CimType type) noexcept
{
    for (const TypeName& entry : kTypeNames)
    {
        if (entry.type == type)
            return entry.name;
    }
    return {};
}

std::optional<CimType> CimTypeFromName(std::wstring_view name) noexcept
{
    for (const TypeName& entry : kTypeNames)
    {
        if (entry.type != CimType::Reference && EqualNoCase(entry.name, name))
            return entry.type;
    }
    return std::nullopt;
}

bool IsSigned(CimType type) noexcept
{
    return type == CimType::SInt8 || type == CimType::SInt16 || type == CimType::SInt32 || type == CimType::SInt64;
}

bool IsUnsigned(CimType type) noexcept
{
    return type == CimType::UInt8 || type == CimType::UInt16 || type == CimType::UInt32 || type == CimType::UInt64;
}

bool IsInteger(CimType type) noexcept
{
    return IsSigned(type) || IsUnsigned(type);
}

bool IsReal(CimType type) noexcept
{
    return type == CimType::Real32 || type == CimType::Real64;
}

bool IsText(CimType type) noexcept
{
    return type == CimType::String || type == CimType::DateTime || type == CimType::Reference;
}

CimValue::CimValue(CimType type, bool isArray, Data data) noexcept
    : m_data(std::move(data)), m_type(type), m_isArray(isArray)
{
}

CimValue CimValue::Null(CimType type, bool isArray) noexcept
{
    return CimValue(type, isArray, Data());
}

CimValue CimValue::Bool(bool value) noexcept
{
    return CimValue(CimType::Boolean, false, Data(value));
}

CimValue CimValue::Signed(CimType type, std::int64_t value) noexcept
{
    return CimValue(type, false, Data(value));
}

CimValue CimValue::Unsigned(CimType type, std::uint64_t value) noexcept
{
    return CimValue(type, false, Data(value));
}

CimValue CimValue::Real(CimType type, double value) noexcept
{
    return CimValue(type, false, Data(value));
}

CimValue CimValue::Char16(char16_t value) noexcept
{
    return CimValue(CimType::Char16, false, Data(std::uint64_t{value}));
}

CimValue CimValue::Text(CimType type, SharedText text) noexcept
{
    return CimValue(type, false, Data(std::move(text)));
}

bool CimValue::LodgeText(CimType type, TextBlock& block, std::wstring_view text)
{
    const wchar_t* const place = block.Append(text);
    if (!place)
        return false;
    m_data.emplace<SharedText>(block, place, text.size());
    m_type = type;
    m_isArray = false;
    return true;
}

CimValue CimValue::Object(CimObject object)
{
    return Object(std::make_shared<const CimObject>(std::move(object)));
}

CimValue CimValue::Object(std::shared_ptr<const CimObject> object) noexcept
{
    if (!object)
        return Null(CimType::Object);
    return CimValue(CimType::Object, false, Data(std::move(object)));
}

CimValue CimValue::Array(CimType elementType, std::vector<CimValue> elements)
{
    return CimValue(elementType, true, Data(std::make_shared<const std::vector<CimValue>>(std::move(elements))));
}

CimValue CimValue::Integer(std::int64_t value) noexcept
{
    const bool small =
        value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
    return Signed(small ? CimType::SInt32 : CimType::SInt64, value);
}

CimValue CimValue::Integer(std::uint64_t value) noexcept
{
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return Integer(static_cast<std::int64_t>(value));
    return Unsigned(CimType::UInt64, value);
}

bool CimValue::AsBool() const noexcept
{
    const bool* value = std::get_if<bool>(&m_data);
    return value && *value;
}

std::int64_t CimValue::AsSigned() const noexcept
{
    const std::int64_t* value = std::get_if<std::int64_t>(&m_data);
    return value ? *value : 0;
}

std::uint64_t CimValue::AsUnsigned() const noexcept
{
    const std::uint64_t* value = std::get_if<std::uint64_t>(&m_data);
    return value ? *value : 0;
}

double CimValue::AsReal() const noexcept
{
    const double* value = std::get_if<double>(&m_data);
    return value ? *value : 0;
}

std::wstring_view CimValue::AsText() const noexcept
{
    const SharedText* text = std::get_if<SharedText>(&m_data);
    return text ? text->View() : std::wstring_view(L"");
}

const std::shared_ptr<const CimObject>& CimValue::AsObject() const noexcept
{
    static const SharedObject none;
    const SharedObject* object = std::get_if<SharedObject>(&m_data);
    return object ? *object : none;
}

const std::vector<CimValue>& CimValue::Elements() const noexcept
{
    static const std::vector<CimValue> none;
    const SharedArray* elements = std::get_if<SharedArray>(&m_data);
    return elements ? **elements : none;
}

bool CimValue::operator==(const CimValue& other) const noexcept
{
    if (m_type != other.m_type || m_isArray != other.m_isArray || m_data.index() != other.m_data.index())
        return false;
    if (std::holds_alternative<SharedText>(m_data))
        return AsText() == other.AsText();
    if (const SharedObject* object = std::get_if<SharedObject>(&m_data))
        return *object == other.AsObject() || **object == *other.AsObject();
    if (std::holds_alternative<SharedArray>(m_data))
        return Elements() == other.Elements();
    if (const double* real = std::get_if<double>(&m_data))
        return *real == other.AsReal();
    return AsBool() == other.AsBool() && AsSigned() == other.AsSigned() && AsUnsigned() == other.AsUnsigned();
}

const CimValue* CimObject::Find(std::wstring_view name) const noexcept
{
    for (const Property& property : properties)
    {
        if (EqualNoCase(property.name, name))
            return &property.value;
    }
    return nullptr;
}

} // namespace wbem
