// WQL: canonical text.
#include "wbem/Wql.h"

#include "wbem/Text.h"

namespace wbem
{

namespace
{

std::wstring_view Symbol(WqlOperator op)
{
    switch (op)
    {
    case WqlOperator::Equal:
        return L" = ";
    case WqlOperator::NotEqual:
        return L" <> ";
    case WqlOperator::Less:
        return L" < ";
    case WqlOperator::LessOrEqual:
        return L" <= ";
    case WqlOperator::Greater:
        return L" > ";
    case WqlOperator::GreaterOrEqual:
        return L" >= ";
    case WqlOperator::Like:
        return L" LIKE ";
    case WqlOperator::NotLike:
        return L" NOT LIKE ";
    case WqlOperator::IsNull:
        return L" IS NULL";
    case WqlOperator::IsNotNull:
        return L" IS NOT NULL";
    case WqlOperator::IsA:
        return L" ISA ";
    }
    return {};
}

void AppendTest(std::wstring& text, const WqlTest& test)
{
    text += test.property.name;
    text += Symbol(test.op);
    if (test.other)
        text += test.other->name;
    else if (IsText(test.value.Type()))
        AppendQuoted(text, test.value.AsText());
    else if (!test.value.IsNull())
        text += PlainText(test.value);
}

void AppendCondition(std::wstring& text, const WqlCondition& condition);

// In parentheses where it binds less than what it stands in.
void AppendOperand(std::wstring& text, const WqlCondition& operand, WqlCondition::Kind inside)
{
    const bool weaker = operand.kind == WqlCondition::Kind::Or ||
                        (operand.kind == WqlCondition::Kind::And && inside == WqlCondition::Kind::Not);
    text += weaker ? L"(" : L"";
    AppendCondition(text, operand);
    text += weaker ? L")" : L"";
}

void AppendCondition(std::wstring& text, const WqlCondition& condition)
{
    if (condition.kind == WqlCondition::Kind::Test)
    {
        AppendTest(text, condition.test);
        return;
    }
    if (condition.kind == WqlCondition::Kind::Not)
    {
        text += L"NOT ";
        AppendOperand(text, condition.operands.front(), condition.kind);
        return;
    }
    const wchar_t* separator = L"";
    for (const WqlCondition& operand : condition.operands)
    {
        text += separator;
        AppendOperand(text, operand, condition.kind);
        separator = condition.kind == WqlCondition::Kind::And ? L" AND " : L" OR ";
    }
}

std::wstring SelectText(const WqlQuery& query)
{
    std::wstring text = L"SELECT ";
    const wchar_t* separator = L"";
    for (const std::wstring& name : query.selected)
    {
        text += separator + name;
        separator = L", ";
    }
    if (query.selected.empty())
        text += L'*';
    text += L" FROM " + query.className;
    if (query.where)
    {
        text += L" WHERE ";
        AppendCondition(text, *query.where);
    }
    return text;
}

std::wstring AssociationText(const WqlQuery& query)
{
    std::wstring conditions;
    const auto name = [&conditions](const wchar_t* keyword, const std::wstring& value)
    {
        if (!value.empty())
            conditions += L' ' + std::wstring(keyword) + L" = " + value;
    };
    const auto flag = [&conditions](const wchar_t* keyword, bool value)
    {
        if (value)
            conditions += L' ' + std::wstring(keyword);
    };
    name(L"AssocClass", query.assocClass);
    name(L"ResultClass", query.resultClass);
    name(L"ResultRole", query.resultRole);
    name(L"Role", query.role);
    name(L"RequiredQualifier", query.requiredQualifier);
    name(L"RequiredAssocQualifier", query.requiredAssocQualifier);
    flag(L"ClassDefsOnly", query.classDefsOnly);
    flag(L"KeysOnly", query.keysOnly);
    flag(L"SchemaOnly", query.schemaOnly);

    std::wstring text = query.kind == WqlKind::Associators ? L"ASSOCIATORS OF {" : L"REFERENCES OF {";
    text += query.objectText + L"}";
    return conditions.empty() ? text : text + L" WHERE" + conditions;
}

} // namespace

std::wstring WqlQuery::Text() const
{
    return kind == WqlKind::Select ? SelectText(*this) : AssociationText(*this);
}

} // namespace wbem
