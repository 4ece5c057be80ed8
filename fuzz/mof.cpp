// MOF: what is read prints back to itself, in any encoding.
#include "fuzz/Require.h"
#include "wbem/MofReader.h"
#include "wbem/Text.h"

#include <cstddef>
#include <cstdint>

namespace
{

struct Printer
{
    std::wstring operator()(const wbem::MofClass& declaration) const { return wbem::PrintClass(declaration); }
    std::wstring operator()(const wbem::MofInstance& declaration) const { return wbem::PrintInstance(declaration); }
    std::wstring operator()(const wbem::MofQualifierDeclaration& declaration) const
    {
        return wbem::PrintQualifierDeclaration(declaration);
    }
    std::wstring operator()(const wbem::MofPragma&) const { return {}; }
};

std::wstring Print(const wbem::MofDocument& document)
{
    std::wstring text;
    for (const wbem::MofDeclaration& declaration : document.declarations)
        text += std::visit(Printer(), declaration);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto result = wbem::ReadMofBytes({reinterpret_cast<const char*>(data), size});
    if (!result)
    {
        Require(!result.Error().reason.empty() && result.Error().line > 0 && result.Error().column > 0);
        return 0;
    }
    const std::wstring printed = Print(*result);
    const auto again = wbem::ReadMofText(printed);
    Require(static_cast<bool>(again));
    Require(Print(*again) == printed);
    const auto fromBytes = wbem::ReadMofBytes(wbem::ToUtf8(printed));
    Require(fromBytes && Print(*fromBytes) == printed);
    return 0;
}
