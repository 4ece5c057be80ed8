// The text form of the registry: what is read, what is refused and why, and what is written.
#include "winport/src/RegFile.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{

using winport::ParseRegFile;
using winport::RegFile;
using winport::RegKey;
using winport::RegValue;

const std::string Header = "Windows Registry Editor Version 5.00\n";
constexpr wchar_t TestKey[] = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\T";

std::string WithKey(const std::string& lines)
{
    return Header + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n" + lines;
}

const RegValue* ValueOf(const RegFile& file, const wchar_t* name, const wchar_t* path = TestKey)
{
    const RegKey* key = file.root.Find(path);
    if (!key)
        return nullptr;
    const auto value = key->values.find(std::wstring_view(name));
    return value == key->values.end() ? nullptr : &value->second;
}

std::wstring TextOf(const RegFile& file, const wchar_t* name, const wchar_t* path = TestKey)
{
    const RegValue* value = ValueOf(file, name, path);
    if (!value)
        return L"(none)";
    std::wstring text(value->data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value->data.data(), text.size() * sizeof(wchar_t));
    return text.empty() ? text : text.substr(0, text.size() - 1);
}

// All damage as "line: reason" lines.
std::string DamageOf(const RegFile& file)
{
    std::string text;
    for (const winport::RegDamage& damage : file.damage)
        text += std::to_string(damage.line) + ": " + damage.reason + "\n";
    return text;
}

std::string Utf16(const std::string& ascii, bool bigEndian)
{
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii)
    {
        bytes += bigEndian ? '\0' : c;
        bytes += bigEndian ? c : '\0';
    }
    return bytes;
}

TEST(RegFile, TextsNumbersAndBytesAreRead)
{
    const RegFile file = ParseRegFile(WithKey("@=\"default\"\n"
                                              "\"Name\"=\"C:\\\\dir\\\\\\\"x\\\"\"\n"
                                              "\"TRACE\"=dword:0000000a\n"
                                              "\"Bytes\"=hex:01,ff, 0 ,\\\n  a5\n"
                                              "\"None\"=hex(0):\n"));
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(TextOf(file, L""), L"default");
    EXPECT_EQ(TextOf(file, L"name"), L"C:\\dir\\\"x\"");
    ASSERT_NE(ValueOf(file, L"trace"), nullptr);
    EXPECT_EQ(ValueOf(file, L"trace")->type, REG_DWORD);
    EXPECT_EQ(ValueOf(file, L"trace")->data, (std::vector<BYTE>{10, 0, 0, 0}));
    EXPECT_EQ(ValueOf(file, L"Bytes")->type, REG_BINARY);
    EXPECT_EQ(ValueOf(file, L"Bytes")->data, (std::vector<BYTE>{0x01, 0xFF, 0x00, 0xA5}));
    EXPECT_EQ(ValueOf(file, L"None")->type, REG_NONE);
    EXPECT_TRUE(ValueOf(file, L"None")->data.empty());
}

TEST(RegFile, TextsInBytesAreUtf16InVersion5)
{
    const RegFile file = ParseRegFile(WithKey("\"E\"=hex(2):25,00,41,00,e4,00,00,00\n"
                                              "\"S\"=hex(1):3d,d8,00,de,00,00\n"));
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(ValueOf(file, L"E")->type, REG_EXPAND_SZ);
    EXPECT_EQ(TextOf(file, L"E"), L"%A\u00e4");
    EXPECT_EQ(TextOf(file, L"S"), L"\U0001F600");
}

TEST(RegFile, Version4HasAnsiTexts)
{
    const RegFile file = ParseRegFile("REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\r\n"
                                      "\"A\"=\"\xE4\"\r\n\"B\"=hex(2):25,80,00\r\n\"C\"=\"\xC3\xA4\"\r\n");
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(TextOf(file, L"A"), L"\u00e4");
    EXPECT_EQ(TextOf(file, L"B"), L"%\u20ac");
    EXPECT_EQ(TextOf(file, L"C"), L"\u00e4");
}

TEST(RegFile, EveryEncodingGivesTheSame)
{
    const std::string text = WithKey("\"A\"=\"x\"\n");
    for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, Utf16(text, false), Utf16(text, true)})
    {
        const RegFile file = ParseRegFile(bytes);
        EXPECT_EQ(DamageOf(file), "");
        EXPECT_EQ(TextOf(file, L"A"), L"x");
    }
}

TEST(RegFile, Utf8TextsHaveAllCharacters)
{
    const RegFile file = ParseRegFile(WithKey("\"\xC3\x84\"=\"\xF0\x9F\x98\x80\"\n"));
    EXPECT_EQ(TextOf(file, L"\u00e4"), L"\U0001F600");
}

TEST(RegFile, LineEndsBlanksAndCommentsDoNotMatter)
{
    const RegFile file = ParseRegFile("Windows Registry Editor Version 5.00\r\n\r\n; a comment\r\n"
                                      "  [HKEY_LOCAL_MACHINE\\SOFTWARE\\T]  \r\n\t\"A\" = \"x\" ; why\r\n\"B\"=\"y\"");
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(TextOf(file, L"A"), L"x");
    EXPECT_EQ(TextOf(file, L"B"), L"y");
}

TEST(RegFile, LaterLinesReplaceAndRemove)
{
    const RegFile file = ParseRegFile(WithKey("\"A\"=\"x\"\n\"a\"=\"y\"\n\"B\"=\"z\"\n\"b\"=-\n"
                                              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\U]\n\"A\"=\"x\"\n"
                                              "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\U]\n"));
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(TextOf(file, L"A"), L"y");
    EXPECT_EQ(ValueOf(file, L"B"), nullptr);
    EXPECT_EQ(file.root.Find(L"HKEY_LOCAL_MACHINE\\SOFTWARE\\U"), nullptr);
}

TEST(RegFile, TheClassesLieBelowTheLocalMachine)
{
    const RegFile file = ParseRegFile(Header + "[HKEY_CLASSES_ROOT\\CLSID\\{X}]\n@=\"x\"\n");
    EXPECT_EQ(TextOf(file, L"", L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{X}"), L"x");
}

TEST(RegFile, AKeysNameMayHoldBrackets)
{
    const RegFile file = ParseRegFile(Header + "[HKEY_CURRENT_USER\\a]b[c]\n\"A\"=\"x\"\n");
    EXPECT_EQ(TextOf(file, L"A", L"HKEY_CURRENT_USER\\a]b[c"), L"x");
}

TEST(RegFile, AnEmptyFileIsAnEmptyRegistry)
{
    const RegFile file = ParseRegFile("");
    EXPECT_TRUE(file.root.keys.empty());
    EXPECT_EQ(DamageOf(file), "");
}

struct Damaged
{
    std::string lines;
    std::string damage;
};

// Each case stands below a key on line 2; the value "Good" behind it must still be there.
const Damaged DamagedValues[] = {
    {"garbage", "3: it is neither a key nor a value nor a comment\n"},
    {"\"A=\"x\"", "3: there is no '=' behind the value's name\n"},
    {"\"A", "3: the value's name has no closing quote\n"},
    {"\"A\\q\"=\"x\"", "3: the value's name has a single backslash before 'q': a backslash is written twice\n"},
    {"\"A\"", "3: there is no '=' behind the value's name\n"},
    {"@\"x\"", "3: there is no '=' behind the value's name\n"},
    {"\"A\"=", "3: the data is neither a text in quotes nor dword: nor hex:\n"},
    {"\"A\"=x", "3: the data is neither a text in quotes nor dword: nor hex:\n"},
    {"\"A\"=\"x", "3: the text has no closing quote\n"},
    {"\"A\"=\"x\\", "3: the text has no closing quote\n"},
    {"\"A\"=\"C:\\dir\"", "3: the text has a single backslash before 'd': a backslash is written twice\n"},
    {"\"A\"=\"x\"y", "3: characters follow the data\n"},
    {"\"A\"=dword:", "3: the dword is not one to eight hexadecimal digits\n"},
    {"\"A\"=dword:123456789", "3: the dword is not one to eight hexadecimal digits\n"},
    {"\"A\"=dword:0x10", "3: characters follow the data\n"},
    {"\"A\"=dword:zz", "3: the dword is not one to eight hexadecimal digits\n"},
    {"\"A\"=hex", "3: there is no ':' behind \"hex\"\n"},
    {"\"A\"=hex(:00", "3: the type behind \"hex\" is not a hexadecimal number in parentheses\n"},
    {"\"A\"=hex(2:00", "3: the type behind \"hex\" is not a hexadecimal number in parentheses\n"},
    {"\"A\"=hex:0g", "3: there is no comma between two bytes\n"},
    {"\"A\"=hex:gg", "3: a byte is not one or two hexadecimal digits\n"},
    {"\"A\"=hex:123", "3: there is no comma between two bytes\n"},
    {"\"A\"=hex:01,,02", "3: a byte is not one or two hexadecimal digits\n"},
    {"\"A\"=hex(2):41,00,42", "3: the text's bytes end inside a character\n"},
    {"\"A\"=hex:01,\\\n  zz", "3: a byte is not one or two hexadecimal digits\n"},
    {"\xFF\xFE", "3: it is not UTF-8\n"},
    {std::string("\"A\"=\"x\0y\"", 9), "3: it holds a zero character\n"},
    {"[HKEY_LOCAL_MACHINE\\X\n\"A\"=\"x\"", "3: the key has no closing ']'\n"},
    {"[HKEY_LOCAL_MACHINE\\X]y\n\"A\"=\"x\"", "3: characters follow the key's closing ']'\n"},
    {"[HKEY_NOWHERE\\X]\n\"A\"=\"x\"", "3: there is no root key \"HKEY_NOWHERE\"\n"},
    {"[]\n\"A\"=\"x\"", "3: there is no root key \"\"\n"},
    {"[HKEY_LOCAL_MACHINE\\\\X]\n\"A\"=\"x\"", "3: a key's name is empty\n"},
    {"[HKEY_LOCAL_MACHINE\\" + std::string(256, 'k') + "]\n\"A\"=\"x\"",
     "3: a key's name is longer than 255 characters\n"},
    {"\"" + std::string(16384, 'v') + "\"=\"x\"", "3: the value's name is longer than 16383 characters\n"},
    {"\"A\"=\"" + std::string(1 << 20, 'x') + "\"", "3: the data is longer than 1 MiB\n"},
};

TEST(RegFile, WhatCannotBeReadIsNamedAndLeftOutAndNothingElse)
{
    for (const Damaged& one : DamagedValues)
    {
        const RegFile file =
            ParseRegFile(WithKey(one.lines + "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n\"Good\"=\"kept\"\n"));
        EXPECT_EQ(DamageOf(file), one.damage) << one.lines.substr(0, 60);
        EXPECT_EQ(TextOf(file, L"Good"), L"kept") << one.lines.substr(0, 60);
        EXPECT_EQ(file.root.Find(TestKey)->values.size(), 1u) << one.lines.substr(0, 60);
        EXPECT_EQ(file.root.keys.size(), 1u) << one.lines.substr(0, 60);
    }
}

TEST(RegFile, AKeyThatIsTooDeepIsLeftOut)
{
    std::string path = "HKEY_LOCAL_MACHINE";
    for (int depth = 0; depth < 512; ++depth)
        path += "\\k";
    EXPECT_EQ(DamageOf(ParseRegFile(Header + "[" + path + "]\n")), "");
    EXPECT_EQ(DamageOf(ParseRegFile(Header + "[" + path + "\\k]\n")), "2: the key lies deeper than 512 levels\n");
}

TEST(RegFile, AValueBeforeAnyKeyIsLeftOut)
{
    EXPECT_EQ(DamageOf(ParseRegFile(Header + "\"A\"=\"x\"\n")), "2: the value stands outside any key\n");
}

TEST(RegFile, AFileThatEndsInsideAValueLosesThatValueOnly)
{
    const RegFile file = ParseRegFile(WithKey("\"Good\"=\"kept\"\n\"A\"=hex:01,\\"));
    EXPECT_EQ(DamageOf(file), "4: the file ends inside the value\n");
    EXPECT_EQ(TextOf(file, L"Good"), L"kept");
    EXPECT_EQ(ValueOf(file, L"A"), nullptr);
}

TEST(RegFile, AHalfCharacterOfUtf16IsNamed)
{
    std::string bytes = Utf16(WithKey("\"A\"=\"x\"\n\"B\"=\"y\""), false);
    bytes += 'z';
    const RegFile file = ParseRegFile(bytes);
    EXPECT_EQ(DamageOf(file), "4: it is not UTF-16\n");
    EXPECT_EQ(TextOf(file, L"A"), L"x");
}

TEST(RegFile, AnotherHeaderMeansAnotherKindOfFile)
{
    const char* reason =
        "1: it is no registry file: it must begin with \"Windows Registry Editor Version 5.00\" or \"REGEDIT4\"\n";
    for (const char* text :
         {"\n", "Windows Registry Editor Version 6.00\n[HKEY_LOCAL_MACHINE\\X]\n", "[HKEY_LOCAL_MACHINE\\X]\n",
          "\x7F"
          "ELF"})
    {
        const RegFile file = ParseRegFile(text);
        EXPECT_EQ(DamageOf(file), reason) << text;
        EXPECT_TRUE(file.root.keys.empty());
    }
}

TEST(RegFile, AFileThatIsTooLargeIsNotRead)
{
    const RegFile file = ParseRegFile(std::string((16u << 20) + 1, ' '));
    EXPECT_EQ(DamageOf(file), "0: it is larger than 16 MiB\n");
}

TEST(RegFile, DamageIsCountedPastTheFirstHundred)
{
    std::string lines;
    for (int i = 0; i < 250; ++i)
        lines += "bad\n";
    const RegFile file = ParseRegFile(WithKey(lines));
    ASSERT_EQ(file.damage.size(), 101u);
    EXPECT_EQ(file.damage[99].line, 102u);
    EXPECT_EQ(file.damage[100].line, 0u);
    EXPECT_EQ(file.damage[100].reason, "and 150 more places");
}

TEST(RegFile, WritingGivesTheTextThatWasRead)
{
    const std::string whole = Header + "\n; the agents\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Agents\\Fcoelink]\n"
                                       "@=\"default\"\n; which one\n\"Backend\"=\"sysfs\"\n"
                                       "\"Bytes\"=hex:01,ff\n\"Dir\"=\"C:\\\\x \\\"y\\\"\"\n"
                                       "\"Expand\"=hex(2):25,00,00,00\n\"Odd\"=hex(4):01\n\"TRACE\"=dword:0000000a\n"
                                       "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Empty]\n\n; the end\n";
    EXPECT_EQ(winport::WriteRegFile(ParseRegFile(whole)), whole);
}

TEST(RegFile, ATextThatNoLineHoldsIsWrittenInBytes)
{
    RegFile file;
    RegKey& key = file.root.Make(TestKey);
    RegValue value;
    value.name = L"A";
    value.type = REG_SZ;
    const wchar_t text[] = L"a\nb";
    value.data.resize(sizeof text);
    std::memcpy(value.data.data(), text, sizeof text);
    key.values[L"A"] = value;
    const std::string written = winport::WriteRegFile(file);
    EXPECT_EQ(written, Header + "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n\"A\"=hex(1):61,00,0a,00,62,00,00,00\n");
    EXPECT_EQ(ValueOf(ParseRegFile(written), L"A")->data, value.data);
}

TEST(RegFile, ReadingTakesTimeInProportionToTheFile)
{
    // One value of very many short lines, and one key of very many values: neither may take the square.
    std::string lines = "\"A\"=hex:00";
    for (int i = 0; i < 200000; ++i)
        lines += ",\\\n00";
    lines += "\n";
    for (int i = 0; i < 100000; ++i)
        lines += "\"V" + std::to_string(i) + "\"=dword:1\n";
    const RegFile file = ParseRegFile(WithKey(lines));
    EXPECT_EQ(DamageOf(file), "");
    EXPECT_EQ(ValueOf(file, L"A")->data.size(), 200001u);
    EXPECT_EQ(file.root.Find(TestKey)->values.size(), 100001u);
}

} // namespace
