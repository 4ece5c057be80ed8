// COrlDebug: lines.

#include "Common/Src/OrlDebug.h"

#include "Common/Src/TraceClock.h"
#include "Common/Src/WideFormat.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <io.h>

namespace
{

constexpr ULONG ErrorsOnly = 2;
constexpr ULONG WithDebugger = 4;

constexpr size_t LineCapacity = 1152;
constexpr size_t MessageCapacity = 1024;
// The line feed's last place: behind it there is room for the terminator only.
constexpr size_t LastLineFeed = LineCapacity - 2;

// Fixed, so that a line costs no allocation. They belong to whoever holds the lock of the module's one log.
wchar_t s_line[LineCapacity];
wchar_t s_message[MessageCapacity];
char s_bytes[LineCapacity * 4];

class SectionGuard
{
public:
    explicit SectionGuard(CRITICAL_SECTION* section) : m_section(section) { EnterCriticalSection(m_section); }
    ~SectionGuard() { LeaveCriticalSection(m_section); }
    SectionGuard(const SectionGuard&) = delete;
    SectionGuard& operator=(const SectionGuard&) = delete;

private:
    CRITICAL_SECTION* m_section;
};

// Lets an Error line through at the level that suppresses Print lines.
class LevelForError
{
public:
    explicit LevelForError(std::atomic<ULONG>& level) : m_level(level), m_saved(level.load(std::memory_order_relaxed))
    {
        if (m_saved != WithDebugger)
            m_level.store(1, std::memory_order_relaxed);
    }
    ~LevelForError() { m_level.store(m_saved, std::memory_order_relaxed); }
    LevelForError(const LevelForError&) = delete;
    LevelForError& operator=(const LevelForError&) = delete;

private:
    std::atomic<ULONG>& m_level;
    ULONG m_saved;
};

bool IsFull(FILE* file, ULONG maxFileSize)
{
    // A length too large for the answer comes back negative.
    const auto length = _filelength(_fileno(file));
    return length < 0 || static_cast<ULONGLONG>(length) >= maxFileSize;
}

// UTF-8 whatever the process's locale is.
void WriteText(FILE* file, const wchar_t* text, size_t length)
{
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(length), s_bytes,
                                          static_cast<int>(sizeof(s_bytes)), nullptr, nullptr);
    // A full disk loses lines; the traced code goes on.
    if (bytes > 0)
        static_cast<void>(std::fwrite(s_bytes, 1, static_cast<size_t>(bytes), file));
    static_cast<void>(std::fflush(file));
}

} // namespace

COrlDebug::COrlDebug()
{
    InitializeCriticalSection(&m_section);
    m_lock = &m_section;
}

COrlDebug::~COrlDebug()
{
    // What other objects trace while the module goes down finds the log off.
    m_level.store(0, std::memory_order_relaxed);
    m_configured = false;
    if (m_file != nullptr)
        static_cast<void>(std::fclose(m_file));
    m_file = nullptr;
    delete[] m_processTag;
    m_processTag = nullptr;
    DeleteCriticalSection(m_lock);
}

bool COrlDebug::AdmitsPrint() const
{
    return (GetCurrentLogLevel() & ~ErrorsOnly) != 0 && m_configured && m_file != nullptr;
}

void COrlDebug::Print(const wchar_t* format, ...)
{
    if (!AdmitsPrint())
        return;
    SectionGuard guard(m_lock);
    // Another thread's Error may have raised the level a moment ago, for its own line only.
    if (!AdmitsPrint())
        return;

    va_list arguments;
    va_start(arguments, format);
    try
    {
        WriteLine(format, arguments);
    }
    catch (...)
    {
        WriteFailureNotice(L"COrlDebug::Error - EXCEPTION DURING DEBUG PRINT.");
    }
    va_end(arguments);
}

void COrlDebug::WriteFailureNotice(const wchar_t* notice, ...) noexcept
{
    va_list none;
    va_start(none, notice);
    try
    {
        WriteLine(notice, none);
    }
    catch (...)
    {
        // What keeps failing is given up for this line.
    }
    va_end(none);
}

void COrlDebug::Error(const wchar_t* sourceFile, int sourceLine, const wchar_t* format, ...)
{
    if (GetCurrentLogLevel() == 0 || m_file == nullptr)
        return;
    SectionGuard guard(m_lock);

    va_list arguments;
    va_start(arguments, format);
    try
    {
        orl::FormatBoundedList(s_message, MessageCapacity, format, arguments);
        LevelForError level(m_level);
        Print(L"%s (%d): %s", sourceFile, sourceLine, s_message);
    }
    catch (...)
    {
        // A lost line is no reason to fail its writer.
    }
    va_end(arguments);
}

void COrlDebug::WriteLine(const wchar_t* format, va_list arguments)
{
    if (m_maxFileSize != 0 && IsFull(m_file, m_maxFileSize))
        return;
    size_t head = 0;
    if (!FormatHead(head))
        return;

    // Cut or not, the message reaches up to its terminator, and the line feed stands there.
    orl::FormatBoundedList(s_line + head, std::min(LineCapacity - head, MessageCapacity), format, arguments);
    const size_t end = std::min(head + std::wcslen(s_line + head), LastLineFeed);
    s_line[end] = L'\n';
    s_line[end + 1] = L'\0';

    WriteText(m_file, s_line, end + 1);
    if (GetCurrentLogLevel() == WithDebugger)
        OutputDebugStringW(s_line);
}

bool COrlDebug::FormatHead(size_t& length) const
{
    const orl::TraceTime now = orl::ReadTraceClock();
    const int written = orl::FormatBounded(
        s_line, LineCapacity, L"%s\tPID:%x\tTID:%x\t%02.2d:%02.2d:%02.2d.%03.3d\t(%I64X)\tTIER %d\t\t", m_processTag,
        GetCurrentProcessId(), GetCurrentThreadId(), now.local.wHour, now.local.wMinute, now.local.wSecond,
        now.local.wMilliseconds, now.counter.QuadPart, m_tier.load(std::memory_order_relaxed));
    length = static_cast<size_t>(std::max(written, 0));
    return written >= 0;
}
