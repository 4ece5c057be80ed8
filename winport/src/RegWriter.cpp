// Writing a registry file.
#include "winport/portable/Utf8.h"
#include "winport/src/RegData.h"
#include "winport/src/RegFile.h"

namespace winport
{

namespace
{

void WriteKey(const RegKey& key, const std::wstring& path, std::string& text)
{
    // A key that only leads to others is made by them.
    if (!key.values.empty() || !key.comment.empty() || key.keys.empty())
    {
        text += "\n" + orl::ToUtf8(key.comment) + "[" + orl::ToUtf8(path) + "]\n";
        for (const auto& [name, value] : key.values)
            text += orl::ToUtf8(value.comment) + (name.empty() ? "@" : WriteQuoted(value.name)) + "=" +
                    WriteRegData(value) + "\n";
    }
    for (const auto& [name, child] : key.keys)
        WriteKey(child, path + L"\\" + child.name, text);
}

} // namespace

std::string WriteRegFile(const RegFile& file)
{
    std::string text = "Windows Registry Editor Version 5.00\n";
    for (const auto& [name, root] : file.root.keys)
        WriteKey(root, root.name, text);
    if (!file.comment.empty())
        text += "\n" + orl::ToUtf8(file.comment);
    return text;
}

} // namespace winport
