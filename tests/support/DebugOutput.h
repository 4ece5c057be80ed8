// What the process passes to the debugger.
#pragma once

#include <string>
#include <vector>

namespace orl::test
{

// Collects the texts while it lives. At most one instance lives at a time; texts are ASCII.
class DebugOutput
{
public:
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    std::vector<std::string> Texts() const;
};

} // namespace orl::test
