// BSTR: a counted text with its length in bytes in front.
#include <oleauto.h>

#include <cstdlib>
#include <cstring>
#include <limits>

namespace
{

// The length stands in the last four bytes of the prefix; the rest of it keeps the characters aligned.
constexpr size_t PrefixSize = 8;

void* StartOf(BSTR text)
{
    return reinterpret_cast<char*>(text) - PrefixSize;
}

BSTR Allocate(size_t bytes)
{
    if (bytes > std::numeric_limits<UINT>::max() - PrefixSize - sizeof(OLECHAR))
        return nullptr;
    char* memory = static_cast<char*>(std::malloc(PrefixSize + bytes + sizeof(OLECHAR)));
    if (!memory)
        return nullptr;
    const UINT length = static_cast<UINT>(bytes);
    std::memset(memory, 0, PrefixSize - sizeof length);
    std::memcpy(memory + PrefixSize - sizeof length, &length, sizeof length);
    std::memset(memory + PrefixSize + bytes, 0, sizeof(OLECHAR));
    return reinterpret_cast<BSTR>(memory + PrefixSize);
}

BSTR Make(const void* source, size_t bytes)
{
    BSTR result = Allocate(bytes);
    if (result && source)
        std::memcpy(result, source, bytes);
    else if (result && bytes)
        result[0] = L'\0';
    return result;
}

} // namespace

BSTR SysAllocString(const OLECHAR* text)
{
    return text ? Make(text, std::wcslen(text) * sizeof(OLECHAR)) : nullptr;
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length)
{
    return Make(text, size_t{length} * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(LPCSTR bytes, UINT length)
{
    return Make(bytes, length);
}

INT SysReAllocString(BSTR* text, const OLECHAR* source)
{
    BSTR fresh = SysAllocString(source);
    if (source && !fresh)
        return FALSE;
    SysFreeString(*text);
    *text = fresh;
    return TRUE;
}

INT SysReAllocStringLen(BSTR* text, const OLECHAR* source, UINT length)
{
    BSTR fresh = SysAllocStringLen(source, length);
    if (!fresh)
        return FALSE;
    SysFreeString(*text);
    *text = fresh;
    return TRUE;
}

void SysFreeString(BSTR text)
{
    if (text)
        std::free(StartOf(text));
}

UINT SysStringByteLen(BSTR text)
{
    if (!text)
        return 0;
    UINT length;
    std::memcpy(&length, reinterpret_cast<const char*>(text) - sizeof length, sizeof length);
    return length;
}

UINT SysStringLen(BSTR text)
{
    return static_cast<UINT>(SysStringByteLen(text) / sizeof(OLECHAR));
}
