// WQL: what parses prints back to itself, and evaluates.
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

// An object with a value of a different kind for each property of the query.
class Source : public wbem::WqlSource
{
public:
    wbem::CimValue Value(const wbem::WqlProperty& property) const override
    {
        switch (property.index % 6)
        {
        case 0:
            return wbem::CimValue::String(property.name);
        case 1:
            return wbem::CimValue::Unsigned(wbem::CimType::UInt64, 18446744073709551615u);
        case 2:
            return {};
        case 3:
            return wbem::CimValue::DateTime(L"20260101120000.000000+060");
        case 4:
            return wbem::CimValue::Reference(L"C.a=1");
        default:
            return wbem::CimValue::Real(wbem::CimType::Real64, -1.5);
        }
    }
    wbem::Truth IsA(const wbem::WqlProperty&, std::wstring_view) const override { return wbem::Truth::Unknown; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = wbem::FromUtf8({reinterpret_cast<const char*>(data), size});
    const auto query = wbem::WqlQuery::Parse(text);
    if (!query)
    {
        Require(query.Error().position <= text.size() && !query.Error().reason.empty());
        return 0;
    }
    const std::wstring printed = query->Text();
    const auto again = wbem::WqlQuery::Parse(printed);
    Require(again ? *again == *query : printed.size() > wbem::kMaxQueryLength);
    if (again)
    {
        Require(again->Text() == printed);
        Require(again->Admits(Source()) == query->Admits(Source()));
    }
    for (const std::wstring& property : query->testedProperties)
        (void)query->RequiredValue(property);
    return 0;
}
