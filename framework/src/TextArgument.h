// TextArgument: a text as the VARIANT that IWbemClassObject::Put reads.
#pragma once

#include "com/OrlAtl.h"

#include <cstddef>
#include <cstdint>

namespace orl
{

// Put copies what it is given and frees none of it. So a text of up to Capacity characters needs no BSTR of its own
// memory: here it lies as one does, behind its length in bytes. Most properties are such texts.
//
// The VARIANT is this object's and is valid as long as it is.
class TextArgument
{
public:
    static constexpr std::size_t Capacity = 255;

    // Null makes the property null. Throws CAtlException with E_OUTOFMEMORY, for a longer text alone.
    TextArgument(const wchar_t* text, std::size_t length);
    TextArgument(const TextArgument&) = delete;
    TextArgument& operator=(const TextArgument&) = delete;

    VARIANT& Variant() { return m_variant; }

private:
    struct
    {
        std::uint32_t alignsTheRest;
        std::uint32_t bytes;
        wchar_t characters[Capacity + 1];
    } m_short;
    CComBSTR m_long;
    VARIANT m_variant;
};

} // namespace orl
