// COrlString: conversion between wide text and code pages.

#include "Common/Src/OrlString.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

namespace
{

constexpr int LocaleDataCapacity = 16;

template <class Unit>
Unit* TryZeroed(int count)
{
    return new (std::nothrow) Unit[static_cast<size_t>(count)]();
}

// `convert(buffer, room)` asks the platform; with no buffer and no room it answers the room that is needed.
template <class Unit, class Convert>
int ConvertInto(int srcLength, Unit* dst, const Convert& convert)
{
    if (dst == nullptr || srcLength == 0 || srcLength < -1)
        return 0;
    const int needed = convert(nullptr, 0);
    if (needed <= 0)
        return needed;
    const std::unique_ptr<Unit[]> converted(TryZeroed<Unit>(needed));
    if (!converted)
        return 0;
    int count = convert(converted.get(), needed);
    if (count <= 0)
        return count;
    if (srcLength != -1)
        count = std::min(count, srcLength);
    std::copy_n(converted.get(), count, dst);
    dst[count - 1] = 0;
    return count;
}

template <class Unit, class Convert>
int ConvertIntoNew(Unit*& dst, const Convert& convert)
{
    if (dst != nullptr)
        return 0;
    const int needed = convert(nullptr, 0);
    if (needed <= 0)
        return needed;
    dst = TryZeroed<Unit>(needed);
    return dst != nullptr ? convert(dst, needed) : 0;
}

template <class Unit>
void Free(Unit*& buffer)
{
    delete[] buffer;
    buffer = nullptr;
}

} // namespace

int COrlString::OrlMultiByteToWideChar(unsigned int codePage, ULONG flags, const char* src, int srcLength, wchar_t* dst,
                                       int)
{
    return ConvertInto(srcLength, dst,
                       [=](wchar_t* buffer, int room)
                       { return MultiByteToWideChar(codePage, flags, src, srcLength, buffer, room); });
}

int COrlString::OrlWideCharToMultiByte(unsigned int codePage, ULONG flags, const wchar_t* src, int srcLength, char* dst,
                                       int, const char* defaultChar, int* usedDefault)
{
    return ConvertInto(
        srcLength, dst,
        [=](char* buffer, int room)
        { return WideCharToMultiByte(codePage, flags, src, srcLength, buffer, room, defaultChar, usedDefault); });
}

int COrlString::OrlMultiByteToWideChar_alloc(unsigned int codePage, ULONG flags, const char* src, wchar_t*& dst)
{
    return ConvertIntoNew(dst, [=](wchar_t* buffer, int room)
                          { return MultiByteToWideChar(codePage, flags, src, -1, buffer, room); });
}

int COrlString::OrlWideCharToMultiByte_alloc(unsigned int codePage, ULONG flags, const wchar_t* src, char*& dst,
                                             const char* defaultChar, int* usedDefault)
{
    return ConvertIntoNew(
        dst, [=](char* buffer, int room)
        { return WideCharToMultiByte(codePage, flags, src, -1, buffer, room, defaultChar, usedDefault); });
}

void COrlString::OrlMultiByteToWideChar_dealloc(wchar_t*& p)
{
    Free(p);
}

void COrlString::OrlWideCharToMultiByte_dealloc(char*& p)
{
    Free(p);
}

extern "C" unsigned int GetCodePage(ULONG localeId)
{
    if (localeId == 0)
        return GetACP();
    wchar_t page[LocaleDataCapacity] = {};
    GetLocaleInfoW(localeId, LOCALE_IDEFAULTANSICODEPAGE, page, LocaleDataCapacity);
    return static_cast<unsigned int>(_wtoi(page));
}
