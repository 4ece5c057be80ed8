// Text between the wide form and UTF-8, and paths from either: the same on both platforms.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace orl
{

// What is no character in the source becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);

// The path that a text with either separator means.
std::filesystem::path NativePath(std::wstring_view text);
// A path as wide text, as it would be shown to a user.
std::wstring PathText(const std::filesystem::path& path);

// Writes the text as UTF-8 bytes, whatever the process's locale; a text file's line ends are the platform's. False when
// the file refuses.
bool WriteUtf8(FILE* file, const wchar_t* text);

} // namespace orl
