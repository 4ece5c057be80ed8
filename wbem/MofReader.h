// Reading MOF from files and from memory.
#pragma once

#include "wbem/Mof.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace wbem
{

inline constexpr std::size_t kMaxMofFileSize = std::size_t{64} << 20; // bytes
inline constexpr std::size_t kMaxMofFiles = 5000;                     // of one reading, includes counted each time
inline constexpr std::size_t kMaxMofIncludeDepth = 32;
inline constexpr std::size_t kMaxMofNesting = 64; // instances and arrays inside values

struct MofError
{
    std::wstring file;
    std::uint32_t line = 0; // from 1; 0 when the file could not be read at all
    std::uint32_t column = 0;
    std::wstring reason;

    // For people: "schema/Hba.mof:12:5: a ';' is missing after the class".
    std::wstring Text() const;

    bool operator==(const MofError&) const = default;
};

// The document, or the first error.
class MofResult
{
public:
    MofResult(MofDocument document) : m_outcome(std::move(document)) {}
    MofResult(MofError error) : m_outcome(std::move(error)) {}

    explicit operator bool() const noexcept { return m_outcome.index() == 0; }
    const MofDocument& operator*() const& { return std::get<0>(m_outcome); }
    MofDocument& operator*() & { return std::get<0>(m_outcome); }
    MofDocument&& operator*() && { return std::get<0>(std::move(m_outcome)); }
    const MofDocument* operator->() const { return &std::get<0>(m_outcome); }
    MofDocument* operator->() { return &std::get<0>(m_outcome); }
    const MofError& Error() const { return std::get<1>(m_outcome); }

private:
    std::variant<MofDocument, MofError> m_outcome;
};

// Files in UTF-8 or UTF-16 with or without a byte order mark, one document in the given order. An include is relative
// to the file that has it; a namespace pragma holds to the end of its file. Classes may be used before, and in other
// files than, they are declared; an alias must be declared somewhere in the file of this list that uses it, or in what
// it includes.
MofResult ReadMofFiles(std::span<const std::filesystem::path> files);
MofResult ReadMofFile(const std::filesystem::path& file);

// Text in memory: includes are refused unless a folder is given.
MofResult ReadMofText(std::wstring_view text, std::wstring_view name = L"text",
                      const std::filesystem::path& folder = {});
// The same from bytes in any encoding that a file may have.
MofResult ReadMofBytes(std::string_view bytes, std::wstring_view name = L"text",
                       const std::filesystem::path& folder = {});

} // namespace wbem
