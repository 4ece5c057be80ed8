// rc2cpp SCRIPT.rc OUTPUT.cpp: turns the string tables of a resource script into the source of a resource library, for
// systems whose libraries have no resources of their own.
#include "winport/portable/Utf8.h"
#include "winport/tools/RcFile.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>

namespace
{

// A wide literal's body: plain where it can be, else by number.
std::string Literal(const std::wstring& text)
{
    std::string literal;
    for (const wchar_t c : text)
    {
        char escape[16];
        const unsigned int code = static_cast<unsigned int>(c);
        if (code >= 0xA0)
            std::snprintf(escape, sizeof escape, "\\U%08x", code);
        else if (code < 0x20 || code >= 0x7F || c == L'"' || c == L'\\' || c == L'?')
            std::snprintf(escape, sizeof escape, "\\%03o", code);
        else
            std::snprintf(escape, sizeof escape, "%c", static_cast<char>(c));
        literal += escape;
    }
    return literal;
}

std::string Source(const RcTexts& texts, const std::string& script)
{
    std::string source = "// The texts of " + script +
                         ", made from it.\n#include \"winport/src/StringTable.h\"\n\n#include <iterator>\n\n"
                         "namespace\n{\n\nconstexpr winport::StringEntry Entries[] = {\n";
    for (const auto& [id, bytes] : texts)
    {
        const std::wstring text = orl::FromUtf8(bytes);
        source +=
            "    {" + std::to_string(id) + ", " + std::to_string(text.size()) + ", L\"" + Literal(text) + "\"},\n";
    }
    return source + "};\n\n} // namespace\n\n"
                    "extern \"C\" __attribute__((visibility(\"default\"))) const winport::StringTable OrlStringTable;\n"
                    "extern \"C\" const winport::StringTable OrlStringTable = {std::size(Entries), Entries};\n";
}

void Convert(const std::filesystem::path& script, const std::filesystem::path& output)
{
    const RcTexts texts = ReadRcFile(script);
    if (texts.empty())
        throw std::runtime_error(script.string() + ": it has no texts");
    std::ofstream stream(output, std::ios::binary);
    stream << Source(texts, script.filename().string());
    stream.close();
    if (!stream)
        throw std::runtime_error(output.string() + ": cannot be written");
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
    {
        std::fputs("usage: rc2cpp SCRIPT.rc OUTPUT.cpp\n", stderr);
        return 2;
    }
    try
    {
        Convert(arguments[1], arguments[2]);
        return 0;
    }
    catch (const std::exception& problem)
    {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}
