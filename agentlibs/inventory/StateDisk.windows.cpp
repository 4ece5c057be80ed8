// StateDisk on Windows.

#include "agentlibs/inventory/StateDisk.h"

#include "winport/portable/Utf8.h"

#include <algorithm>
#include <utility>

namespace orl
{

namespace
{

// How long a reader or a scanner may have the file open before replacing or reading it is given up.
constexpr std::chrono::milliseconds Patience{10000};
constexpr DWORD Everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void RefuseLastError(ULONG code, const std::wstring& path, const wchar_t* what, DWORD error)
{
    wchar_t text[512] = L"";
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                                  static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] < L' ' || text[length - 1] == L'.' || text[length - 1] == L' '))
        --length;
    RefuseStateFile(code, path,
                    what + (L": " + (length == 0 ? L"error " + std::to_wstring(error) : std::wstring(text, length))));
}

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

// What passes when those who have the file open close it.
bool IsPassing(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_DELETE_PENDING;
}

// Calls until it answers true or fails for good; the last error then says why. Answers whether it did.
template <typename Call>
bool Insist(Call&& call)
{
    const ULONGLONG start = GetTickCount64();
    while (!call())
    {
        const DWORD error = GetLastError();
        if (!IsPassing(error) || GetTickCount64() - start >= static_cast<ULONGLONG>(Patience.count()))
        {
            SetLastError(error);
            return false;
        }
        Sleep(1);
    }
    return true;
}

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    ~Handle() { Close(); }
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool Valid() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }
    void Close()
    {
        if (Valid())
            CloseHandle(std::exchange(m_handle, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE m_handle;
};

std::wstring Native(const std::wstring& path)
{
    return NativePath(path).wstring();
}

Handle Open(const std::wstring& path, DWORD access, DWORD how)
{
    return Handle(CreateFileW(Native(path).c_str(), access, Everybody, nullptr, how,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

void CheckAttributes(DWORD attributes, const std::wstring& path)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        RefuseStateLink(path);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        RefuseStateKind(path);
}

void CheckOpen(const Handle& handle, const std::wstring& path)
{
    BY_HANDLE_FILE_INFORMATION about = {};
    if (!GetFileInformationByHandle(handle.Get(), &about))
        RefuseLastError(ERROR_ACCESS_DENIED, path, L"cannot be read", GetLastError());
    CheckAttributes(about.dwFileAttributes, path);
}

// Folders cannot be opened as files are; this tells them from what is only busy.
void CheckNamed(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(Native(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        CheckAttributes(attributes, path);
}

class FileLock final : public StateDisk::Lock
{
public:
    explicit FileLock(Handle handle) : m_handle(std::move(handle)) {}
    ~FileLock() override
    {
        OVERLAPPED from = {};
        UnlockFileEx(m_handle.Get(), 0, 1, 0, &from);
    }

private:
    Handle m_handle;
};

void WriteAll(const Handle& handle, std::string_view text, const std::wstring& path)
{
    while (!text.empty())
    {
        const auto part = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1 << 20));
        DWORD written = 0;
        if (!WriteFile(handle.Get(), text.data(), part, &written, nullptr))
            RefuseLastError(ERROR_CANTWRITE, path, L"cannot be written", GetLastError());
        text.remove_prefix(written);
    }
    if (!FlushFileBuffers(handle.Get()))
        RefuseLastError(ERROR_CANTWRITE, path, L"cannot be written", GetLastError());
}

} // namespace

std::optional<StateDisk::Stamp> StateDisk::Look() const
{
    WIN32_FILE_ATTRIBUTE_DATA about = {};
    const std::wstring native = Native(m_path);
    if (!Insist([&] { return GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &about) != 0; }))
    {
        if (IsMissing(GetLastError()))
            return std::nullopt;
        RefuseLastError(ERROR_ACCESS_DENIED, m_path, L"cannot be read", GetLastError());
    }
    CheckAttributes(about.dwFileAttributes, m_path);
    const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    Stamp stamp;
    stamp.size = join(about.nFileSizeHigh, about.nFileSizeLow);
    stamp.id = join(about.ftCreationTime.dwHighDateTime, about.ftCreationTime.dwLowDateTime);
    // File times count 100 ns from 1601, which lies so many seconds before 1970.
    constexpr std::int64_t before1970 = 11644473600;
    const auto ticks =
        static_cast<std::int64_t>(join(about.ftLastWriteTime.dwHighDateTime, about.ftLastWriteTime.dwLowDateTime));
    stamp.written = std::filesystem::file_time_type(
        std::chrono::file_clock::from_sys(std::chrono::sys_time<std::chrono::nanoseconds>(
            std::chrono::nanoseconds((ticks - before1970 * 10000000) * 100))));
    return stamp;
}

std::optional<std::string> StateDisk::Load() const
{
    CheckNamed(m_path);
    const std::wstring native = Native(m_path);
    HANDLE opened = INVALID_HANDLE_VALUE;
    const bool isOpen = Insist(
        [&]
        {
            opened = CreateFileW(native.c_str(), GENERIC_READ, Everybody, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
            return opened != INVALID_HANDLE_VALUE;
        });
    if (!isOpen && IsMissing(GetLastError()))
        return std::nullopt;
    if (!isOpen)
        RefuseLastError(ERROR_ACCESS_DENIED, m_path, L"cannot be opened for reading", GetLastError());
    const Handle file(opened);
    CheckOpen(file, m_path);
    std::string text;
    for (char block[65536];;)
    {
        DWORD length = 0;
        if (!ReadFile(file.Get(), block, sizeof block, &length, nullptr))
            RefuseLastError(ERROR_ACCESS_DENIED, m_path, L"cannot be read", GetLastError());
        if (length == 0)
            return text;
        text.append(block, length);
        if (text.size() > MaxBytes)
            RefuseStateLength(m_path);
    }
}

std::unique_ptr<StateDisk::Lock> StateDisk::Acquire(std::chrono::milliseconds longest) const
{
    const std::wstring path = LockPath();
    CheckNamed(path);
    Handle handle = Open(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    if (!handle.Valid())
        RefuseLastError(ERROR_ACCESS_DENIED, path, L"cannot be opened for writing", GetLastError());
    CheckOpen(handle, path);
    StateWait wait(*this, path, longest);
    for (;;)
    {
        OVERLAPPED from = {};
        if (LockFileEx(handle.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &from))
            return std::make_unique<FileLock>(std::move(handle));
        const DWORD error = GetLastError();
        if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING)
            RefuseLastError(ERROR_ACCESS_DENIED, path, L"cannot be locked", error);
        wait.Pause();
    }
}

void StateDisk::Replace(const Lock&, std::string_view text) const
{
    const std::wstring nextPath = NextPath();
    const std::wstring next = Native(nextPath);
    CheckNamed(nextPath);
    if (!Insist([&] { return DeleteFileW(next.c_str()) || IsMissing(GetLastError()); }))
        RefuseLastError(ERROR_ACCESS_DENIED, nextPath, L"cannot be removed", GetLastError());
    Handle handle = Open(nextPath, GENERIC_WRITE, CREATE_NEW);
    if (!handle.Valid())
        RefuseLastError(ERROR_ACCESS_DENIED, nextPath, L"cannot be made", GetLastError());
    try
    {
        WriteAll(handle, text, nextPath);
    }
    catch (...)
    {
        handle.Close();
        DeleteFileW(next.c_str());
        throw;
    }
    handle.Close();
    const std::wstring file = Native(m_path);
    if (!Insist(
            [&] {
                return MoveFileExW(next.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
            }))
    {
        const DWORD error = GetLastError();
        DeleteFileW(next.c_str());
        RefuseLastError(ERROR_CANTWRITE, m_path, L"cannot be replaced", error);
    }
}

} // namespace orl
