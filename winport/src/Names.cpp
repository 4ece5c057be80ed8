// Names that compare without case.
#include "winport/src/Names.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace winport
{

namespace
{

// Goes when the module is unloaded.
class OwnLocale
{
public:
    OwnLocale() : m_locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
    ~OwnLocale()
    {
        if (m_locale)
            freelocale(m_locale);
        m_locale = nullptr;
    }
    OwnLocale(const OwnLocale&) = delete;
    OwnLocale& operator=(const OwnLocale&) = delete;

    locale_t Get() const { return m_locale; }

private:
    locale_t m_locale;
};

} // namespace

wchar_t FoldCase(wchar_t c)
{
    // The C locale of the process knows ASCII only; the library's own UTF-8 locale knows all letters and is always
    // there.
    static const OwnLocale utf8;
    if (c < 0x80 || !utf8.Get())
        return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(c), utf8.Get()));
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
