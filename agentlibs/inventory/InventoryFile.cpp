// InventoryFile: when to read again.

#include "agentlibs/inventory/InventoryFile.h"

#include "agentlibs/Text.h"
#include "agentlibs/inventory/FileTime.h"
#include "winport/portable/Utf8.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace orl
{

InventoryFile::InventoryFile(std::wstring path, Now now)
    : m_path(std::move(path)), m_file(NativePath(m_path)), m_now(std::move(now))
{
}

InventoryFile::Contents InventoryFile::Read()
{
    const std::lock_guard lock(m_mutex);
    const Stamp stamp = Look();
    if (!m_settled || stamp.size != m_stamp.size || stamp.written != m_stamp.written)
        Refresh(stamp);
    if (m_error)
        throw BackendError(*m_error);
    const std::chrono::duration<double> age = m_now() - stamp.written;
    return {m_inventory, std::max(age.count(), 0.0)};
}

InventoryFile::Stamp InventoryFile::Look() const
{
    std::error_code error;
    const auto status = std::filesystem::status(m_file, error);
    if (status.type() == std::filesystem::file_type::not_found)
        Refuse(ERROR_FILE_NOT_FOUND, L"does not exist");
    if (status.type() != std::filesystem::file_type::none && status.type() != std::filesystem::file_type::regular)
        Refuse(ERROR_INVALID_DATA, L"is no regular file");

    Stamp stamp;
    if (!error)
        stamp.size = std::filesystem::file_size(m_file, error);
    if (!error)
        stamp.written = std::filesystem::last_write_time(m_file, error);
    if (error)
        Refuse(ERROR_ACCESS_DENIED, L"cannot be read: " + Widen(error.message()));
    return stamp;
}

std::string InventoryFile::Load() const
{
    std::ifstream file(m_file, std::ios::binary);
    if (!file)
        Refuse(ERROR_ACCESS_DENIED, L"cannot be opened for reading");
    std::string text;
    for (char block[65536]; file.read(block, sizeof block), file.gcount() > 0;)
    {
        text.append(block, static_cast<std::size_t>(file.gcount()));
        if (text.size() > MaxBytes)
            Refuse(ERROR_INVALID_DATA, L"is longer than " + std::to_wstring(MaxBytes) + L" bytes");
    }
    if (file.bad())
        Refuse(ERROR_ACCESS_DENIED, L"cannot be read");
    return text;
}

void InventoryFile::Refresh(const Stamp& stamp)
{
    m_settled = false;
    const std::string text = Load();
    const std::size_t hash = std::hash<std::string>()(text);
    if (m_hash != hash)
    {
        m_hash.reset();
        m_error.reset();
        try
        {
            m_inventory = Inventory::Read(m_path, text);
        }
        catch (const BackendError& error)
        {
            m_error = error;
            m_inventory.reset();
        }
        m_hash = hash;
    }
    m_stamp = stamp;
    // A file that is still being written changes its stamp once more, and so does one that was written while we read.
    m_settled = m_now() - stamp.written > FileTimeStep;
}

void InventoryFile::Refuse(ULONG code, const std::wstring& reason) const
{
    throw BackendError(code, m_path + L": " + reason);
}

} // namespace orl
