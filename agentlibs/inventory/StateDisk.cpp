// StateDisk: what does not depend on the platform.

#include "agentlibs/inventory/StateDisk.h"

#include "agentlibs/BackendError.h"

namespace orl
{

StateDisk::StateDisk(std::wstring path) : m_path(std::move(path)) {}

void RefuseStateFile(ULONG code, const std::wstring& path, const std::wstring& reason)
{
    throw BackendError(code, path + L": " + reason);
}

void RefuseStateLink(const std::wstring& path)
{
    RefuseStateFile(ERROR_ACCESS_DENIED, path, L"is a symbolic link, and none is followed here");
}

void RefuseStateKind(const std::wstring& path)
{
    RefuseStateFile(ERROR_INVALID_DATA, path, L"is no regular file");
}

void RefuseStateLength(const std::wstring& path)
{
    RefuseStateFile(ERROR_INVALID_DATA, path, L"is longer than " + std::to_wstring(StateDisk::MaxBytes) + L" bytes");
}

void RefuseStateWait(const std::wstring& path, std::chrono::milliseconds waited)
{
    RefuseStateFile(ERROR_BUSY, path,
                    L"is locked by another process or thread; waited " + std::to_wstring(waited.count()) + L" ms");
}

} // namespace orl
