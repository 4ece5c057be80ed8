// Buffering, and receivers that go away.
#include "tools/orlwmi/Client.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Output.h"

#include "tests/client/ClientRun.h"

#include <gtest/gtest.h>

using namespace orl::client;
using orl::test::MemoryOutput;

namespace
{

TEST(ClientOutput, HoldsBackUntilFlushed)
{
    MemoryOutput output;
    output.Write("a");
    output.Write("b");
    EXPECT_TRUE(output.Pieces().empty());
    output.Flush();
    EXPECT_EQ(output.Pieces(), std::vector<std::string>{"ab"});
    output.Flush();
    EXPECT_EQ(output.Pieces().size(), 1U) << "nothing to send";
}

TEST(ClientOutput, SendsAFullBuffer)
{
    MemoryOutput output;
    const std::string half(Output::BufferSize / 2, 'x');
    output.Write(half);
    EXPECT_TRUE(output.Pieces().empty());
    output.Write(half);
    EXPECT_EQ(output.Pieces(), std::vector<std::string>{half + half});
}

class FailingOutput : public Output
{
public:
    explicit FailingOutput(bool gone) : m_gone(gone) {}
    int attempts = 0;

protected:
    void Send(std::string_view) override
    {
        ++attempts;
        if (m_gone)
        {
            throw ReceiverGone();
        }
        throw Failure(ExitCode::NoOutput, "the output could not be written: No space left on device");
    }

private:
    bool m_gone;
};

TEST(ClientOutput, DoesNotSendAgainWhatCouldNotBeSent)
{
    FailingOutput output(false);
    output.Write("x");
    EXPECT_THROW(output.Flush(), Failure);
    EXPECT_NO_THROW(output.Flush());
    EXPECT_EQ(output.attempts, 1);
}

TEST(ClientOutput, EndsQuietlyWhenItsReceiverGoes)
{
    FailingOutput output(true);
    std::string errors;
    EXPECT_EQ(RunClient({"--help"}, output, [&](const std::string& lines) { errors += lines; }), ExitCode::Done);
    EXPECT_EQ(errors, "");
}

TEST(ClientOutput, TellsWhenItCannotBeWritten)
{
    FailingOutput output(false);
    std::string errors;
    EXPECT_EQ(RunClient({"--help"}, output, [&](const std::string& lines) { errors += lines; }), ExitCode::NoOutput);
    EXPECT_EQ(errors, "orlwmi: the output could not be written: No space left on device\n");
}

} // namespace
