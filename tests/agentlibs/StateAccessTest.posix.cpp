// Who may touch the state file, and through what.

#include "VirtualPorts.h"

#include <sys/stat.h>
#include <unistd.h>

namespace orl::test
{

namespace
{

// The rights of nobody in particular, for as long as it lives; root's are given back.
class AsNobody
{
public:
    AsNobody() : m_isRoot(geteuid() == 0)
    {
        if (m_isRoot && seteuid(65534) != 0)
            throw std::runtime_error("seteuid");
    }
    ~AsNobody()
    {
        if (m_isRoot && seteuid(0) != 0)
            std::abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    const bool m_isRoot;
};

class StateAccess : public VirtualPortFixture
{
protected:
    std::string Refusal(FcoeBackend& backend) { return Create(backend, L"eth0"); }
};

const std::string San = R"({"hbas": [{"deviceId": "eth0"}]})";
const std::string Link = ": is a symbolic link, and none is followed here";

} // namespace

TEST_F(StateAccess, IsTheWritersAlone)
{
    const auto backend = Backend(San);
    const mode_t before = umask(0);
    EXPECT_EQ(Create(*backend, L"eth0").size(), 16u);
    umask(before);
    for (const char* name : {"san.json.state", "san.json.state.lock"})
    {
        struct stat status = {};
        ASSERT_EQ(stat((m_folder / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0600u) << name;
    }
}

TEST_F(StateAccess, NeverGoesThroughALink)
{
    const std::filesystem::path elsewhere = m_folder / "elsewhere";
    for (const char* name : {"san.json.state", "san.json.state.lock", "san.json.state.tmp"})
    {
        const std::string precious = "{\"version\": 1}";
        std::ofstream(elsewhere, std::ios::trunc) << precious;
        std::filesystem::remove(m_folder / name);
        std::filesystem::create_symlink(elsewhere, m_folder / name);
        const auto backend = Backend(San);
        EXPECT_EQ(Refusal(*backend), std::string(name).substr(8) + Link);
        EXPECT_EQ(m_code, static_cast<ULONG>(ERROR_ACCESS_DENIED));
        EXPECT_EQ(BytesOfFile(elsewhere), precious);
        EXPECT_TRUE(std::filesystem::is_symlink(m_folder / name)) << "it stays, for somebody to wonder at";
        std::filesystem::remove(m_folder / name);
    }
}

TEST_F(StateAccess, NeverGoesThroughALinkThatLeadsNowhere)
{
    for (const char* name : {"san.json.state", "san.json.state.lock", "san.json.state.tmp"})
    {
        std::filesystem::remove(m_folder / name);
        std::filesystem::create_symlink(m_folder / "nowhere", m_folder / name);
        const auto backend = Backend(San);
        EXPECT_EQ(Refusal(*backend), std::string(name).substr(8) + Link);
        EXPECT_FALSE(std::filesystem::exists(m_folder / "nowhere"));
        std::filesystem::remove(m_folder / name);
    }
}

TEST_F(StateAccess, ThroughALinkIsAnErrorOfReadingToo)
{
    std::ofstream(m_folder / "elsewhere") << "{\"version\": 1}";
    std::filesystem::create_symlink(m_folder / "elsewhere", m_statePath);
    std::vector<ORL_FCOE_PORT> ports;
    const auto backend = Backend(San);
    EXPECT_EQ(ErrorOf([&] { return backend->EnumeratePorts(L"", ports, m_status); }), ".state" + Link);
}

TEST_F(StateAccess, IsNotHeldUpByAPipe)
{
    ASSERT_EQ(mkfifo(m_statePath.c_str(), 0600), 0);
    EXPECT_EQ(Refusal(*Backend(San)), ".state: is no regular file");
    std::filesystem::remove(m_statePath);
    std::filesystem::remove(m_folder / "san.json.state.lock");
    ASSERT_EQ(mkfifo((m_folder / "san.json.state.lock").c_str(), 0600), 0);
    EXPECT_EQ(Refusal(*Backend(San)), ".state.lock: is no regular file");
}

TEST_F(StateAccess, NeedsAFolderThatCanBeWritten)
{
    // Where everybody can get to.
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("orl-state-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const std::filesystem::path path = folder / "san.json";
    std::ofstream(path) << San;
    std::filesystem::permissions(folder, std::filesystem::perms(0555));
    const auto backend = MakeInventoryBackend({L"inventory", path.wstring(), {}});
    {
        const AsNobody nobody;
        EXPECT_EQ(Refusal(*backend), path.string() + ".state.lock: cannot be opened for writing: Permission denied");
        EXPECT_EQ(m_code, static_cast<ULONG>(ERROR_ACCESS_DENIED));
        EXPECT_TRUE(Ports(*backend).empty()) << "what is there can still be asked for";
    }
    std::filesystem::permissions(folder, std::filesystem::perms(0755));
    std::filesystem::remove_all(folder);
}

TEST_F(StateAccess, SurvivesTheRemovalOfTheLockFile)
{
    const auto backend = Backend(San);
    EXPECT_EQ(Create(*backend, L"eth0").size(), 16u);
    std::filesystem::remove(m_folder / "san.json.state.lock");
    EXPECT_EQ(Create(*backend, L"eth0").size(), 16u);
    EXPECT_EQ(Names(*backend).size(), 2u);
}

} // namespace orl::test
