// What the process passes to the debugger: without one, each text comes by as an exception that handlers see first.

#include "tests/support/DebugOutput.h"

#include <windows.h>

#include <mutex>

namespace orl::test
{

namespace
{

// Some systems offer a wide form before this one. It carries the text's length with its terminator, then the text.
constexpr DWORD NarrowText = 0x40010006;

void* s_hook = nullptr;
std::mutex s_mutex;
std::vector<std::string> s_texts;

LONG CALLBACK Collect(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode != NarrowText)
        return EXCEPTION_CONTINUE_SEARCH;
    const std::lock_guard<std::mutex> lock(s_mutex);
    s_texts.emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                         record.ExceptionInformation[0] - 1);
    return EXCEPTION_CONTINUE_EXECUTION;
}

} // namespace

DebugOutput::DebugOutput()
{
    s_hook = AddVectoredExceptionHandler(1, Collect);
}

DebugOutput::~DebugOutput()
{
    RemoveVectoredExceptionHandler(s_hook);
    s_texts.clear();
}

std::vector<std::string> DebugOutput::Texts() const
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    return s_texts;
}

} // namespace orl::test
