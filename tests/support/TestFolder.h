// Files of a test's own, and what the process's environment holds while it runs.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orl::test
{

// A path below the build's folder for test files that no other test and no earlier run uses.
std::filesystem::path UniquePath(const std::string& prefix);

// Removes the files in the path's folder whose names begin with the path's own.
void RemoveBeginningWith(const std::filesystem::path& path);

// The bytes of a file; empty when there is none.
std::string BytesOfFile(const std::filesystem::path& file);

// A new folder, removed with what it holds at the end.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
    // As the code under test is told it.
    std::wstring Text() const;

private:
    std::filesystem::path m_path;
};

// Sets an environment variable, or removes it, until the end.
class EnvironmentSetting
{
public:
    EnvironmentSetting(const std::wstring& name, const wchar_t* value);
    ~EnvironmentSetting();
    EnvironmentSetting(const EnvironmentSetting&) = delete;
    EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

private:
    std::wstring m_name;
    std::optional<std::wstring> m_before;
};

} // namespace orl::test
