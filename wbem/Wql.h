// WQL: data queries, schema queries and the two association queries; parsing, printing and evaluation.
#pragma once

#include "wbem/CimValue.h"
#include "wbem/Like.h"
#include "wbem/ObjectPath.h"
#include "wbem/Parsed.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wbem
{

inline constexpr std::size_t kMaxQueryLength = 262144; // characters
inline constexpr std::size_t kMaxQueryNesting = 200;   // parentheses and NOTs around one test

// A property that the query names, as written; embedded objects are entered with points ("TargetInstance.Name").
struct WqlProperty
{
    std::wstring name;
    // Its place in WqlQuery::testedProperties, so that an evaluator can look a name up once a query, not once an
    // object.
    std::size_t index = 0;

    bool operator==(const WqlProperty&) const = default;
};

enum class WqlOperator
{
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Like,
    NotLike,
    IsNull, // also "= NULL"
    IsNotNull,
    IsA,
};

// One test. The property stands on the left: "5 < X" reads as X > 5.
struct WqlTest
{
    WqlProperty property;
    WqlOperator op = WqlOperator::Equal;
    // The constant: sint32, sint64 or uint64, real64, boolean or string; for ISA the class name; null where the
    // operator needs none or `other` takes its place.
    CimValue value;
    // A second property instead of a constant.
    std::optional<WqlProperty> other;
    // The compiled pattern of LIKE and NOT LIKE; value holds its text.
    std::shared_ptr<const LikePattern> pattern;

    bool operator==(const WqlTest& that) const;
};

struct WqlCondition
{
    enum class Kind
    {
        Test,
        And,
        Or,
        Not
    };

    Kind kind = Kind::Test;
    WqlTest test;                       // of Kind::Test
    std::vector<WqlCondition> operands; // And, Or: two or more, none of the same kind; Not: one

    bool operator==(const WqlCondition&) const = default;
};

enum class Truth
{
    False,
    True,
    Unknown
};

// Where an evaluation finds the properties of the object at hand.
class WqlSource
{
public:
    virtual ~WqlSource() = default;
    // Null for a property without a value, and for one that the object does not have: callers refuse unknown names
    // beforehand, by WqlQuery::testedProperties.
    virtual CimValue Value(const WqlProperty& property) const = 0;
    // Whether the property's object ("__this": the object itself) is of the class or derives from it.
    virtual Truth IsA(const WqlProperty& property, std::wstring_view className) const = 0;

protected:
    WqlSource() = default;
    WqlSource(const WqlSource&) = default;
    WqlSource& operator=(const WqlSource&) = default;
};

// The three-valued logic of SQL: a comparison with NULL is unknown, an object is selected where the WHERE is true.
//
// Texts compare without case. A number compares with a text that spells one, by value, exact over the whole range of 64
// bits; a boolean with TRUE, FALSE, their texts and numbers (0 is false); datetimes by the moment they mean; a
// reference as an object path (= and <> only). What cannot be compared (arrays, objects, a number with a word) is
// unknown.
Truth Evaluate(const WqlCondition& condition, const WqlSource& source);
Truth Compare(const CimValue& left, WqlOperator op, const CimValue& right);

enum class WqlKind
{
    Select,
    Associators,
    References
};

struct WqlQuery
{
    WqlKind kind = WqlKind::Select;

    // SELECT. An empty list is "*". Names once each, in the order written.
    std::vector<std::wstring> selected;
    // FROM; "meta_class" in a schema query.
    std::wstring className;
    std::optional<WqlCondition> where;
    // Every property that the WHERE names, once each, in the order of first use; ISA's "__this" is among them.
    std::vector<std::wstring> testedProperties;

    // ASSOCIATORS OF, REFERENCES OF. Empty texts: not given. References knows neither assocClass, resultRole nor
    // requiredAssocQualifier.
    ObjectPath object;
    std::wstring objectText; // the path as written
    std::wstring assocClass;
    std::wstring resultClass;
    std::wstring resultRole;
    std::wstring role;
    std::wstring requiredQualifier;
    std::wstring requiredAssocQualifier;
    bool classDefsOnly = false;
    bool keysOnly = false;
    bool schemaOnly = false;

    static Parsed<WqlQuery> Parse(std::wstring_view text);

    bool SelectsAll() const noexcept { return kind == WqlKind::Select && selected.empty(); }
    bool IsSchemaQuery() const noexcept; // FROM meta_class, or a SchemaOnly association query

    // True where the WHERE is; also when there is none.
    bool Admits(const WqlSource& source) const;

    // The value that the property must have in every object that the query admits: the constant of an '=' that is the
    // WHERE itself or a conjunct of it. An '=' under OR or NOT restricts nothing. Of several for one property it is the
    // first; if they differ, the query admits nothing, and the first is as good as any. Null when there is none.
    const CimValue* RequiredValue(std::wstring_view property) const;

    // Canonical text; it parses back to an equal query.
    std::wstring Text() const;

    bool operator==(const WqlQuery&) const = default;
};

} // namespace wbem
