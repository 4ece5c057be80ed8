// StateFile: what clients have changed of an inventory, kept in a file beside it.
#pragma once

#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/JsonText.h"
#include "agentlibs/inventory/StateDisk.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace orl
{

// The file's text as it was at one moment: an object with a version and one member, a section, for each agent library
// that keeps something here. Never changes.
class StateDocument
{
public:
    static constexpr std::string_view Version = "1";

    // `name` is the file's, for messages. Throws BackendError when the text is no state file of this version. What is
    // in the sections is not looked at.
    StateDocument(std::wstring name, std::string text);
    // Where there is no file: a document without sections.
    explicit StateDocument(std::wstring name);
    StateDocument(const StateDocument&) = delete;
    StateDocument& operator=(const StateDocument&) = delete;

    // Null where there is none.
    const JsonValue* Section(std::string_view key) const;
    // For messages about a section's values.
    const JsonText& Source() const { return m_source; }

    // The document with this section in place of the one that it has, or without it. All others stay as they are, byte
    // for byte, also those that nobody here knows.
    std::string With(std::string_view key, const std::optional<std::string>& section) const;

private:
    const std::wstring m_name;
    const std::string m_text;
    const JsonText m_source;
    JsonValue m_root;
};

// Any number of threads, and of processes with objects of their own for the same inventory, may use it at once. What
// goes wrong is thrown as BackendError.
class StateFile
{
public:
    static constexpr std::chrono::milliseconds Patience{10000};

    using Clock = std::filesystem::file_time_type::clock;
    using Now = std::function<Clock::time_point()>;

    // The file's path is the inventory's with ".state" behind it. Nothing is read yet. `patience` is how long a change
    // waits while those of others get nowhere; `now` is for tests.
    explicit StateFile(const std::wstring& inventory, std::chrono::milliseconds patience = Patience,
                       Now now = &Clock::now);

    // The document as it stands now, without locking: of a change that is under way, the state before or behind it. The
    // same object as long as the text is the same.
    std::shared_ptr<const StateDocument> Read();

    // What shall stand in a section: a JSON value's text, or nothing to leave the section out.
    using Section = std::optional<std::string>;
    // Gets the document as it is and puts the section; answers whether there is anything to write. It may be asked
    // while other processes wait, so it asks nobody else, and it may throw to change nothing.
    using Edit = std::function<bool(const StateDocument& now, Section& section)>;

    // One transaction: nobody else changes the file meanwhile, and when this returns, the change outlives the power.
    void Change(std::string_view section, const Edit& edit);

    const std::wstring& Path() const { return m_disk.Path(); }

private:
    std::shared_ptr<const StateDocument> Refresh(const std::optional<StateDisk::Stamp>& stamp);

    const StateDisk m_disk;
    const std::chrono::milliseconds m_patience;
    const Now m_now;

    std::mutex m_mutex; // guards what follows, also while the file is read
    std::optional<StateDisk::Stamp> m_stamp;
    bool m_settled = false; // the stamp alone says that nothing has changed
    std::optional<std::string> m_text;
    std::shared_ptr<const StateDocument> m_document; // null when the text was refused
    std::optional<BackendError> m_error;             // why
};

// One section read into `Value`, and read again only when the document is another.
template <typename Value>
class StateSection
{
public:
    // `read(document)` makes the value, or throws BackendError.
    template <typename Reader>
    std::shared_ptr<const Value> Of(const std::shared_ptr<const StateDocument>& document, Reader&& read)
    {
        const std::lock_guard lock(m_mutex);
        if (m_document != document)
        {
            m_document.reset();
            m_error.reset();
            try
            {
                m_value = std::make_shared<const Value>(read(*document));
            }
            catch (const BackendError& error)
            {
                m_error = error;
            }
            m_document = document;
        }
        if (m_error)
            throw BackendError(*m_error);
        return m_value;
    }

private:
    std::mutex m_mutex;
    std::shared_ptr<const StateDocument> m_document;
    std::shared_ptr<const Value> m_value;
    std::optional<BackendError> m_error;
};

} // namespace orl
