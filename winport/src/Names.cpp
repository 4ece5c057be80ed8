// Names that compare without case.
#include "winport/src/Names.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace winport
{

wchar_t FoldCase(wchar_t c)
{
    // The C locale of the process knows ASCII only; the library's own UTF-8 locale knows all letters and is always
    // there.
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (c < 0x80 || !utf8)
        return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(c), utf8));
}

std::wstring FoldCase(std::wstring_view name)
{
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](wchar_t c) { return FoldCase(c); });
    return folded;
}

bool EqualNames(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return a == b || FoldCase(a) == FoldCase(b); });
}

bool NameLess::operator()(std::wstring_view left, std::wstring_view right) const
{
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](wchar_t a, wchar_t b) { return FoldCase(a) < FoldCase(b); });
}

} // namespace winport
