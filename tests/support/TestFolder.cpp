// Files of a test's own, and what the process's environment holds while it runs.

#include "tests/support/TestFolder.h"

#include "winport/portable/Utf8.h"

#include <windows.h>

#include <atomic>
#include <fstream>
#include <iterator>

namespace orl::test
{

namespace
{

// Longer values are no concern of tests.
constexpr DWORD ValueCapacity = 8192;

} // namespace

std::filesystem::path UniquePath(const std::string& prefix)
{
    static std::atomic<unsigned> count{0};
    const std::filesystem::path folder = ORL_TEST_TMP;
    std::filesystem::create_directories(folder);
    std::filesystem::path path;
    do
        path = folder / (prefix + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count));
    while (std::filesystem::exists(path));
    return path;
}

void RemoveBeginningWith(const std::filesystem::path& path)
{
    const std::string start = path.filename().string();
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(path.parent_path(), ignored))
    {
        if (entry.path().filename().string().starts_with(start))
            std::filesystem::remove(entry.path(), ignored);
    }
}

std::string BytesOfFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

TestFolder::TestFolder() : m_path(UniquePath("test-"))
{
    std::filesystem::create_directories(m_path);
}

TestFolder::~TestFolder()
{
    // What a test left open stays on Windows; that is no reason to end the process.
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::wstring TestFolder::Text() const
{
    return PathText(m_path);
}

EnvironmentSetting::EnvironmentSetting(const std::wstring& name, const wchar_t* value) : m_name(name)
{
    wchar_t before[ValueCapacity];
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(name.c_str(), before, ValueCapacity);
    if (length != 0 || GetLastError() != ERROR_ENVVAR_NOT_FOUND)
        m_before = std::wstring(before, length);
    SetEnvironmentVariableW(name.c_str(), value);
}

EnvironmentSetting::~EnvironmentSetting()
{
    SetEnvironmentVariableW(m_name.c_str(), m_before ? m_before->c_str() : nullptr);
}

} // namespace orl::test
