// Every file of an adapter that cannot be read, and every folder that is gone, one at a time: the rest of the records.

#include "tests/agentlibs/sysfs/RecordText.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace orl
{
namespace
{

using Texts = std::vector<std::string>;
using Records = std::map<std::string, Texts>; // by class

constexpr std::pair<const char*, Texts (*)(FcoeBackend&, const wchar_t*)> Enumerations[] = {
    {"HBAs", &Hbas}, {"ports", &Ports}, {"fabrics", &Fabrics},       {"targets", &Targets},
    {"LUNs", &Luns}, {"VLANs", &Vlans}, {"statistics", &Statistics},
};

// Files without which a device is not known to be one, and the classes that lack it then.
const std::map<std::string, std::set<std::string>> Vital{
    {"scsi_target_id", {"targets", "LUNs"}}, {"type", {"LUNs"}},
    {"tx_frames", {"statistics"}},           {"link_fail", {"statistics"}},
    {"npiv_vports_inuse", {"statistics"}},
};

// Files that make another value of a record than an empty text or 0 when they cannot be read: a controller that does
// not say that it is enabled is not, a link that does not say that it is up is down, a name is made of what there is.
const std::set<std::string> Shaping{"enabled", "operstate", "vendor", "model", "rev"};

class SysfsUnreadable : public testing::Test
{
protected:
    SysfsUnreadable()
    {
        AddHba(m_tree, "eth0", 0);
        AddHba(m_tree, "eth1", 1);
        AddVirtualPort(m_tree, "eth0", 0, 1, 7);
        m_backend = m_tree.Backend();
        m_whole = Read();
    }

    Records Read()
    {
        Records records;
        for (const auto& [name, enumerate] : Enumerations)
            records[name] = enumerate(*m_backend, L"");
        return records;
    }

    static Texts Of(const std::string& deviceId, const Texts& lines)
    {
        Texts own;
        std::copy_if(lines.begin(), lines.end(), std::back_inserter(own),
                     [&](const std::string& line) { return line.starts_with(deviceId + '|'); });
        return own;
    }

    // What is eth1's is all there, and all else is eth0's.
    void ExpectTheOtherAdapterWhole(const Records& seen)
    {
        for (const auto& [name, lines] : seen)
        {
            EXPECT_EQ(Of("eth1", lines), Of("eth1", m_whole[name])) << name;
            EXPECT_EQ(Of("eth0", lines).size() + Of("eth1", lines).size(), lines.size())
                << name << ": " << testing::PrintToString(lines);
        }
    }

    // Relative to the root.
    Texts Below(const std::string& folder, fs::file_type type)
    {
        Texts paths;
        for (const auto& entry : fs::recursive_directory_iterator(m_tree.At(folder)))
            if (entry.symlink_status().type() == type)
                paths.push_back(fs::relative(entry.path(), m_tree.Root()));
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    TestTree m_tree;
    std::unique_ptr<FcoeBackend> m_backend;
    Records m_whole;
};

Texts Fields(const std::string& line)
{
    Texts fields{""};
    for (const char c : line)
        if (c == '|')
            fields.emplace_back();
        else
            fields.back() += c;
    return fields;
}

// The fields that differ became empty or 0.
void ExpectOnlyEmptied(const std::string& line, const std::string& whole)
{
    const Texts seen = Fields(line);
    const Texts expected = Fields(whole);
    ASSERT_EQ(seen.size(), expected.size()) << line;
    for (std::size_t i = 0; i < seen.size(); ++i)
        EXPECT_TRUE(seen[i] == expected[i] || seen[i].empty() || seen[i] == "0") << line << " instead of " << whole;
}

TEST_F(SysfsUnreadable, AFileTakesItsOwnValueAndNothingElse)
{
    const std::pair<const char*, void (*)(TestTree&, const std::string&)> kinds[] = {
        {"missing", [](TestTree&, const std::string&) {}},
        {"empty", [](TestTree& tree, const std::string& path) { tree.File(path, ""); }},
        {"a folder", [](TestTree& tree, const std::string& path) { tree.Folder(path); }},
        {"a FIFO", [](TestTree& tree, const std::string& path) { tree.Fifo(path); }},
        {"a link", [](TestTree& tree, const std::string& path) { tree.Link(path, "/etc/hostname"); }},
    };
    const Texts files = Below(std::string(Net) + "eth0", fs::file_type::regular);
    EXPECT_GT(files.size(), 45u);
    std::set<std::string> vital;
    for (const std::string& path : files)
    {
        const std::string file = fs::path(path).filename();
        const std::string text = m_tree.Read(path);
        for (const auto& [kind, damage] : kinds)
        {
            SCOPED_TRACE(path + " is " + kind);
            m_tree.Remove(path);
            damage(m_tree, path);
            const Records seen = Read();
            ExpectTheOtherAdapterWhole(seen);
            for (const auto& [name, lines] : seen)
            {
                const auto found = Vital.find(file);
                const std::size_t lost = found != Vital.end() && found->second.contains(name) ? 1 : 0;
                const Texts whole = Of("eth0", m_whole[name]);
                const Texts own = Of("eth0", lines);
                ASSERT_EQ(own.size(), whole.size() - lost) << name;
                if (lost == 0 && !Shaping.contains(file))
                    for (std::size_t i = 0; i < own.size(); ++i)
                        ExpectOnlyEmptied(own[i], whole[i]);
            }
            m_tree.Remove(path);
            m_tree.File(path, text);
        }
        if (Vital.contains(file))
            vital.insert(file);
    }
    EXPECT_EQ(vital.size(), Vital.size()) << "every vital file was tried";
    EXPECT_EQ(Read(), m_whole) << "all is as it was";
}

TEST_F(SysfsUnreadable, AFolderTakesWhatIsBelowItAndNothingElse)
{
    const Texts folders = Below(std::string(Net) + "eth0", fs::file_type::directory);
    EXPECT_GE(folders.size(), 25u);
    for (const std::string& path : folders)
    {
        SCOPED_TRACE(path + " is gone");
        fs::rename(m_tree.At(path), m_tree.At("away"));
        const Records seen = Read();
        ExpectTheOtherAdapterWhole(seen);
        for (const auto& [name, lines] : seen)
            EXPECT_LE(lines.size(), m_whole[name].size()) << name;
        fs::rename(m_tree.At("away"), m_tree.At(path));
    }
    EXPECT_EQ(Read(), m_whole) << "all is as it was";
}

} // namespace
} // namespace orl
