// A CIM value: what a property, a key, a qualifier or a constant of a query holds.
//
// Values are immutable once made. A copy costs no allocation: texts, arrays and objects are shared between copies, and
// may be read from several threads.
#pragma once

#include "wbem/SharedText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace wbem
{

// The numbers are those of CIMTYPE_ENUMERATION (CIM_SINT8 and so on).
enum class CimType : std::uint16_t
{
    Empty = 0, // a null of no type, as NULL in a text
    SInt16 = 2,
    SInt32 = 3,
    Real32 = 4,
    Real64 = 5,
    String = 8,
    Boolean = 11,
    Object = 13,
    SInt8 = 16,
    UInt8 = 17,
    UInt16 = 18,
    UInt32 = 19,
    SInt64 = 20,
    UInt64 = 21,
    DateTime = 101,
    Reference = 102,
    Char16 = 103,
};

// CIM_FLAG_ARRAY: added to a CIMTYPE of arrays.
inline constexpr std::uint16_t kCimFlagArray = 0x2000;

// The type's name in MOF: "uint32", "datetime", ...; "object" for Object, "ref" for Reference, "" for Empty.
std::wstring_view CimTypeName(CimType type) noexcept;
// By the names of MOF, without case; "ref" is none of them. Nothing for other words.
std::optional<CimType> CimTypeFromName(std::wstring_view name) noexcept;

bool IsSigned(CimType type) noexcept;   // sint8 .. sint64
bool IsUnsigned(CimType type) noexcept; // uint8 .. uint64
bool IsInteger(CimType type) noexcept;
bool IsReal(CimType type) noexcept;
bool IsText(CimType type) noexcept; // string, datetime, reference

struct CimObject;

class CimValue
{
public:
    // Null without a type.
    CimValue() noexcept = default;

    static CimValue Null(CimType type, bool isArray = false) noexcept;
    static CimValue Bool(bool value) noexcept;
    // The value must lie in the type's range.
    static CimValue Signed(CimType type, std::int64_t value) noexcept;
    static CimValue Unsigned(CimType type, std::uint64_t value) noexcept;
    static CimValue Real(CimType type, double value) noexcept;
    static CimValue Char16(char16_t value) noexcept;
    static CimValue String(std::wstring_view text) { return Text(CimType::String, text); }
    static CimValue DateTime(std::wstring_view text) { return Text(CimType::DateTime, text); }
    // An object path as text; in what MOF yields also an alias, which begins with '$'.
    static CimValue Reference(std::wstring_view text) { return Text(CimType::Reference, text); }
    static CimValue Text(CimType type, std::wstring_view text) { return Text(type, SharedText(text)); }
    static CimValue Text(CimType type, SharedText text) noexcept;
    static CimValue Object(CimObject object);
    static CimValue Object(std::shared_ptr<const CimObject> object) noexcept;
    // Every element is null or of the element type.
    static CimValue Array(CimType elementType, std::vector<CimValue> elements);

    // The smallest of sint32, sint64 and uint64 that holds it: how integers are typed where nothing else says.
    static CimValue Integer(std::int64_t value) noexcept;
    static CimValue Integer(std::uint64_t value) noexcept;

    // Of an array: the type of its elements.
    CimType Type() const noexcept { return m_type; }
    bool IsArray() const noexcept { return m_isArray; }
    bool IsNull() const noexcept { return std::holds_alternative<std::monostate>(m_data); }

    // Makes this a text that lodges in the block: whoever calls sees to it that the block is held for as long as this
    // value lives. Copies, and what this is moved to, hold it themselves. False, and nothing done, when there is no
    // room.
    bool LodgeText(CimType type, TextBlock& block, std::wstring_view text);

    // Each holds for values of its kind that are neither null nor an array; others answer false, 0 and an empty text.
    bool AsBool() const noexcept;
    std::int64_t AsSigned() const noexcept;    // sint8 .. sint64
    std::uint64_t AsUnsigned() const noexcept; // uint8 .. uint64, char16
    double AsReal() const noexcept;
    // Of string, datetime and reference. A null character follows the last one; texts may hold others inside.
    std::wstring_view AsText() const noexcept;
    // Null unless this is an object.
    const std::shared_ptr<const CimObject>& AsObject() const noexcept;
    // Empty unless this is an array that is not null.
    const std::vector<CimValue>& Elements() const noexcept;

    // The same type and value; texts letter for letter.
    bool operator==(const CimValue& other) const noexcept;

private:
    using SharedObject = std::shared_ptr<const CimObject>;
    using SharedArray = std::shared_ptr<const std::vector<CimValue>>;
    using Data =
        std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, SharedText, SharedObject, SharedArray>;

    CimValue(CimType type, bool isArray, Data data) noexcept;

    Data m_data;
    CimType m_type = CimType::Empty;
    bool m_isArray = false;
};

// An instance inside a value, as MOF writes it: the class and the properties that were given, in order.
struct CimObject
{
    struct Property
    {
        std::wstring name;
        CimValue value;

        bool operator==(const Property&) const = default;
    };

    std::wstring className;
    std::vector<Property> properties;

    // Without case; null when the object has none of that name.
    const CimValue* Find(std::wstring_view name) const noexcept;
    bool operator==(const CimObject&) const = default;
};

// The value as the given type, when it can be that without loss: integers in range (also to reals), an integer written
// as text, text as datetime (its form is checked) or reference, NULL as null of the type, a single value as an array of
// one. Otherwise nothing, and `reason` says why: "300 does not fit uint8".
std::optional<CimValue> ConvertTo(const CimValue& value, CimType type, bool isArray, std::wstring& reason);

// For people and for decimal BSTRs: 5, -1.5, TRUE, the text itself without quotes, {1, 2}, NULL.
std::wstring PlainText(const CimValue& value);

// Whether a text has the form of a CIM datetime: 25 characters, yyyymmddhhmmss.mmmmmm+uuu or an interval with ':'; any
// digit field may be asterisks.
bool IsDateTime(std::wstring_view text) noexcept;
// Microseconds since 0001-01-01 in UTC, or of the interval; nothing when the form is wrong or a field is asterisks.
std::optional<std::int64_t> DateTimeMicroseconds(std::wstring_view text) noexcept;

} // namespace wbem
