// Reading MOF from files and from memory.
#include "wbem/MofReader.h"

#include "wbem/MofParser.h"
#include "wbem/MofSource.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace wbem
{

namespace
{

// One reading: files with what they include. Throws MofError.
class Reader
{
public:
    void ReadRoot(const std::filesystem::path& file)
    {
        std::wstring reason;
        const auto bytes = ReadMofBytesOf(file, reason);
        if (!bytes)
            throw MofError{FileName(file), 0, 0, std::move(reason)};
        const std::uint32_t index = AddRoot(FileName(file));
        m_open.push_back(Identity(file));
        ReadContent(DecodeMof(*bytes), index, {}, file.parent_path());
        m_open.pop_back();
    }

    void ReadText(std::wstring_view text, std::wstring_view name, const std::filesystem::path& folder)
    {
        m_includes = !folder.empty();
        ReadContent(text, AddRoot(std::wstring(name)), {}, folder);
    }

    MofDocument Finish()
    {
        const MofDocument& document = m_reading.document;
        for (const auto& [alias, position] : m_reading.aliasUses)
        {
            if (!document.FindAlias(alias, position))
            {
                throw MofError{document.files[position.file].name, position.line, position.column,
                               L"the alias " + alias + L" is not declared"};
            }
        }
        return std::move(m_reading.document);
    }

private:
    static std::filesystem::path Identity(const std::filesystem::path& file)
    {
        std::error_code error;
        auto identity = std::filesystem::weakly_canonical(file, error);
        return error ? file : identity;
    }

    std::uint32_t AddFile(std::wstring name, std::uint32_t root)
    {
        m_reading.document.files.push_back({std::move(name), root});
        return static_cast<std::uint32_t>(m_reading.document.files.size() - 1);
    }

    std::uint32_t AddRoot(std::wstring name)
    {
        const auto index = static_cast<std::uint32_t>(m_reading.document.files.size());
        m_reading.document.aliases.resize(index + 1);
        return AddFile(std::move(name), index);
    }

    void ReadContent(std::wstring_view text, std::uint32_t index, const std::wstring& nameSpace,
                     const std::filesystem::path& folder)
    {
        const MofInclude include = [&](const std::wstring& name, const std::wstring& current)
        { ReadInclude(folder / FilePath(name), m_reading.document.files[index].root, current); };
        try
        {
            ParseMof(text, index, nameSpace, m_reading, include);
        }
        catch (MofFault& fault)
        {
            throw MofError{m_reading.document.files[index].name, fault.line, fault.column, std::move(fault.reason)};
        }
    }

    void ReadInclude(const std::filesystem::path& file, std::uint32_t root, const std::wstring& nameSpace)
    {
        const std::wstring name = FileName(file);
        if (!m_includes)
            throw MofIncludeFault{L"\"" + name + L"\" cannot be included here: the text has no folder"};
        if (m_open.size() > kMaxMofIncludeDepth)
        {
            throw MofIncludeFault{L"\"" + name + L"\" is included deeper than " + std::to_wstring(kMaxMofIncludeDepth) +
                                  L" levels"};
        }
        if (m_reading.document.files.size() >= kMaxMofFiles)
        {
            throw MofIncludeFault{L"\"" + name + L"\" cannot be included: more than " + std::to_wstring(kMaxMofFiles) +
                                  L" files"};
        }
        std::filesystem::path identity = Identity(file);
        if (std::find(m_open.begin(), m_open.end(), identity) != m_open.end())
            throw MofIncludeFault{L"\"" + name + L"\" includes itself"};
        std::wstring reason;
        const auto bytes = ReadMofBytesOf(file, reason);
        if (!bytes)
            throw MofIncludeFault{L"\"" + name + L"\" cannot be included: " + reason};
        m_open.push_back(std::move(identity));
        ReadContent(DecodeMof(*bytes), AddFile(name, root), nameSpace, file.parent_path());
        m_open.pop_back();
    }

    MofReading m_reading;
    std::vector<std::filesystem::path> m_open; // the file being read and those that lead to it
    bool m_includes = true;
};

template <class Read>
MofResult Answer(Read read)
{
    try
    {
        Reader reader;
        read(reader);
        return reader.Finish();
    }
    catch (MofError& error)
    {
        return std::move(error);
    }
}

} // namespace

std::wstring MofError::Text() const
{
    const std::wstring place =
        line == 0 ? std::wstring() : L":" + std::to_wstring(line) + L":" + std::to_wstring(column);
    return file + place + L": " + reason;
}

MofResult ReadMofFiles(std::span<const std::filesystem::path> files)
{
    return Answer(
        [files](Reader& reader)
        {
            for (const std::filesystem::path& file : files)
                reader.ReadRoot(file);
        });
}

MofResult ReadMofFile(const std::filesystem::path& file)
{
    return ReadMofFiles({&file, 1});
}

MofResult ReadMofText(std::wstring_view text, std::wstring_view name, const std::filesystem::path& folder)
{
    return Answer([&](Reader& reader) { reader.ReadText(text, name, folder); });
}

MofResult ReadMofBytes(std::string_view bytes, std::wstring_view name, const std::filesystem::path& folder)
{
    return ReadMofText(DecodeMof(bytes), name, folder);
}

} // namespace wbem
