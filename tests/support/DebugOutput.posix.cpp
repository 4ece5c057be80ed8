// What the process passes to the debugger: the Win32 names call a function of ours.

#include "tests/support/DebugOutput.h"

#include "winport/portable/Utf8.h"

#include <windows.h>

#include <mutex>

namespace orl::test
{

namespace
{

std::mutex s_mutex;
std::vector<std::string> s_texts;

void Collect(LPCWSTR text)
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    s_texts.push_back(ToUtf8(text));
}

} // namespace

DebugOutput::DebugOutput()
{
    WinportSetDebugOutput(Collect);
}

DebugOutput::~DebugOutput()
{
    WinportSetDebugOutput(nullptr);
    s_texts.clear();
}

std::vector<std::string> DebugOutput::Texts() const
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    return s_texts;
}

} // namespace orl::test
