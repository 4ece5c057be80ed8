// Reading a registry file.
#include "winport/src/RegData.h"
#include "winport/src/RegFile.h"
#include "winport/src/RegLines.h"

#include "winport/portable/Utf8.h"

#include <algorithm>
#include <utility>

namespace winport
{

namespace
{

constexpr std::wstring_view Header5 = L"Windows Registry Editor Version 5.00";
constexpr std::wstring_view Header4 = L"REGEDIT4";
constexpr std::wstring_view Roots[] = {L"HKEY_LOCAL_MACHINE", L"HKEY_CURRENT_USER", L"HKEY_USERS",
                                       L"HKEY_CURRENT_CONFIG"};
constexpr std::wstring_view ClassesRoot = L"HKEY_CLASSES_ROOT";

std::wstring_view Trim(std::wstring_view text)
{
    const size_t begin = text.find_first_not_of(L" \t");
    if (begin == std::wstring_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(L" \t") + 1 - begin);
}

class Parser
{
public:
    explicit Parser(std::string_view bytes) : m_lines(bytes) {}

    RegFile Run()
    {
        if (!ReadHeader())
            return std::move(m_file);
        std::wstring line;
        while (m_lines.Next(line))
        {
            // The values below a key that cannot be read go with it.
            if (m_isLeftOut && !Trim(line).starts_with(L'['))
                continue;
            m_start = m_lines.Number();
            try
            {
                if (m_lines.Fault())
                    throw RegFault{m_lines.Fault()};
                ReadLine(Trim(line));
            }
            catch (const RegFault& fault)
            {
                Report(fault.reason);
            }
        }
        m_file.comment = std::move(m_comment);
        if (m_unreported > 0)
            m_file.damage.push_back({0, "and " + std::to_string(m_unreported) + " more places"});
        return std::move(m_file);
    }

private:
    bool ReadHeader()
    {
        std::wstring line;
        if (!m_lines.Next(line))
            return false; // an empty file is an empty registry
        m_isVersion4 = Trim(line) == Header4;
        if (m_isVersion4)
            m_lines.AllowAnsi();
        if (m_isVersion4 || Trim(line) == Header5)
            return true;
        m_start = 1;
        Report("it is no registry file: it must begin with \"Windows Registry Editor Version 5.00\" or \"REGEDIT4\"");
        return false;
    }

    void ReadLine(std::wstring_view line)
    {
        if (line.empty())
            return;
        if (line[0] == L';')
            m_comment += std::wstring(line) + L'\n';
        else if (line[0] == L'[')
            ReadKey(line);
        else if (line[0] == L'"' || line[0] == L'@')
            ReadValue(line);
        else
            throw RegFault{"it is neither a key nor a value nor a comment"};
    }

    void ReadKey(std::wstring_view line)
    {
        m_key = nullptr;
        m_isLeftOut = true;
        const size_t end = line.rfind(L']');
        if (end == std::wstring_view::npos)
            throw RegFault{"the key has no closing ']'"};
        if (!Trim(line.substr(end + 1)).empty())
            throw RegFault{"characters follow the key's closing ']'"};
        const bool isRemoved = line.substr(1).starts_with(L'-');
        const std::wstring path = CheckedPath(line.substr(isRemoved ? 2 : 1, end - (isRemoved ? 2 : 1)));
        if (isRemoved)
        {
            m_file.root.Remove(path);
            return;
        }
        m_isLeftOut = false;
        m_key = &m_file.root.Make(path);
        m_key->comment += std::exchange(m_comment, {});
    }

    // The path below the root of all, with the classes where they lie.
    static std::wstring CheckedPath(std::wstring_view path)
    {
        if (path.ends_with(L'\\'))
            path.remove_suffix(1);
        const size_t rootEnd = std::min(path.find(L'\\'), path.size());
        const std::wstring_view root = path.substr(0, rootEnd);
        const std::wstring below(path.substr(rootEnd));
        CheckNames(below);
        if (EqualNames(root, ClassesRoot))
            return ClassesPath + below;
        const auto known = std::find_if(std::begin(Roots), std::end(Roots),
                                        [&](std::wstring_view name) { return EqualNames(name, root); });
        if (known == std::end(Roots))
            throw RegFault{"there is no root key \"" + orl::ToUtf8(root.substr(0, MaxKeyName)) + "\""};
        return std::wstring(*known) + below;
    }

    // Names behind a backslash each.
    static void CheckNames(std::wstring_view names)
    {
        size_t depth = 0;
        while (!names.empty())
        {
            names.remove_prefix(1);
            const size_t length = std::min(names.find(L'\\'), names.size());
            if (length == 0)
                throw RegFault{"a key's name is empty"};
            if (length > MaxKeyName)
                throw RegFault{"a key's name is longer than 255 characters"};
            if (++depth > MaxKeyDepth)
                throw RegFault{"the key lies deeper than 512 levels"};
            names.remove_prefix(length);
        }
    }

    void ReadValue(std::wstring_view line)
    {
        RegValue value;
        if (line[0] == L'@')
            line.remove_prefix(1);
        else
            value.name = ReadQuoted(line, "the value's name");
        if (value.name.size() > MaxValueName)
            throw RegFault{"the value's name is longer than 16383 characters"};
        line = Trim(line);
        if (!line.starts_with(L'='))
            throw RegFault{"there is no '=' behind the value's name"};
        const std::wstring data = WithContinuation(Trim(line.substr(1)));
        if (!m_key)
            throw RegFault{"the value stands outside any key"};
        Store(std::move(value), data);
    }

    void Store(RegValue value, std::wstring_view text)
    {
        if (text == L"-")
        {
            m_key->values.erase(value.name);
            return;
        }
        std::wstring trailing;
        ReadRegData(text, m_isVersion4, value, trailing);
        value.comment = std::exchange(m_comment, {});
        if (!trailing.empty())
            value.comment += trailing + L'\n';
        const std::wstring name = value.name;
        m_key->values.insert_or_assign(name, std::move(value));
    }

    // Bytes are written over several lines: each but the last ends with a backslash.
    std::wstring WithContinuation(std::wstring_view first)
    {
        std::wstring text(first);
        const bool isBytes = EqualNames(first.substr(0, 3), L"hex");
        std::wstring line;
        while (isBytes && text.ends_with(L'\\'))
        {
            text.pop_back();
            if (!m_lines.Next(line))
                throw RegFault{"the file ends inside the value"};
            if (m_lines.Fault())
                throw RegFault{m_lines.Fault()};
            text += Trim(line);
        }
        return text;
    }

    void Report(const std::string& reason)
    {
        if (m_file.damage.size() < MaxDamage)
            m_file.damage.push_back({m_start, reason});
        else
            ++m_unreported;
    }

    RegLines m_lines;
    RegFile m_file;
    bool m_isVersion4 = false;
    RegKey* m_key = nullptr;
    bool m_isLeftOut = false;
    std::wstring m_comment;
    // The line on which what is being read began.
    size_t m_start = 0;
    size_t m_unreported = 0;
};

} // namespace

RegFile ParseRegFile(std::string_view bytes)
{
    if (bytes.size() <= MaxFileSize)
        return Parser(bytes).Run();
    RegFile file;
    file.damage.push_back({0, "it is larger than 16 MiB"});
    return file;
}

} // namespace winport
