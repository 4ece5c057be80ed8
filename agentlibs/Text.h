// Between UTF-8 files and the wide texts of the records.
#pragma once

#include <string>
#include <string_view>

namespace orl
{

// Bytes that are no UTF-8 come out as a question mark each; no input makes it fail.
std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view text);

// The key under which texts that differ only in the case of ASCII letters are one. Device ids compare so, as
// COrlString::CompareI compares them.
std::wstring FoldCase(std::wstring_view text);

} // namespace orl
