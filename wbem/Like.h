// The patterns of LIKE, compiled once and matched in one pass over the text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace wbem
{

inline constexpr std::size_t kMaxLikePattern = 4096; // characters

// `%` any characters or none, `_` any one, `[a-cx]` one of them, `[^a-c]` one that is not; letters without case. A
// backslash is a letter like others: `[%]` means a percent sign. `]` right after `[` or `[^` is a member, a `[` that
// nothing closes is itself.
class LikePattern
{
public:
    // At most kMaxLikePattern characters; a longer pattern matches nothing.
    explicit LikePattern(std::wstring_view pattern);

    // Takes time in proportion to the text's length, times a 64th of the pattern's. Thread safe.
    bool Matches(std::wstring_view text) const;

private:
    using Word = std::uint64_t;

    const Word* MaskOf(wchar_t folded) const noexcept;

    // The elements of the pattern (all but %) are the bits of a mask, of m_words words. For each stretch of characters
    // that no element tells apart there is the mask of the elements that take them.
    std::size_t m_elements = 0;
    std::size_t m_words = 0;                         // 0: the pattern was too long
    std::vector<char32_t> m_stretches;               // first character of each, ascending
    std::vector<Word> m_masks;                       // m_words for each stretch
    std::vector<Word> m_loops;                       // bit i: a % stands before element i, or behind the last
    std::array<std::uint32_t, 128> m_asciiStretch{}; // the stretch of each ASCII character
};

} // namespace wbem
