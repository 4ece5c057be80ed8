// FirstPlaces: what must not stand twice in a JSON text, and where it stands the first time.
#pragma once

#include "agentlibs/inventory/ObjectReader.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orl
{

class FirstPlaces
{
public:
    // Remembers that the member `key` of the object holds the value, in whatever form makes equal what shall be
    // different. Refuses the member when one before it held the same: "another `what`, at line 3, column 14".
    void Put(const ObjectReader& in, std::string_view key, const std::wstring& value, const char* what)
    {
        const auto [known, isNew] = m_places.emplace(value, in.Offset(key));
        if (!isNew)
            in.Refuse(key, std::string("another ") + what + ", at " + in.LineAndColumn(known->second));
    }

private:
    std::unordered_map<std::wstring, std::size_t> m_places; // offsets
};

} // namespace orl
