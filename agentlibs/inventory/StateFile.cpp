// StateFile: sections of one JSON document.

#include "agentlibs/inventory/StateFile.h"

#include "agentlibs/inventory/FileTime.h"

#include <algorithm>

namespace orl
{

namespace
{

constexpr std::string_view VersionKey = "version";

JsonValue ParseState(const JsonText& source)
{
    JsonValue root = source.Parse();
    if (root.kind != JsonValue::Kind::Object)
        source.Refuse(root.offset, {}, "expected an object");
    const auto version = std::find_if(root.members.begin(), root.members.end(),
                                      [](const JsonMember& member) { return member.key == VersionKey; });
    if (version == root.members.end())
        source.Refuse(root.offset, {}, "the key \"version\" is missing");
    const JsonValue& value = version->value;
    if (value.kind != JsonValue::Kind::Number || value.text != StateDocument::Version)
        source.Refuse(value.offset, "/version",
                      "expected " + std::string(StateDocument::Version) +
                          ": what another version says is neither read nor changed");
    return root;
}

} // namespace

StateDocument::StateDocument(std::wstring name, std::string text)
    : m_name(std::move(name)), m_text(std::move(text)), m_source(m_name, m_text), m_root(ParseState(m_source))
{
}

StateDocument::StateDocument(std::wstring name) : StateDocument(std::move(name), "{\"version\": 1}") {}

const JsonValue* StateDocument::Section(std::string_view key) const
{
    const auto member = std::find_if(m_root.members.begin(), m_root.members.end(),
                                     [&](const JsonMember& candidate) { return candidate.key == key; });
    return member == m_root.members.end() || key == VersionKey ? nullptr : &member->value;
}

std::string StateDocument::With(std::string_view key, const std::optional<std::string>& section) const
{
    std::string text = "{";
    const auto add = [&](std::string_view name, std::string_view value)
    {
        text += text.size() == 1 ? "\n" : ",\n";
        text.append(JsonString(name)).append(": ").append(value);
    };
    bool isPut = false;
    for (const JsonMember& member : m_root.members)
    {
        if (member.key != key)
            add(member.key,
                std::string_view(m_text).substr(member.value.offset, member.value.end - member.value.offset));
        else if (section)
            add(key, *section);
        isPut = isPut || member.key == key;
    }
    if (!isPut && section)
        add(key, *section);
    return text + "\n}\n";
}

StateFile::StateFile(const std::wstring& inventory, std::chrono::milliseconds patience, Now now)
    : m_disk(inventory + L".state"), m_patience(patience), m_now(std::move(now))
{
}

std::shared_ptr<const StateDocument> StateFile::Read()
{
    const std::lock_guard lock(m_mutex);
    const std::optional<StateDisk::Stamp> stamp = m_disk.Look();
    if (!m_settled || stamp != m_stamp)
        return Refresh(stamp);
    if (m_error)
        throw BackendError(*m_error);
    return m_document;
}

// The stamp was taken before the text is read: should the file change in between, the next look shows another stamp.
std::shared_ptr<const StateDocument> StateFile::Refresh(const std::optional<StateDisk::Stamp>& stamp)
{
    m_settled = false;
    std::optional<std::string> text = m_disk.Load();
    if ((!m_document && !m_error) || text != m_text)
    {
        m_document.reset();
        m_error.reset();
        try
        {
            m_document = text ? std::make_shared<const StateDocument>(Path(), *text)
                              : std::make_shared<const StateDocument>(Path());
        }
        catch (const BackendError& error)
        {
            m_error = error;
        }
        m_text = std::move(text);
    }
    m_stamp = stamp;
    m_settled = !stamp || m_now() - stamp->written > FileTimeStep;
    if (m_error)
        throw BackendError(*m_error);
    return m_document;
}

void StateFile::Change(std::string_view section, const Edit& edit)
{
    const std::unique_ptr<StateDisk::Lock> held = m_disk.Acquire(m_patience);
    // Stamps are good enough for showing what is there, not for replacing it.
    std::shared_ptr<const StateDocument> before;
    {
        const std::lock_guard lock(m_mutex);
        before = Refresh(m_disk.Look());
    }
    Section after;
    if (!edit(*before, after))
        return;
    const std::string text = before->With(section, after);
    if (text.size() > StateDisk::MaxBytes)
        RefuseStateFile(ERROR_CANTWRITE, Path(),
                        L"would become longer than " + std::to_wstring(StateDisk::MaxBytes) + L" bytes");
    m_disk.Replace(*held, text);
}

} // namespace orl
