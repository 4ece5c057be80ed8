// A registry of a test's own: another registry file for this process and its children.

#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include "winport/portable/Utf8.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace orl::test
{

namespace
{

constexpr char FileVariable[] = "ORL2_REGISTRY";

} // namespace

TestRegistry::TestRegistry()
{
    const std::filesystem::path file = UniquePath("registry-") += ".reg";
    std::ofstream(file) << "Windows Registry Editor Version 5.00\n";
    m_place = PathText(file);
    if (const char* before = std::getenv(FileVariable))
        m_before = FromUtf8(before);
    setenv(FileVariable, file.c_str(), 1);
}

TestRegistry::~TestRegistry()
{
    if (m_before.empty())
        unsetenv(FileVariable);
    else
        setenv(FileVariable, ToUtf8(m_before).c_str(), 1);
    // With the lock that writers keep beside it.
    RemoveBeginningWith(NativePath(m_place));
}

} // namespace orl::test
