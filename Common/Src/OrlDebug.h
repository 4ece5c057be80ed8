// COrlDebug: the trace log of a module. COrlTraceScope: entry and exit lines of a traced function.
#pragma once

#include "Common/Src/OrlExport.h"

#include <windows.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>

// One text file of tab-separated lines, flushed line by line so that it survives a crash of the host process.
//
// Levels: 0 writes nothing; 2 writes Error lines only; 4 writes everything and passes each line to the debugger too;
// any other writes everything.
//
// Print and Error may be called from any thread and never fail towards their caller. They format into fixed buffers
// that the module's one instance owns through its lock.
class ORL_COMMON_API COrlDebug
{
public:
    COrlDebug();
    virtual ~COrlDebug();
    COrlDebug(const COrlDebug&) = delete;
    COrlDebug& operator=(const COrlDebug&) = delete;

    // Opens the log; 0 on success, -1 on any failure. To be called once, before other threads use the object.
    //
    // Levels 1 and 2 are a wish only: the registry value TRACE replaces them, and without the product's registry key
    // there is no log. The file lies in the installation directory, or in the Temp directory when it cannot be opened
    // there. append keeps what the file holds; a maxFileSize other than 0 drops the lines of a file that has reached
    // that many bytes. The last argument is not used.
    int Configure(const wchar_t* processTag, const wchar_t* logFileName, ULONG level, int append, ULONG maxFileSize,
                  const wchar_t* reserved);

    // One line: a head with tag, process, thread, time, counter and tier, then the message, cut to 1023 characters.
    void Print(const wchar_t* format, ...);
    // The line "sourceFile (sourceLine): message", written at every level but 0.
    void Error(const wchar_t* sourceFile, int sourceLine, const wchar_t* format, ...);

    ULONG GetCurrentLogLevel() const { return m_level.load(std::memory_order_relaxed); }
    bool IsConfigured() const { return m_configured; }

private:
    friend class COrlTraceScope;

    bool AdmitsPrint() const;
    FILE* OpenLog(const wchar_t* processTag, const wchar_t* logFileName, int append) const;
    void WriteLine(const wchar_t* format, va_list arguments);
    void WriteFailureNotice(const wchar_t* notice, ...) noexcept;
    bool FormatHead(size_t& length) const;

    // Changed by scopes of all threads without the lock, so a printed tier is approximate under concurrency.
    std::atomic<ULONG> m_tier{0};
    wchar_t* m_processTag = nullptr;
    FILE* m_file = nullptr;
    CRITICAL_SECTION m_section;
    CRITICAL_SECTION* m_lock = nullptr;
    bool m_configured = false;
    std::atomic<ULONG> m_level{0};
    ULONG m_maxFileSize = 0;
};

static_assert(sizeof(std::atomic<ULONG>) == sizeof(ULONG), "the fields keep their width");

// The module's log. Each module defines its own, see ModuleTrace.h.
extern COrlDebug g_OrlDebug;

// Lives on the stack of a traced function and writes "ENTRY" and "EXIT" with the function's name and, where a variable
// is watched, the value that it holds when the scope ends. Costs one comparison while the log is off; a scope that was
// entered while it was off stays silent and is not counted as a tier.
class COrlTraceScope
{
public:
    // The name has the form Class::Method; it is copied. A null pointer to a result is as good as none.
    explicit COrlTraceScope(const wchar_t* name) noexcept
    {
        if (g_OrlDebug.GetCurrentLogLevel() != 0) [[unlikely]]
            Enter(name);
    }
    COrlTraceScope(const wchar_t* name, const bool* result) noexcept
        : m_kind(result != nullptr ? Kind::Bool : Kind::None), m_boolResult(result)
    {
        if (g_OrlDebug.GetCurrentLogLevel() != 0) [[unlikely]]
            Enter(name);
    }
    COrlTraceScope(const wchar_t* name, const int* result) noexcept
        : m_kind(result != nullptr ? Kind::Int : Kind::None), m_intResult(result)
    {
        if (g_OrlDebug.GetCurrentLogLevel() != 0) [[unlikely]]
            Enter(name);
    }
    ~COrlTraceScope()
    {
        if (m_counted) [[unlikely]]
            Leave();
    }
    COrlTraceScope(const COrlTraceScope&) = delete;
    COrlTraceScope& operator=(const COrlTraceScope&) = delete;

    // Watch a result record (its member ulErrCode is reported) or an HRESULT in place of what was watched before.
    template <class Record>
    void WatchRecord(const Record* record) noexcept
    {
        m_recordResult = record != nullptr ? &record->ulErrCode : nullptr;
        m_kind = Kind::Record;
    }
    void WatchHresult(const HRESULT* result) noexcept
    {
        m_hresultResult = result;
        m_kind = Kind::Hresult;
    }

private:
    enum class Kind : ULONG
    {
        None,
        Bool,
        Int,
        Record,
        Hresult
    };

    void Enter(const wchar_t* name) noexcept;
    void Leave() noexcept;
    void PrintExit() const;

    wchar_t* m_name = nullptr;
    Kind m_kind = Kind::None;
    bool m_counted = false;
    const bool* m_boolResult = nullptr;
    const int* m_intResult = nullptr;
    const ULONG* m_recordResult = nullptr;
    const HRESULT* m_hresultResult = nullptr;
};
