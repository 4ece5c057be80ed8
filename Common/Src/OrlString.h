// COrlString: the owned wide text that every name, key, path and message is held in.
#pragma once

#include "Common/Src/OrlExport.h"

#include <windows.h>

#include <string>
#include <vector>

// A standard wide string with the library's operations and no data of its own: value, length, capacity and ownership
// are the base's. Operations that take a plain pointer read up to the first zero; a null pointer counts as empty text.
// Character classes are ASCII's and consult no locale. One thread uses an instance at a time.
//
// Texts that do not fit in memory throw what the standard string throws.
class ORL_COMMON_API COrlString : public std::wstring
{
public:
    // Which library the private text loader reads from.
    enum LangRes
    {
        CommonResources = 0
    };

    COrlString() = default;
    COrlString(const wchar_t* text);
    COrlString(wchar_t* const text);
    COrlString(const std::wstring& text);
    COrlString(std::wstring&& text) noexcept;
    // The number as decimal text, see the assignment.
    COrlString(const int& number);
    COrlString(wchar_t) = delete; // would be taken for a number
    COrlString(const COrlString& other) = default;
    COrlString(COrlString&& other) noexcept = default;
    ~COrlString() = default;

    COrlString& operator=(const COrlString& other) = default;
    COrlString& operator=(COrlString&& other) noexcept = default;
    COrlString& operator=(const std::wstring& text);
    COrlString& operator=(const wchar_t* text);
    // The number as signed decimal text of at most nine characters, the sign included. A longer one is reported to the
    // invalid-parameter handler and leaves the string empty.
    COrlString& operator=(const int& number);
    COrlString& operator=(wchar_t) = delete;

    // The characters, zero-terminated; valid until the string changes.
    operator const wchar_t*() const { return c_str(); }

    // Length 0; the capacity stays.
    void ClearString();
    // The same text on the heap, the caller's to delete.
    COrlString* Copy() const;
    bool IsEmpty() const { return empty(); }
    ULONGLONG Length() const { return size(); }

    // Equality and order are those of the code units.
    bool operator==(const COrlString& other) const;
    bool operator==(const std::wstring& other) const;
    bool operator==(const wchar_t* text) const;
    bool operator<(const COrlString& other) const;
    COrlString operator+(const COrlString& other) const;
    COrlString operator+(const std::wstring& other) const;
    COrlString operator+(std::wstring&& other) const;
    COrlString operator+(const wchar_t* text) const;
    COrlString operator+(wchar_t character) const;

    // Equality without regard to case, as the runtime lower-cases.
    bool CompareI(COrlString other) const;
    // True when a sorts strictly before b. The name says the opposite; sorting depends on the answer.
    static bool IsStrGreater(COrlString a, COrlString b);
    // True when both lists hold the same strings, each as often, in any order.
    static bool CompareVectors(std::vector<COrlString> a, std::vector<COrlString> b, bool caseSensitive);

    static bool IsAlphaChar(wchar_t character);
    static bool IsNumericChar(wchar_t character);
    static bool IsHexadecimal(wchar_t character);
    // 0x20 to 0x7E, neither letter nor digit: the space is a symbol.
    static bool IsSymbolicChar(wchar_t character);
    // Digits only, at least one.
    bool IsNumeric() const;
    // Hexadecimal digits only; true of the empty string.
    bool IsStringHexadecimal() const;
    // False when a class occurs whose bit is clear: 0x1 letters, 0x2 digits, 0x4 symbols. Characters of no class are
    // never objected to.
    bool IsStringType(ULONG allowed) const;
    // True when every code lies between both bounds, which are included; true of the empty string.
    bool IsWithinAsciiRange(unsigned int low, unsigned int high) const;

    // Keep the first or the last n characters; nothing happens when the string is shorter.
    void Left(unsigned int n);
    void Right(unsigned int n);
    void MakeLower();
    void MakeUpper();
    // Only the space is trimmed, never a tab or a line end.
    void Trim();
    void TrimLeft();
    void TrimRight();
    // Cuts at each separator. A text without one yields no piece and false; a separator at the end adds no empty piece.
    bool Split(char separator, std::vector<COrlString>& pieces) const;

    // Formats as the wide printf of Windows (%s is a wide text). Answers the number of characters, or -1 when they were
    // cut to 1023 or the format was refused; 0 with the string unchanged when there is no memory. Never throws.
    int FormatString(const wchar_t* format, ...);
    // Puts each argument into the first "%s" of the whole current text, which an earlier argument may have brought;
    // arguments that find none are appended, each on a line of its own.
    void FormatWarningMessage(std::vector<COrlString> args);
    // Replaces the string with a text of the language-resource library. Answers its length, 0 when the text is missing,
    // -1 with the string unchanged when the library cannot be loaded.
    int LoadCommonResString(unsigned int id);
    // Replaces the string with a text of the given module. Answers its length; 0 when there is no module (the string
    // stays) or no such text (the string becomes empty). Never throws.
    int LoadStringW(HINSTANCE module, ULONG id);
    // As LoadCommonResString with the low 24 bits of the id: callers keep flags in the high byte.
    int LoadWarningMessage(unsigned int id);
    int LoadWarningMessage(unsigned int id, std::vector<COrlString> args);

    // Code-page conversion. A source length of -1 means a zero-terminated source, whose terminator is converted too.
    //
    // The plain forms answer the units written, 0 when dst is null, srcLength is 0 or below -1, or the conversion
    // fails. dstSize is not consulted: the caller gives room for the whole result, at most srcLength units when a
    // length is given. The last unit written is always the terminator: with an explicit length it takes the place of
    // the last character.
    static int OrlMultiByteToWideChar(unsigned int codePage, ULONG flags, const char* src, int srcLength, wchar_t* dst,
                                      int dstSize);
    static int OrlWideCharToMultiByte(unsigned int codePage, ULONG flags, const wchar_t* src, int srcLength, char* dst,
                                      int dstSize, const char* defaultChar, int* usedDefault);
    // The _alloc forms convert a zero-terminated source into a buffer that the matching _dealloc frees. A dst that is
    // not null is left alone, with the answer 0.
    static int OrlMultiByteToWideChar_alloc(unsigned int codePage, ULONG flags, const char* src, wchar_t*& dst);
    static int OrlWideCharToMultiByte_alloc(unsigned int codePage, ULONG flags, const wchar_t* src, char*& dst,
                                            const char* defaultChar, int* usedDefault);
    // Free the buffer, if there is one, and null the pointer.
    static void OrlMultiByteToWideChar_dealloc(wchar_t*& p);
    static void OrlWideCharToMultiByte_dealloc(char*& p);

private:
    int LoadStringW(HINSTANCE module, ULONG id, LangRes resources);
};

// The ANSI code page of a locale; of the system when the locale is 0.
extern "C" ORL_COMMON_API unsigned int GetCodePage(ULONG localeId);
