// UTF-8 to and from wide characters, without memory of its own.
#pragma once

#include <cstddef>

namespace winport
{

constexpr wchar_t ReplacementCharacter = 0xFFFD;

// Hands every character to put. What is no UTF-8 becomes one U+FFFD for each longest run that begins a character; false
// when there was any.
template <class Put>
bool DecodeUtf8(const char* source, size_t length, Put& put)
{
    bool valid = true;
    for (size_t i = 0; i < length;)
    {
        const unsigned int lead = static_cast<unsigned char>(source[i++]);
        if (lead < 0x80)
        {
            put(static_cast<wchar_t>(lead));
            continue;
        }
        const size_t trails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        bool good = lead >= 0xC2 && lead <= 0xF4;
        unsigned int code = lead & (0x3Fu >> trails);
        for (size_t n = 0; good && n < trails; ++n)
        {
            // The first trail byte keeps out longer forms than needed, surrogates and what is past U+10FFFF.
            const unsigned int lowest = n > 0 ? 0x80 : lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
            const unsigned int highest = n > 0 ? 0xBF : lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
            const unsigned int trail = i < length ? static_cast<unsigned char>(source[i]) : 0;
            good = trail >= lowest && trail <= highest;
            if (good)
            {
                code = code << 6 | (trail & 0x3F);
                ++i;
            }
        }
        put(good ? static_cast<wchar_t>(code) : ReplacementCharacter);
        valid = valid && good;
    }
    return valid;
}

// Hands every byte to put. What is no character becomes U+FFFD; false when there was any.
template <class Put>
bool EncodeUtf8(const wchar_t* source, size_t length, Put& put)
{
    bool valid = true;
    for (size_t i = 0; i < length; ++i)
    {
        // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c): a wide character is no signed char
        unsigned int code = static_cast<unsigned int>(source[i]);
        if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        {
            valid = false;
            code = static_cast<unsigned int>(ReplacementCharacter);
        }
        const int trails = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        const unsigned int leads[] = {0x00, 0xC0, 0xE0, 0xF0};
        put(static_cast<char>(leads[trails] | code >> (6 * trails)));
        for (int n = trails - 1; n >= 0; --n)
            put(static_cast<char>(0x80 | (code >> (6 * n) & 0x3F)));
    }
    return valid;
}

} // namespace winport
