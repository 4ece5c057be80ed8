// A registry of a test's own: the system puts a key of the user's in the place of HKEY_LOCAL_MACHINE, for this process.

#include "tests/support/TestRegistry.h"

#include <atomic>
#include <stdexcept>
#include <string>

namespace orl::test
{

TestRegistry::TestRegistry()
{
    static std::atomic<unsigned> count{0};
    m_place = L"Software\\OrlTest\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    // A process that crashed may have had the same number.
    RegDeleteTreeW(HKEY_CURRENT_USER, m_place.c_str());
    HKEY key = nullptr;
    LONG status = RegCreateKeyExW(HKEY_CURRENT_USER, m_place.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                  KEY_ALL_ACCESS, nullptr, &key, nullptr);
    if (status == ERROR_SUCCESS)
    {
        status = RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
        RegCloseKey(key);
    }
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("no registry for the test: error " + std::to_string(status));
}

TestRegistry::~TestRegistry()
{
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_place.c_str());
}

} // namespace orl::test
