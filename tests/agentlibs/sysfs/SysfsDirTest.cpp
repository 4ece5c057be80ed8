// Reading a tree that may hold anything.

#include "agentlibs/BackendError.h"
#include "agentlibs/fcoelink/sysfs/SysfsDir.h"
#include "tests/agentlibs/sysfs/TestTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orl::sysfs
{
namespace
{

class SysfsDir : public testing::Test
{
protected:
    SysfsDir() : m_dir(Dir::OpenPath(m_tree.Root())) {}

    TestTree m_tree;
    Dir m_dir;
};

TEST_F(SysfsDir, ReadsTheTextOfAnAttribute)
{
    m_tree.File("speed", "10 Gbit\n");
    EXPECT_EQ(m_dir.Read("speed"), "10 Gbit");
}

TEST_F(SysfsDir, WhatIsNoRegularFileReadsAsEmpty)
{
    m_tree.File("empty", "");
    m_tree.Folder("folder");
    m_tree.Fifo("fifo");
    m_tree.File("secret", "secret");
    m_tree.Link("link", "secret");
    m_tree.Link("ring", "ring");
    m_tree.Link("device", "/dev/zero");
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = m_tree.At("socket");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    for (const char* name : {"missing", "empty", "folder", "fifo", "link", "ring", "device", "socket", "", "..",
                             "folder/missing", "missing/missing"})
        EXPECT_EQ(m_dir.Read(name), "") << name;
    close(server);
}

TEST_F(SysfsDir, AFileOverTheLimitIsNoAttribute)
{
    m_tree.File("largest", std::string(MaxAttributeBytes, 'x'));
    m_tree.File("larger", std::string(MaxAttributeBytes + 1, 'x'));
    EXPECT_EQ(m_dir.Read("largest").size(), MaxAttributeBytes);
    EXPECT_EQ(m_dir.Read("larger"), "");
    EXPECT_EQ(m_dir.ReadWhole("larger", MaxAttributeBytes + 1).size(), MaxAttributeBytes + 1);
}

TEST_F(SysfsDir, AFolderOverTheLimitHasNoNames)
{
    for (const char* name : {"many/a1", "many/a2", "many/b"})
        m_tree.File(name, "x");
    const Dir many = m_dir.Open("many");
    EXPECT_EQ(many.Names("a", 3).size(), 2u);
    EXPECT_TRUE(many.Names("a", 2).empty()) << "all that is there counts, not only what is asked for";
    EXPECT_GT(MaxFolderEntries, 65536u) << "or the largest host has none of its LUNs";
}

TEST_F(SysfsDir, OpensAPathOfFoldersButNoLink)
{
    m_tree.File("a/b/c/value", "1\n");
    m_tree.Link("a/link", "b");
    EXPECT_EQ(m_dir.Open("a/b/c").Read("value"), "1");
    EXPECT_FALSE(m_dir.Open("a/link/c"));
    EXPECT_FALSE(m_dir.Open("a/link"));
    EXPECT_FALSE(m_dir.Open("a/b/c/value"));
    EXPECT_FALSE(m_dir.Open("a/missing/c"));
    EXPECT_FALSE(m_dir.Open(""));
    EXPECT_EQ(m_dir.OpenThroughLinks("a/link/c").Read("value"), "1");
}

TEST_F(SysfsDir, NothingIsInAFolderThatIsNotThere)
{
    const Dir none = m_dir.Open("missing");
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.Open("a"));
    EXPECT_FALSE(none.OpenThroughLinks("a"));
    EXPECT_EQ(none.Read("a"), "");
    EXPECT_EQ(none.Link("a"), "");
    EXPECT_TRUE(none.Names().empty());
    EXPECT_FALSE(none.Present());
    EXPECT_EQ(none.Write("a", "b"), ENOENT);
}

TEST_F(SysfsDir, ListsNamesByPrefixAndNumber)
{
    m_tree.Folder("list/fcf_10");
    m_tree.Folder("list/fcf_9");
    m_tree.File("list/other", "");
    m_tree.File("list/.hidden", "");
    const Dir list = m_dir.Open("list");
    EXPECT_EQ(list.Names("fcf_"), (std::vector<std::string>{"fcf_9", "fcf_10"}));
    EXPECT_EQ(list.Names(), (std::vector<std::string>{".hidden", "fcf_9", "fcf_10", "other"}));
    EXPECT_EQ(list.Names(), list.Names()) << "a second listing starts at the beginning";
}

TEST_F(SysfsDir, LinkTellsWhereItPoints)
{
    m_tree.Link("link", "../over/there");
    m_tree.File("file", "");
    EXPECT_EQ(m_dir.Link("link"), "../over/there");
    EXPECT_EQ(m_dir.Link("file"), "");
    EXPECT_EQ(m_dir.Link("missing"), "");
}

TEST_F(SysfsDir, AFolderIsGoneOnceItsNameIsGoneOrAnothers)
{
    m_tree.File("host0/fc_host/host0/port_name", "0x1\n");
    const Dir fc = m_dir.Open("host0/fc_host/host0");
    EXPECT_TRUE(fc.Present());
    EXPECT_TRUE(m_dir.Present());

    std::filesystem::rename(m_tree.At("host0/fc_host/host0"), m_tree.At("host0/fc_host/host1"));
    EXPECT_FALSE(fc.Present());
    EXPECT_EQ(fc.Read("port_name"), "0x1") << "what was opened stays what it was";

    m_tree.File("host0/fc_host/host0/port_name", "0x2\n");
    EXPECT_FALSE(fc.Present()) << "another device has the name now";
}

TEST_F(SysfsDir, WritesAnAttributeInOnePiece)
{
    m_tree.File("scan", "");
    EXPECT_EQ(m_dir.Write("scan", "- - -"), 0);
    EXPECT_EQ(m_tree.Read("scan"), "- - -");
}

TEST_F(SysfsDir, ARefusedWriteTellsTheReasonAndCreatesNothing)
{
    m_tree.Folder("folder");
    m_tree.File("target", "kept");
    m_tree.Link("link", "target");
    m_tree.Fifo("fifo");
    EXPECT_EQ(m_dir.Write("missing", "x"), ENOENT);
    EXPECT_FALSE(std::filesystem::exists(m_tree.At("missing")));
    EXPECT_EQ(m_dir.Write("folder", "x"), EISDIR);
    EXPECT_EQ(m_dir.Write("link", "x"), ELOOP);
    EXPECT_EQ(m_tree.Read("target"), "kept");
    EXPECT_EQ(m_dir.Write("fifo", "x"), ENXIO);
}

// Lowers the number of files that the process may have open to those that it has.
class NoMoreDescriptors
{
public:
    NoMoreDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int next = dup(0);
        close(next);
        rlimit limit = m_before;
        limit.rlim_cur = static_cast<rlim_t>(next);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~NoMoreDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

private:
    rlimit m_before = {};
};

template <class Function>
ULONG CodeOf(Function function)
{
    try
    {
        function();
    }
    catch (const BackendError& error)
    {
        return error.Code();
    }
    return 0;
}

TEST_F(SysfsDir, RunningOutOfDescriptorsIsNoMissingFile)
{
    if (ORL_TEST_SANITIZED)
        GTEST_SKIP() << "the sanitizers need descriptors of their own to look at an exception that is thrown";
    m_tree.File("folder/value", "1\n");
    ULONG read = 0;
    ULONG open = 0;
    ULONG names = 0;
    {
        const NoMoreDescriptors exhausted;
        read = CodeOf([&] { m_dir.Read("speed"); });
        open = CodeOf([&] { m_dir.Open("folder"); });
        names = CodeOf([&] { m_dir.Names(); });
    }
    EXPECT_EQ(read, static_cast<ULONG>(ERROR_TOO_MANY_OPEN_FILES));
    EXPECT_EQ(open, static_cast<ULONG>(ERROR_TOO_MANY_OPEN_FILES));
    EXPECT_EQ(names, static_cast<ULONG>(ERROR_TOO_MANY_OPEN_FILES));
    EXPECT_EQ(m_dir.Open("folder").Read("value"), "1");
}

} // namespace
} // namespace orl::sysfs
