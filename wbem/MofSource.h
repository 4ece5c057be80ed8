// The text of a MOF file, whatever encoding its bytes have.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace wbem
{

// UTF-8 or UTF-16 in either byte order, by the byte order mark or, without one, by where the zero bytes are. A byte
// that is not UTF-8 becomes the low surrogate 0xDC00 + byte: nothing else makes one of 0xDC80 to 0xDCFF alone, so the
// lexer can accept it in a comment and name the byte elsewhere.
std::wstring DecodeMof(std::string_view bytes);

// The file's bytes; or nothing, and why.
std::optional<std::string> ReadMofBytesOf(const std::filesystem::path& file, std::wstring& reason);

// A path as text, and a text from a pragma as a path: either slash, UTF-8 where the system's paths are bytes.
std::wstring FileName(const std::filesystem::path& file);
std::filesystem::path FilePath(std::wstring_view name);

} // namespace wbem
