// The state file: sections of one document, replaced whole.

#include "VirtualPorts.h"

#include "agentlibs/inventory/StateFile.h"
#include "agentlibs/inventory/VirtualPortState.h"

#include <functional>
#include <thread>

namespace orl::test
{

namespace
{

using namespace std::chrono_literals;

class StateFiles : public VirtualPortFixture
{
protected:
    // Behind the state file's name.
    std::string StateErrorOf(const std::function<void()>& call)
    {
        const std::string text = ErrorOf([&] { return call(), true; });
        return text.starts_with(".state") ? text.substr(6) : text;
    }
    void Put(const char* section, const StateFile::Section& text)
    {
        m_file.Change(section,
                      [&](const StateDocument&, StateFile::Section& out)
                      {
                          out = text;
                          return true;
                      });
    }

    StateFile m_file{m_path.wstring()};
};

} // namespace

TEST_F(StateFiles, ThatAreNotThereHaveNoSectionsAndAreNotMadeByReading)
{
    EXPECT_EQ(m_file.Read()->Section("settings"), nullptr);
    EXPECT_EQ(m_file.Read(), m_file.Read());
    EXPECT_TRUE(Beside().empty());
}

TEST_F(StateFiles, HoldWhatWasPut)
{
    Put("settings", "[1, 2]");
    EXPECT_EQ(State(), "{\n\"version\": 1,\n\"settings\": [1, 2]\n}\n");
    const auto document = m_file.Read();
    ASSERT_NE(document->Section("settings"), nullptr);
    EXPECT_EQ(document->Section("settings")->items.size(), 2u);
    EXPECT_EQ(Beside(), (std::set<std::string>{"san.json.state", "san.json.state.lock"}));
}

TEST_F(StateFiles, KeepTheOtherSectionsByteForByte)
{
    const std::string odd = "{ \"a\" :[ 1.50, -0,1e3,\"\\u00e4\\/\" , null,true , 18446744073709551616] }";
    const std::string unknown = "\"text with } and \\\" in it\"";
    WriteState("{\"settings\":" + odd + " , \"version\" : 1, \"of another library\":\t" + unknown + "}");
    Put("virtualPorts", "{}");
    EXPECT_EQ(State(), "{\n\"settings\": " + odd + ",\n\"version\": 1,\n\"of another library\": " + unknown +
                           ",\n\"virtualPorts\": {}\n}\n");
    Put("virtualPorts", std::nullopt);
    EXPECT_EQ(State(), "{\n\"settings\": " + odd + ",\n\"version\": 1,\n\"of another library\": " + unknown + "\n}\n");
}

TEST_F(StateFiles, AreNotWrittenWhenThereIsNothingToChange)
{
    m_file.Change("settings", [](const StateDocument&, StateFile::Section&) { return false; });
    EXPECT_EQ(Beside(), std::set<std::string>{"san.json.state.lock"});
}

TEST_F(StateFiles, StayAsTheyAreWhenTheChangeThrows)
{
    Put("settings", "1");
    const std::string before = State();
    EXPECT_EQ(StateErrorOf(
                  [&]
                  {
                      m_file.Change("settings",
                                    [](const StateDocument&, StateFile::Section&) -> bool
                                    { throw BackendError(ERROR_INVALID_DATA, L"no"); });
                  }),
              "no");
    EXPECT_EQ(State(), before);
    Put("settings", "2"); // the lock was given back
}

TEST_F(StateFiles, ShowTheChangesOfOthers)
{
    EXPECT_EQ(m_file.Read()->Section("settings"), nullptr);
    StateFile other(m_path.wstring());
    for (int i = 0; i < 20; ++i)
    {
        other.Change("settings",
                     [&](const StateDocument&, StateFile::Section& out)
                     {
                         out = std::to_string(10 + i);
                         return true;
                     });
        EXPECT_EQ(m_file.Read()->Section("settings")->text, std::to_string(10 + i));
    }
}

TEST_F(StateFiles, AreParsedOnceWhileTheyStayAsTheyAre)
{
    Put("settings", "1");
    const auto document = m_file.Read();
    EXPECT_EQ(m_file.Read(), document);
    Put("settings", "1");
    EXPECT_EQ(m_file.Read(), document) << "the text is the same";
    Put("settings", "2");
    EXPECT_NE(m_file.Read(), document);
    EXPECT_EQ(document->Section("settings")->text, "1") << "who has it keeps it";
}

TEST_F(StateFiles, AreNotOpenedWhileTheirStampIsOldAndTheSame)
{
    Put("settings", "1");
    StateFile later(m_path.wstring(), 1s, [] { return StateFile::Clock::now() + 1h; });
    const auto stamp = StateFile::Clock::now();
    std::filesystem::last_write_time(m_statePath, stamp); // as finely as the runtime can
    EXPECT_EQ(later.Read()->Section("settings")->text, "1");
    EXPECT_EQ(m_file.Read()->Section("settings")->text, "1");
    {
        // In place, as no writer of ours does it, and with the time put back: nobody can see that without reading.
        std::fstream(m_statePath, std::ios::in | std::ios::out | std::ios::binary)
            << "{\n\"version\": 1,\n\"settings\": 2";
        std::filesystem::last_write_time(m_statePath, stamp);
    }
    EXPECT_EQ(later.Read()->Section("settings")->text, "1");
    EXPECT_EQ(m_file.Read()->Section("settings")->text, "2") << "while it is young, its text is compared";
}

TEST_F(StateFiles, AreLockedNoLongerThanTheWaitIsWorth)
{
    StateFile impatient(m_path.wstring(), 30ms);
    const StateDisk disk(m_statePath.wstring());
    {
        const auto held = disk.Acquire(1s);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(StateErrorOf([&] { impatient.Change("settings", [](auto&, auto&) { return true; }); }),
                  ".lock: is locked by another process or thread; waited 30 ms");
        EXPECT_EQ(m_code, static_cast<ULONG>(ERROR_BUSY));
        EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
        EXPECT_NO_THROW(impatient.Read()) << "reading waits for nobody";
    }
    EXPECT_EQ(StateErrorOf([&] { impatient.Change("settings", [](auto&, auto&) { return true; }); }), "");
}

TEST_F(StateFiles, AreWaitedForLongerWhileOthersGetOn)
{
    const StateDisk disk(m_statePath.wstring());
    StateFile impatient(m_path.wstring(), 1s);
    auto held = disk.Acquire(1s);
    std::thread second(
        [&]
        {
            impatient.Change("settings",
                             [](auto&, auto& section)
                             {
                                 section = "1";
                                 return true;
                             });
        });
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; std::chrono::steady_clock::now() - start < 2500ms; ++i)
    {
        disk.Replace(*held, "{\"version\": 1, \"other\": " + std::to_string(i) + "}");
        std::this_thread::sleep_for(100ms);
    }
    held.reset();
    second.join();
    EXPECT_EQ(m_file.Read()->Section("settings")->text, "1");
    EXPECT_NE(m_file.Read()->Section("other"), nullptr);
}

TEST_F(StateFiles, AreWaitedForByWhoComesSecond)
{
    const StateDisk disk(m_statePath.wstring());
    auto held = disk.Acquire(1s);
    std::thread second([this] { Put("settings", "1"); });
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(State(), "");
    held.reset();
    second.join();
    EXPECT_EQ(m_file.Read()->Section("settings")->text, "1");
}

TEST_F(StateFiles, LoseWhatAKilledWriterLeft)
{
    std::ofstream(m_folder / "san.json.state.tmp") << "half of a";
    Put("settings", "1");
    EXPECT_EQ(Beside(), (std::set<std::string>{"san.json.state", "san.json.state.lock"}));
    EXPECT_EQ(m_file.Read()->Section("settings")->text, "1");
}

TEST_F(StateFiles, ThatAreDamagedAreRefusedAndNeverWrittenOver)
{
    const struct
    {
        const char* text;
        const char* error;
    } cases[] = {
        {"", ":1:1: not JSON: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
             "literal"},
        {"{", ":1:2: not JSON: syntax error while parsing object key - unexpected end of input; expected string "
              "literal"},
        {"[]", ":1:1: expected an object"},
        {"{}", ":1:1: the key \"version\" is missing"},
        {"{\"version\": 2}", ":1:13: /version: expected 1: what another version says is neither read nor changed"},
        {"{\"version\": \"1\"}", ":1:13: /version: expected 1: what another version says is neither read nor changed"},
        {"{\"version\": 1,\n \"version\": 1}",
         ":2:2: the key \"version\" stands twice in this object, first at line 1, column 2"},
    };
    for (const auto& [text, error] : cases)
    {
        WriteState(text);
        EXPECT_EQ(StateErrorOf([&] { m_file.Read(); }), error) << text;
        EXPECT_EQ(StateErrorOf([&] { Put("settings", "1"); }), error) << text;
        EXPECT_EQ(m_code, static_cast<ULONG>(ERROR_INVALID_DATA));
        EXPECT_EQ(State(), text);
    }
    WriteState("{\"version\": 1}");
    EXPECT_EQ(StateErrorOf([&] { Put("settings", "1"); }), "") << "as soon as it is put right";
}

TEST_F(StateFiles, AreNeitherReadNorMadeLongerThanTheyMayBe)
{
    const std::string start = "{\"version\": 1, \"settings\": \"";
    WriteState(start + std::string(StateDisk::MaxBytes - start.size() - 2, 'x') + "\"}");
    EXPECT_EQ(StateErrorOf([&] { m_file.Read(); }), "");
    EXPECT_EQ(StateErrorOf([&] { Put("virtualPorts", "{}"); }), ": would become longer than 16777216 bytes");
    EXPECT_EQ(State().size(), StateDisk::MaxBytes);
    WriteState(start + std::string(StateDisk::MaxBytes - start.size() - 1, 'x') + "\"}");
    EXPECT_EQ(StateErrorOf([&] { m_file.Read(); }), ": is longer than 16777216 bytes");
    EXPECT_EQ(StateErrorOf([&] { Put("settings", "1"); }), ": is longer than 16777216 bytes");
}

TEST_F(StateFiles, ThatAreFoldersAreRefused)
{
    std::filesystem::create_directory(m_statePath);
    EXPECT_EQ(StateErrorOf([&] { m_file.Read(); }), ": is no regular file");
    EXPECT_EQ(StateErrorOf([&] { Put("settings", "1"); }), ": is no regular file");
}

TEST_F(StateFiles, OfAFolderThatIsNotThereCannotBeChanged)
{
    StateFile file((m_folder / "no such folder" / "san.json").wstring());
    EXPECT_THROW(file.Change("settings", [](auto&, auto&) { return true; }), BackendError);
}

} // namespace orl::test
