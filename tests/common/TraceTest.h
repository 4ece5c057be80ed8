// What tests of the trace log stand on.
#pragma once

#include "Common/Src/OrlDebug.h"
#include "Common/Src/TraceClock.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace orl::test
{

// A product key with an installation directory of the test's own, a module log as it is before its module configured
// it, and a clock that stands still.
class TraceTest : public ::testing::Test
{
protected:
    TraceTest();
    ~TraceTest() override;

    // The module's log as after its construction; an open file is closed.
    void RestartLog();
    // Restarts and configures with the file ".\Test.txt" in the installation directory.
    void StartLog(ULONG level = 3, const wchar_t* tag = L"TEST_", ULONG maxFileSize = 0);

    std::filesystem::path LogFile() const { return m_folder / "Test.txt"; }
    // The file's lines without their ends.
    std::vector<std::string> Lines() const;
    // What follows the head in each line.
    std::vector<std::string> Messages() const;
    // Number and message of each line: "1 ENTRY:  x".
    std::vector<std::string> TiersAndMessages() const;

    TestRegistry m_registry;
    TestFolder m_folder;

private:
    TraceClock m_clock;
};

// 07:08:09.010 and the counter 0x1234ABCDEF.
TraceTime StoppedClock();

// The head of this thread's lines at the stopped clock.
std::string HeadOf(const std::string& tag, int tier);

std::string Hex(unsigned long long value);

// How this platform ends the lines of text files.
std::string LineEnd();

// The lines of a text file's bytes; a last line without an end is one too.
std::vector<std::string> SplitLines(const std::string& bytes);

} // namespace orl::test
