// Text without case: every name of the three languages (class, property, key, qualifier, namespace) compares this way.
//
// The folding is simple (one character to one character), fixed, and independent of the locale: ASCII first, then a
// table of the alphabets that have case. It gives the same answer on every platform. All functions are pure and
// thread safe.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

namespace wbem
{

// The bits of a wide character, which is signed on some platforms.
constexpr char32_t CodeUnit(wchar_t c) noexcept
{
    return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(c));
}

// The small letter of a character beyond ASCII; characters without one, and surrogates, stay as they are.
wchar_t FoldCaseBeyondAscii(wchar_t c) noexcept;

inline wchar_t FoldCase(wchar_t c) noexcept
{
    if (c >= L'A' && c <= L'Z')
        return static_cast<wchar_t>(c + (L'a' - L'A'));
    return c < 0x80 ? c : FoldCaseBeyondAscii(c);
}

bool EqualNoCase(std::wstring_view left, std::wstring_view right) noexcept;

// Negative, zero or positive, by the folded characters, a prefix before what it begins.
int CompareNoCase(std::wstring_view left, std::wstring_view right) noexcept;

inline bool LessNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    return CompareNoCase(left, right) < 0;
}

bool StartsWithNoCase(std::wstring_view text, std::wstring_view start) noexcept;

// Equal for texts that EqualNoCase calls equal.
std::size_t HashNoCase(std::wstring_view text) noexcept;

std::wstring FoldCase(std::wstring_view text);

// For containers: ordered and hashed by name, found with a string_view without making a string.
struct NameLess
{
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept { return LessNoCase(left, right); }
};

struct NameEqual
{
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept { return EqualNoCase(left, right); }
};

struct NameHash
{
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const noexcept { return HashNoCase(text); }
};

template <class T>
using NameMap = std::unordered_map<std::wstring, T, NameHash, NameEqual>;
using NameSet = std::unordered_set<std::wstring, NameHash, NameEqual>;

// What may begin and what may continue a name: letters, digits (not first), '_' and everything beyond ASCII.
bool IsNameStart(wchar_t c) noexcept;
bool IsNamePart(wchar_t c) noexcept;
bool IsName(std::wstring_view text) noexcept;

bool IsSpace(wchar_t c) noexcept;
std::wstring_view Trim(std::wstring_view text) noexcept;

// For messages: the text, cut after 60 characters with "..." behind.
std::wstring Excerpt(std::wstring_view text);

// Appends one code point: one wide character, or a surrogate pair where wide characters have 16 bits.
void AppendCodePoint(std::wstring& text, char32_t codePoint);

inline bool IsHighSurrogate(wchar_t c) noexcept
{
    return c >= 0xD800 && c <= 0xDBFF;
}
inline bool IsLowSurrogate(wchar_t c) noexcept
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

// Half a pair of surrogates, which is no character, becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
// Every byte that is not UTF-8 becomes U+FFFD.
std::wstring FromUtf8(std::string_view bytes);

// One code point from the start of UTF-8 bytes; `length` says how many it took. Nothing when they are not UTF-8
// (overlong forms, surrogates and what lies beyond U+10FFFF are not).
std::optional<char32_t> DecodeUtf8(std::string_view bytes, std::size_t& length) noexcept;

} // namespace wbem
