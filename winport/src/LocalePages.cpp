// The ANSI code pages of locales, by their primary language.
#include "winport/src/CodePage.h"

#include <algorithm>
#include <iterator>

namespace winport
{

namespace
{

struct LanguagePage
{
    WORD language;
    WORD page;
};

// The languages that the resources are likely to be in. Whole locale ids stand before their primary language.
constexpr LanguagePage Pages[] = {
    {0x0404, 950},  // Chinese, Taiwan
    {0x0804, 936},  // Chinese, PRC
    {0x0C04, 950},  // Chinese, Hong Kong
    {0x0C1A, 1251}, // Serbian, Cyrillic
    {0x01, 1256},   // Arabic
    {0x02, 1251},   // Bulgarian
    {0x03, 1252},   // Catalan
    {0x04, 936},    // Chinese
    {0x05, 1250},   // Czech
    {0x06, 1252},   // Danish
    {0x07, 1252},   // German
    {0x08, 1253},   // Greek
    {0x09, 1252},   // English
    {0x0A, 1252},   // Spanish
    {0x0B, 1252},   // Finnish
    {0x0C, 1252},   // French
    {0x0D, 1255},   // Hebrew
    {0x0E, 1250},   // Hungarian
    {0x0F, 1252},   // Icelandic
    {0x10, 1252},   // Italian
    {0x11, 932},    // Japanese
    {0x12, 949},    // Korean
    {0x13, 1252},   // Dutch
    {0x14, 1252},   // Norwegian
    {0x15, 1250},   // Polish
    {0x16, 1252},   // Portuguese
    {0x18, 1250},   // Romanian
    {0x19, 1251},   // Russian
    {0x1A, 1250},   // Croatian, Serbian
    {0x1B, 1250},   // Slovak
    {0x1D, 1252},   // Swedish
    {0x1E, 874},    // Thai
    {0x1F, 1254},   // Turkish
    {0x22, 1251},   // Ukrainian
    {0x24, 1250},   // Slovenian
    {0x25, 1257},   // Estonian
    {0x26, 1257},   // Latvian
    {0x27, 1257},   // Lithuanian
    {0x2A, 1258},   // Vietnamese
};

constexpr WORD PrimaryLanguageMask = 0x3FF;

} // namespace

UINT AnsiCodePageOf(LCID locale, UINT systemPage)
{
    if (locale == 0 || locale == LOCALE_USER_DEFAULT || locale == LOCALE_SYSTEM_DEFAULT)
        return systemPage;
    const WORD language = LOWORD(locale);
    for (const WORD wanted : {language, static_cast<WORD>(language & PrimaryLanguageMask)})
    {
        const auto found = std::find_if(std::begin(Pages), std::end(Pages),
                                        [&](const LanguagePage& entry) { return entry.language == wanted; });
        if (found != std::end(Pages))
            return found->page;
    }
    return NoLocale;
}

} // namespace winport
