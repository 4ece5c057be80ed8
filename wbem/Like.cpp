// LIKE: the pattern as a set of positions that the text moves on, all at once (one bit a position).
#include "wbem/Like.h"

#include "wbem/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace wbem
{

namespace
{

constexpr std::size_t kWordBits = 64;

using Range = std::pair<char32_t, char32_t>; // first and last

// What takes one character: one of the ranges, or one of none of them.
struct Element
{
    std::vector<Range> ranges;
    bool negated = false;
};

char32_t Folded(wchar_t c)
{
    return CodeUnit(FoldCase(c));
}

// The position of the ']' that closes the set at `open`, or npos. A ']' in first place is a member.
std::size_t SetEnd(std::wstring_view pattern, std::size_t open)
{
    std::size_t first = open + 1;
    if (first < pattern.size() && pattern[first] == L'^')
        ++first;
    return first < pattern.size() ? pattern.find(L']', first + 1) : std::wstring_view::npos;
}

// The texts are folded. A range holds the folded characters between its ends, what lies between its folded ends, and
// the small forms of the capitals that it spans ("[%-_]" has all of them).
void AddRange(std::vector<Range>& ranges, wchar_t first, wchar_t last)
{
    const auto add = [&ranges](char32_t from, char32_t to)
    {
        if (from <= to)
            ranges.emplace_back(from, to);
    };
    const auto small = [](char32_t capital) { return capital + (U'a' - U'A'); };
    add(Folded(first), Folded(last));
    if (first == last)
        return;
    add(CodeUnit(first), CodeUnit(last));
    add(small(std::max<char32_t>(CodeUnit(first), U'A')), small(std::min<char32_t>(CodeUnit(last), U'Z')));
}

Element ReadSet(std::wstring_view members)
{
    Element element;
    if (members.front() == L'^')
    {
        element.negated = true;
        members.remove_prefix(1);
    }
    for (std::size_t i = 0; i < members.size(); ++i)
    {
        const bool isRange = i + 2 < members.size() && members[i + 1] == L'-';
        AddRange(element.ranges, members[i], members[isRange ? i + 2 : i]);
        i += isRange ? 2 : 0;
    }
    return element;
}

struct Elements
{
    std::vector<Element> list;
    std::vector<std::size_t> loops; // elements that a % stands before
};

Elements ReadPattern(std::wstring_view pattern)
{
    Elements elements;
    // After the first '[' that nothing closes no other is closed either.
    bool setsPossible = true;
    for (std::size_t i = 0; i < pattern.size(); ++i)
    {
        const wchar_t c = pattern[i];
        if (c == L'%')
        {
            elements.loops.push_back(elements.list.size());
            continue;
        }
        if (c == L'_')
        {
            elements.list.push_back({{}, true});
            continue;
        }
        const std::size_t end = c == L'[' && setsPossible ? SetEnd(pattern, i) : std::wstring_view::npos;
        if (end == std::wstring_view::npos)
        {
            setsPossible = setsPossible && c != L'[';
            elements.list.push_back({{{Folded(c), Folded(c)}}, false});
            continue;
        }
        elements.list.push_back(ReadSet(pattern.substr(i + 1, end - i - 1)));
        i = end;
    }
    return elements;
}

// Where the elements' ranges begin, and the characters behind their ends: between two of these all are alike.
std::vector<char32_t> Stretches(const std::vector<Element>& elements)
{
    std::vector<char32_t> starts{0};
    for (const Element& element : elements)
    {
        for (const auto& [first, last] : element.ranges)
        {
            starts.push_back(first);
            if (last != static_cast<char32_t>(-1))
                starts.push_back(last + 1);
        }
    }
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    return starts;
}

std::size_t StretchOf(const std::vector<char32_t>& starts, char32_t c)
{
    return static_cast<std::size_t>(std::upper_bound(starts.begin(), starts.end(), c) - starts.begin()) - 1;
}

} // namespace

LikePattern::LikePattern(std::wstring_view pattern)
{
    if (pattern.size() > kMaxLikePattern)
        return;
    const Elements elements = ReadPattern(pattern);
    m_elements = elements.list.size();
    m_words = m_elements / kWordBits + 1;
    m_loops.assign(m_words, 0);
    for (const std::size_t at : elements.loops)
        m_loops[at / kWordBits] |= Word{1} << (at % kWordBits);

    m_stretches = Stretches(elements.list);
    m_masks.assign(m_stretches.size() * m_words, 0);
    for (std::size_t i = 0; i < m_elements; ++i)
    {
        const Word bit = Word{1} << (i % kWordBits);
        Word* const column = m_masks.data() + i / kWordBits;
        const Element& element = elements.list[i];
        for (const auto& [first, last] : element.ranges)
        {
            for (std::size_t s = StretchOf(m_stretches, first); s < m_stretches.size() && m_stretches[s] <= last; ++s)
                column[s * m_words] |= bit;
        }
        for (std::size_t s = 0; element.negated && s < m_stretches.size(); ++s)
            column[s * m_words] ^= bit;
    }
    for (std::size_t c = 0; c < m_asciiStretch.size(); ++c)
        m_asciiStretch[c] = static_cast<std::uint32_t>(StretchOf(m_stretches, static_cast<char32_t>(c)));
}

const LikePattern::Word* LikePattern::MaskOf(wchar_t folded) const noexcept
{
    const char32_t c = CodeUnit(folded);
    const std::size_t stretch = c < m_asciiStretch.size() ? m_asciiStretch[c] : StretchOf(m_stretches, c);
    return m_masks.data() + stretch * m_words;
}

bool LikePattern::Matches(std::wstring_view text) const
{
    if (m_words == 0)
        return false;
    // Bit i of `reached`: the text so far can end before element i.
    std::array<Word, 4> few{};
    std::vector<Word> many(m_words > few.size() ? m_words : 0, 0);
    Word* const reached = many.empty() ? few.data() : many.data();
    reached[0] = 1;
    for (const wchar_t c : text)
    {
        const Word* const mask = MaskOf(FoldCase(c));
        Word carry = 0;
        Word any = 0;
        for (std::size_t w = 0; w < m_words; ++w)
        {
            const Word taken = reached[w] & mask[w];
            reached[w] = (reached[w] & m_loops[w]) | (taken << 1) | carry;
            carry = taken >> (kWordBits - 1);
            any |= reached[w];
        }
        if (any == 0)
            return false;
    }
    return (reached[m_elements / kWordBits] >> (m_elements % kWordBits) & 1) != 0;
}

} // namespace wbem
