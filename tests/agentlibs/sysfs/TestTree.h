// A small sysfs tree that a test writes and damages, and the way to read any tree's files without the back end.
#pragma once

#include "agentlibs/fcoelink/Backend.h"
#include "tests/support/TestFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace orl
{

// A folder of its own, gone with the object. Paths are relative to it.
class TestTree
{
public:
    TestTree();

    const std::filesystem::path& Root() const { return m_folder.Path(); }
    std::filesystem::path At(std::string_view path) const { return Root() / path; }

    // Writes the bytes and makes the folders above.
    void File(std::string_view path, std::string_view bytes);
    void Folder(std::string_view path);
    // Replaces whatever is there.
    void Link(std::string_view path, const std::string& target);
    void Fifo(std::string_view path);
    void Remove(std::string_view path);

    std::string Read(std::string_view path) const { return test::BytesOfFile(At(path)); }

    std::unique_ptr<FcoeBackend> Backend() const;

private:
    test::TestFolder m_folder;
};

// Where the devices of AddHba lie.
inline constexpr std::string_view Net = "sys/devices/virtual/net/";

// One HBA in working order: controller ctlr_N and hostN on interface IF with interface index N + 2, one forwarder
// fcf_N, one target rport-N:0-1 with one disk N:0:0:0 as /dev/sdN. N tells its names apart: port name 2000525400fc000N.
void AddHba(TestTree& tree, const std::string& interfaceName, int number);

// Adds the virtual port vport-N:0-I with host `host` to the HBA of AddHba; port name 210I525400fc000N.
void AddVirtualPort(TestTree& tree, const std::string& interfaceName, int number, int index, int host);

// The text of a file as a user of the tree would read it; empty when it is not there.
std::string ReadText(const std::filesystem::path& file);

} // namespace orl
