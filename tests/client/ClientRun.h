// Running commands of the client against a fake service, with what they print.
#pragma once

#include "tests/client/FakeWmi.h"

#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Output.h"

#include <string>
#include <vector>

namespace orl::test
{

// Keeps what is sent, in the pieces in which it was sent.
class MemoryOutput : public client::Output
{
public:
    std::string Text() const;
    const std::vector<std::string>& Pieces() const { return m_pieces; }

protected:
    void Send(std::string_view bytes) override { m_pieces.emplace_back(bytes); }

private:
    std::vector<std::string> m_pieces;
};

struct Ran
{
    client::ExitCode code = client::ExitCode::Done;
    std::string output;
    std::string errors;
};

// Parses the arguments and runs the command on the services, as the program does once it is connected.
Ran RunOn(const FakeServices& services, const std::vector<std::string>& arguments);

} // namespace orl::test
