// InventoryFile: the inventory as its file stands now.
#pragma once

#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/Inventory.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace orl
{

// Reads the file once and again when it has changed. Who has been given an inventory keeps it, whatever becomes of the
// file. Any number of threads may ask at once.
class InventoryFile
{
public:
    static constexpr std::uintmax_t MaxBytes = std::uintmax_t{16} * 1024 * 1024;

    using Clock = std::filesystem::file_time_type::clock;
    using Now = std::function<Clock::time_point()>;

    // Either separator may stand in the path. Nothing is read yet.
    explicit InventoryFile(std::wstring path, Now now = &Clock::now);

    struct Contents
    {
        std::shared_ptr<const Inventory> inventory;
        double age = 0; // seconds since the file was written, 0 for one from the future
    };

    // Throws BackendError when the file cannot be read or holds no inventory.
    Contents Read();

    const std::wstring& Path() const { return m_path; }

private:
    // What tells one state of the file from another without opening it.
    struct Stamp
    {
        std::uintmax_t size = 0;
        Clock::time_point written;
    };

    Stamp Look() const;
    std::string Load() const;
    void Refresh(const Stamp& stamp);
    [[noreturn]] void Refuse(ULONG code, const std::wstring& reason) const;

    const std::wstring m_path;
    const std::filesystem::path m_file; // the same, in the platform's form
    const Now m_now;

    std::mutex m_mutex; // guards what follows, also while the file is read
    Stamp m_stamp;
    bool m_settled = false; // the stamp alone says that nothing has changed
    std::optional<std::size_t> m_hash;
    std::shared_ptr<const Inventory> m_inventory; // null when the contents were refused
    std::optional<BackendError> m_error;          // why
};

} // namespace orl
