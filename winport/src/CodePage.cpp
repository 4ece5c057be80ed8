// Conversions between wide text and the code pages: UTF-8 here, the others by the system's tables.
#include <windows.h>

#include "winport/src/CodePage.h"
#include "winport/src/Utf8Codec.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <limits>
#include <string>

namespace
{

constexpr UINT AnsiCodePage = 1252;
constexpr DWORD KnownWideFlags = 0xF; // precomposed, composite, glyphs, invalid characters
constexpr DWORD KnownNarrowFlags = 0x670 | WC_NO_BEST_FIT_CHARS;

// What a conversion writes into: it counts past the end, and without room it only counts.
template <class Unit>
class Output
{
public:
    Output(Unit* destination, int size) : m_destination(destination), m_size(size) {}

    void operator()(Unit unit)
    {
        if (m_count < m_size)
            m_destination[m_count] = unit;
        ++m_count;
    }
    int Result() const
    {
        if (m_size == 0 || m_count <= m_size)
            return m_count;
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }

private:
    Unit* m_destination;
    int m_size;
    int m_count = 0;
};

int Fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

UINT ResolvePage(UINT codePage)
{
    return codePage == CP_ACP || codePage == CP_THREAD_ACP ? AnsiCodePage : codePage;
}

// One direction of the system's converter.
class Converter
{
public:
    Converter(const std::string& to, const std::string& from) : m_handle(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // NOLINTNEXTLINE(performance-no-int-to-ptr): the system marks a failure so
    bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    // Converts as much as it can and hands it on; false when it stopped at a place that it cannot convert.
    template <class Unit, class Put>
    bool Run(const char*& source, size_t& length, Put&& put)
    {
        while (length > 0)
        {
            std::array<Unit, 256> piece;
            char* out = reinterpret_cast<char*>(piece.data());
            size_t room = sizeof piece;
            char* in = const_cast<char*>(source);
            const size_t result = iconv(m_handle, &in, &length, &out, &room);
            const int error = errno;
            source = in;
            const size_t units = (sizeof piece - room) / sizeof(Unit);
            for (size_t i = 0; i < units; ++i)
                put(piece[i]);
            if (result == static_cast<size_t>(-1) && error != E2BIG)
                return false;
        }
        return true;
    }

private:
    iconv_t m_handle;
};

std::string NameOf(UINT codePage)
{
    return "CP" + std::to_string(codePage);
}

bool IsSingleByte(UINT codePage)
{
    return codePage != 932 && codePage != 936 && codePage != 949 && codePage != 950;
}

// The control codes that a single-byte page leaves open stand for themselves.
bool IsOpenControl(UINT codePage, unsigned int code)
{
    return IsSingleByte(codePage) && code >= 0x80 && code <= 0x9F;
}

int DecodePage(UINT codePage, bool refuseInvalid, const char* source, size_t length, Output<wchar_t>& put)
{
    Converter converter("WCHAR_T", NameOf(codePage));
    if (!converter.IsOpen())
        return Fail(ERROR_INVALID_PARAMETER);
    while (!converter.Run<wchar_t>(source, length, put))
    {
        const unsigned char byte = static_cast<unsigned char>(*source);
        if (IsOpenControl(codePage, byte))
            put(static_cast<wchar_t>(byte));
        else if (refuseInvalid)
            return Fail(ERROR_NO_UNICODE_TRANSLATION);
        else
            put(winport::ReplacementCharacter);
        ++source;
        --length;
    }
    return put.Result();
}

bool IsOpenByte(UINT codePage, wchar_t c)
{
    if (!IsOpenControl(codePage, static_cast<unsigned int>(c)))
        return false;
    Converter back("WCHAR_T", NameOf(codePage));
    const char byte = static_cast<char>(c);
    const char* source = &byte;
    size_t length = 1;
    return back.IsOpen() && !back.Run<wchar_t>(source, length, [](wchar_t) {});
}

int EncodePage(UINT codePage, LPCWSTR source, size_t count, const char* replacement, bool& replaced, Output<char>& put)
{
    Converter converter(NameOf(codePage), "WCHAR_T");
    if (!converter.IsOpen())
        return Fail(ERROR_INVALID_PARAMETER);
    const char* bytes = reinterpret_cast<const char*>(source);
    size_t length = count * sizeof(wchar_t);
    while (!converter.Run<char>(bytes, length, put))
    {
        wchar_t c;
        std::memcpy(&c, bytes, sizeof c);
        if (IsOpenByte(codePage, c))
            put(static_cast<char>(c));
        else
        {
            replaced = true;
            for (const char* r = replacement; *r; ++r)
                put(*r);
        }
        bytes += sizeof c;
        length -= sizeof c;
    }
    return put.Result();
}

// The length in units, with the terminator for -1; 0 for arguments that no conversion takes.
template <class Unit>
size_t SourceLength(const Unit* source, int length, const void* destination, int destinationSize)
{
    if (!source || length == 0 || destinationSize < 0 || (!destination && destinationSize > 0) || source == destination)
        return 0;
    return length < 0 ? std::char_traits<Unit>::length(source) + 1 : static_cast<size_t>(length);
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceLength, LPWSTR destination,
                        int destinationSize)
{
    const size_t length = SourceLength(source, sourceLength, destination, destinationSize);
    if (length == 0 || length > static_cast<size_t>(std::numeric_limits<int>::max()))
        return Fail(ERROR_INVALID_PARAMETER);
    const UINT page = ResolvePage(codePage);
    if (flags & ~(page == CP_UTF8 ? MB_ERR_INVALID_CHARS : KnownWideFlags))
        return Fail(ERROR_INVALID_FLAGS);
    const bool refuseInvalid = (flags & MB_ERR_INVALID_CHARS) != 0;
    Output<wchar_t> put(destination, destinationSize);
    if (page != CP_UTF8)
        return DecodePage(page, refuseInvalid, source, length, put);
    if (!winport::DecodeUtf8(source, length, put) && refuseInvalid)
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return put.Result();
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source, int sourceLength, LPSTR destination,
                        int destinationSize, LPCSTR defaultCharacter, LPBOOL usedDefault)
{
    const size_t length = SourceLength(source, sourceLength, destination, destinationSize);
    if (length == 0 || length > static_cast<size_t>(std::numeric_limits<int>::max() / 4))
        return Fail(ERROR_INVALID_PARAMETER);
    const UINT page = ResolvePage(codePage);
    Output<char> put(destination, destinationSize);
    if (page != CP_UTF8)
    {
        if (flags & ~KnownNarrowFlags)
            return Fail(ERROR_INVALID_FLAGS);
        bool replaced = false;
        const int result = EncodePage(page, source, length, defaultCharacter ? defaultCharacter : "?", replaced, put);
        if (usedDefault)
            *usedDefault = replaced;
        return result;
    }
    if (usedDefault)
        *usedDefault = FALSE;
    if (flags & ~WC_ERR_INVALID_CHARS)
        return Fail(ERROR_INVALID_FLAGS);
    if (!winport::EncodeUtf8(source, length, put) && flags)
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return put.Result();
}

UINT GetACP()
{
    return AnsiCodePage;
}

int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int size)
{
    if (type != LOCALE_IDEFAULTANSICODEPAGE)
        return Fail(ERROR_INVALID_FLAGS);
    const UINT page = winport::AnsiCodePageOf(locale, AnsiCodePage);
    if (page == winport::NoLocale || size < 0 || (size > 0 && !data))
        return Fail(ERROR_INVALID_PARAMETER);
    const std::wstring text = std::to_wstring(page);
    const int needed = static_cast<int>(text.size() + 1);
    if (size == 0)
        return needed;
    if (size < needed)
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    std::wmemcpy(data, text.c_str(), text.size() + 1);
    return needed;
}
