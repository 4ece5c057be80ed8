// COrlString: formatting and texts of resource libraries.

#include "Common/Src/OrlString.h"

#include "Common/Src/Helper.h"
#include "Common/Src/OrlDebug.h"
#include "Common/Src/WideFormat.h"

#include <cstdarg>
#include <memory>
#include <new>

namespace
{

constexpr size_t FormatCapacity = 1024;
constexpr int FirstTextCapacity = 1024;
constexpr wchar_t ArgumentPlace[] = L"%s";
constexpr size_t ArgumentPlaceLength = 2;
// The high byte of a warning's id holds its caller's flags.
constexpr unsigned int TextIdMask = 0xFFFFFF;

std::unique_ptr<wchar_t[]> TryBuffer(size_t capacity)
{
    return std::unique_ptr<wchar_t[]>(new (std::nothrow) wchar_t[capacity]());
}

} // namespace

int COrlString::FormatString(const wchar_t* format, ...)
{
    const auto buffer = TryBuffer(FormatCapacity);
    if (!buffer)
        return 0;
    va_list arguments;
    va_start(arguments, format);
    int length = 0;
    try
    {
        length = orl::FormatBoundedList(buffer.get(), FormatCapacity, format, arguments);
        assign(buffer.get());
    }
    catch (...)
    {
        // The caller gets the length that it would have had.
    }
    va_end(arguments);
    return length;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): other modules call it with its argument by value
void COrlString::FormatWarningMessage(std::vector<COrlString> args)
{
    bool placesLeft = true;
    for (const COrlString& arg : args)
    {
        const size_t place = placesLeft ? find(ArgumentPlace) : npos;
        placesLeft = place != npos;
        if (placesLeft)
            replace(place, ArgumentPlaceLength, arg);
        else
            append(L"\n").append(arg);
    }
}

int COrlString::LoadCommonResString(unsigned int id)
{
    COrlString library(L"CommonRes");
    COrlString language;
    if (CHelper::GetLocalLanguage(language) == 0)
        library += language;

    const HMODULE loaded = CHelper::QvLoadLibrary(library);
    if (loaded == nullptr)
        return -1;
    const int length = LoadStringW(GetModuleHandleW(library.c_str()), id);
    FreeLibrary(loaded);
    return length;
}

int COrlString::LoadStringW(HINSTANCE module, ULONG id)
{
    return LoadStringW(module, id, CommonResources);
}

int COrlString::LoadStringW(HINSTANCE module, ULONG id, LangRes)
{
    if (module == nullptr)
        return 0;
    int length = 0;
    try
    {
        // A text that fills the buffer may have been cut.
        for (int capacity = FirstTextCapacity;; capacity *= 2)
        {
            const auto buffer = TryBuffer(static_cast<size_t>(capacity));
            if (!buffer)
                return length;
            length = ::LoadStringW(module, id, buffer.get(), capacity);
            if (length + 1 == capacity)
                continue;
            assign(buffer.get());
            return length;
        }
    }
    catch (...)
    {
        return length;
    }
}

int COrlString::LoadWarningMessage(unsigned int id)
{
    COrlTraceScope scope(L"COrlString::LoadWarningMessage");
    return LoadCommonResString(id & TextIdMask);
}

int COrlString::LoadWarningMessage(unsigned int id, std::vector<COrlString> args)
{
    const int length = LoadWarningMessage(id);
    FormatWarningMessage(std::move(args));
    return length;
}
