// The texts of device data: from files into records, and compared.
#pragma once

#include <string>
#include <string_view>

namespace orl
{

// Between UTF-8 and wide text; what is no character becomes U+FFFD. Quick for ASCII, which nearly every text here is.
std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view text);

// The key under which texts that differ only in the case of ASCII letters are one. Device ids compare so, as
// COrlString::CompareI compares them.
std::wstring FoldCase(std::wstring_view text);

} // namespace orl
