// Records: what the client prints, apart from where it came from.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace orl::client
{

struct Record;
struct Value;

// A number of any type, as the JSON literal of its exact value. A real that JSON has no literal for is a text.
struct Number
{
    std::string literal;
    std::string meaning = {}; // what it stands for, for people; empty when nothing says so
    bool operator==(const Number&) const = default;
};

using Array = std::vector<Value>;

// Texts are UTF-8.
struct Value : std::variant<std::monostate, bool, Number, std::string, Array, std::shared_ptr<const Record>>
{
    using variant::variant;

    [[nodiscard]] bool IsNull() const { return std::holds_alternative<std::monostate>(*this); }
};

struct Property
{
    std::string name;
    Value value;
};

struct Record
{
    std::string className;
    std::vector<Property> properties;
    std::string mof; // the object's own text; read only for the format that prints it
};

// Null when the record does not have the property. Names compare without case.
[[nodiscard]] const Value* Find(const Record& record, const std::string& name);

// The text of a text or number; empty for anything else and for a property that the record lacks.
[[nodiscard]] std::string TextOf(const Record& record, const std::string& name);

} // namespace orl::client
