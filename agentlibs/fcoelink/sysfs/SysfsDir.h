// Dir: a folder of a sysfs or procfs tree, held open.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orl::sysfs
{

// An attribute is at most a memory page, and pages have up to this size. A larger file is no attribute.
inline constexpr std::size_t MaxAttributeBytes = std::size_t{64} * 1024;

// The largest host has some tens of thousands of devices. A folder with more entries is no kernel's.
inline constexpr std::size_t MaxFolderEntries = std::size_t{1} << 20;

// A folder held open. What is read below it is named relative to it, so the parts of one record come from one device,
// even when the kernel removes the device meanwhile and gives its name to another.
//
// Trees are taken as they are: links are not followed, only regular files are read and written, never beyond a limit,
// and nothing waits for anybody (a FIFO with no one at its other end is an unreadable file). What is not there, or
// cannot be read, is empty; only a process that has run out of descriptors or memory gets a BackendError, because that
// says nothing about the tree.
//
// An object that holds no folder reads as a folder in which there is nothing.
class Dir
{
public:
    Dir() = default;

    // The folder of this path. Links in the path are followed: it is what the user asked for. On failure the object
    // is empty and errno says why.
    static Dir OpenPath(const std::string& path);

    explicit operator bool() const { return m_node != nullptr; }

    // The folder of this name, or of this path of names divided by slashes.
    Dir Open(std::string_view path) const;

    // The same, but links on the way are followed, wherever they lead.
    Dir OpenThroughLinks(const std::string& path) const;

    // The text of the attribute: up to its first NUL, without the newline and the blanks around it.
    std::string Read(const char* attribute) const;
    std::string Read(const std::string& attribute) const { return Read(attribute.c_str()); }

    // Every byte of a file, or nothing of one that is larger than the limit.
    std::string ReadWhole(const char* file, std::size_t limit) const;

    // What the link says, empty for anything but a link.
    std::string Link(const std::string& name) const;

    // The names that begin with this prefix, by the numbers in them: fcf_2 before fcf_10. None of a folder with more
    // than `limit` entries.
    std::vector<std::string> Names(std::string_view prefix = {}, std::size_t limit = MaxFolderEntries) const;

    // Is the folder still what its parent has under its name? False when the kernel has removed it, or has put another
    // in its place, since it was opened.
    bool Present() const;

    // Hands the text to the attribute in one piece, as the kernel wants it. Returns 0, or the errno of the refusal. A
    // plain file, in a tree that is no kernel's, holds this text alone afterwards.
    int Write(const char* attribute, std::string_view text) const;

private:
    struct Node
    {
        explicit Node(int descriptor) : fd(descriptor) {}
        ~Node();
        Node(const Node&) = delete;
        Node& operator=(const Node&) = delete;
        int fd;
    };

    static std::shared_ptr<const Node> OpenNode(int at, const char* path, int flags);

    std::shared_ptr<const Node> m_node;
    std::shared_ptr<const Node> m_parent; // none for a folder that was opened by its path
    std::string m_name;                   // in the parent
};

} // namespace orl::sysfs
