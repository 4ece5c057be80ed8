// What the back end opens, and what it makes of a tree that changes while it is read.

#include "agentlibs/Text.h"
#include "tests/agentlibs/sysfs/RecordText.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <sys/inotify.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace orl
{
namespace
{

using Texts = std::vector<std::string>;
using Enumeration = Texts (*)(FcoeBackend&, const wchar_t*);

constexpr std::pair<const char*, Enumeration> Enumerations[] = {
    {"HBAs", &Hbas}, {"ports", &Ports}, {"fabrics", &Fabrics},       {"targets", &Targets},
    {"LUNs", &Luns}, {"VLANs", &Vlans}, {"statistics", &Statistics},
};

// Tells what is opened in a folder and below.
class Watch
{
public:
    explicit Watch(const fs::path& folder) : m_fd(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        Add(folder);
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (entry.is_directory() && !entry.is_symlink())
                Add(entry.path());
        Opens(); // those of the walk above
    }
    ~Watch() { close(m_fd); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // How many times something was opened since the last call.
    int Opens()
    {
        int count = 0;
        alignas(inotify_event) char events[16384];
        for (ssize_t got = 0; (got = read(m_fd, events, sizeof events)) > 0;)
            for (ssize_t at = 0; at < got; ++count)
                at += static_cast<ssize_t>(sizeof(inotify_event) +
                                           reinterpret_cast<const inotify_event*>(events + at)->len);
        return count;
    }

private:
    void Add(const fs::path& folder)
    {
        if (inotify_add_watch(m_fd, folder.c_str(), IN_OPEN) < 0)
            ADD_FAILURE() << "cannot watch " << folder;
    }

    int m_fd;
};

TEST(SysfsOpens, AskingForOneHbaOpensNothingOfAnother)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    AddHba(tree, "eth1", 1);
    AddVirtualPort(tree, "eth1", 1, 1, 7);
    const auto backend = tree.Backend();
    Watch own(tree.At(std::string(Net) + "eth0"));
    Watch other(tree.At(std::string(Net) + "eth1"));
    for (const auto& [name, enumerate] : Enumerations)
    {
        EXPECT_FALSE(enumerate(*backend, L"eth0").empty()) << name;
        EXPECT_GT(own.Opens(), 0) << name;
        EXPECT_EQ(other.Opens(), 0) << name;
    }
    Hbas(*backend, L"");
    EXPECT_GT(other.Opens(), 0) << "the watch sees what is opened";
}

TEST(SysfsOpens, AnHbaThatIsNotThereOpensNothing)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    Watch watch(tree.At(std::string(Net) + "eth0"));
    for (const auto& [name, enumerate] : Enumerations)
        EXPECT_TRUE(enumerate(*tree.Backend(), L"eth7").empty()) << name;
    EXPECT_EQ(watch.Opens(), 0);
}

TEST(SysfsOpens, NoDescriptorIsLeftOpen)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    AddVirtualPort(tree, "eth0", 0, 1, 7);
    tree.Fifo(std::string(Net) + "eth0/ctlr_0/host0/fc_host/host0/speed");
    const auto count = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    const auto backend = tree.Backend();
    const auto before = count();
    for (const auto& [name, enumerate] : Enumerations)
        enumerate(*backend, L"");
    COrlString portName = L"2101525400fc0000";
    CResult status;
    EXPECT_THROW(backend->Uninstall(status), BackendError);
    EXPECT_TRUE(backend->RefreshTargets(L"eth0", status));
    EXPECT_EQ(count(), before);
}

// Takes a device out of the tree and puts it back, over and over.
class Flapping
{
public:
    Flapping(const TestTree& tree, const std::string& path)
        : m_there(tree.At(path)), m_away(tree.At("away" + std::to_string(s_count++))), m_thread([this] { Run(); })
    {
    }
    ~Flapping()
    {
        m_stop = true;
        m_thread.join();
    }
    Flapping(const Flapping&) = delete;
    Flapping& operator=(const Flapping&) = delete;

private:
    void Run()
    {
        while (!m_stop)
        {
            fs::rename(m_there, m_away);
            std::this_thread::yield();
            fs::rename(m_away, m_there);
            std::this_thread::yield();
        }
    }

    static inline std::atomic<int> s_count{0};
    fs::path m_there;
    fs::path m_away;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

// Devices come and go; a record is told whole or not at all, and those of the devices that stay are all told.
TEST(SysfsVanishing, ADeviceThatGoesTakesItsOwnRecordsOnly)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    AddHba(tree, "eth1", 1);
    AddVirtualPort(tree, "eth1", 1, 1, 7);
    const auto backend = tree.Backend();
    std::vector<Texts> whole;
    for (const auto& [name, enumerate] : Enumerations)
        whole.push_back(enumerate(*backend, L""));

    const Flapping controller(tree, std::string(Net) + "eth1/ctlr_1");
    const Flapping remotePort(tree, std::string(Net) + "eth0/ctlr_0/host0/rport-0:0-1");
    const Flapping forwarder(tree, std::string(Net) + "eth0/ctlr_0/fcf_0");

    // What eth0 keeps telling, and what may say less of a device than it did (a port whose forwarder is away).
    const std::set<std::string> steady{"HBAs", "ports", "VLANs", "statistics"};
    const std::set<std::string> partial{"ports"};
    constexpr int rounds = 200;
    for (int round = 0; round < rounds; ++round)
    {
        for (std::size_t i = 0; i < std::size(Enumerations); ++i)
        {
            const auto& [name, enumerate] = Enumerations[i];
            const Texts seen = enumerate(*backend, L"");
            for (const std::string& line : seen)
                EXPECT_TRUE(partial.contains(name) || std::count(whole[i].begin(), whole[i].end(), line) == 1)
                    << name << ": " << line;
            const auto ofEth0 = [](const std::string& line) { return line.starts_with("eth0|"); };
            EXPECT_TRUE(!steady.contains(name) || std::any_of(seen.begin(), seen.end(), ofEth0)) << name;
        }
    }
}

TEST(SysfsConcurrency, ManyThreadsSeeTheSame)
{
    TestTree tree;
    AddHba(tree, "eth0", 0);
    AddHba(tree, "eth1", 1);
    AddVirtualPort(tree, "eth0", 0, 1, 7);
    const auto backend = tree.Backend();
    std::vector<Texts> whole;
    for (const auto& [name, enumerate] : Enumerations)
        whole.push_back(enumerate(*backend, L""));
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    constexpr int threadCount = 8;
    constexpr int rounds = 20;
    for (int t = 0; t < threadCount; ++t)
        threads.emplace_back(
            [&]
            {
                for (int round = 0; round < rounds; ++round)
                    for (std::size_t i = 0; i < std::size(Enumerations); ++i)
                        if (Enumerations[i].second(*backend, L"") != whole[i])
                            ++differences;
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, 0);
}

} // namespace
} // namespace orl
