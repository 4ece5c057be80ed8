// Object paths: what parses prints back to itself, is the same object as itself, and has an identity.
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"

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

void CheckPath(const wbem::ObjectPath& path)
{
    const auto again = wbem::ObjectPath::Parse(path.Text());
    // Escapes may carry the printed path over the limit of what is read.
    Require(again ? *again == path : path.Text().size() > wbem::kMaxPathLength);
    for (const bool nested : {false, true})
    {
        const wbem::PathComparison how{.quotedNumbers = !nested, .nestedPaths = nested};
        Require(wbem::SameObject(path, path, how));
        if (again)
            Require(wbem::IdentityText(*again, how) == wbem::IdentityText(path, how));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = wbem::FromUtf8({reinterpret_cast<const char*>(data), size});
    if (const auto path = wbem::ObjectPath::Parse(text))
        CheckPath(*path);
    else
        Require(path.Error().position <= text.size() && !path.Error().reason.empty());
    if (const auto path = wbem::ObjectPath::ParseNamespace(text))
        Require(path->IsNamespace() &&
                (path->Text().size() > wbem::kMaxPathLength || wbem::SameNamespace(text, path->Text())));
    return 0;
}
