// Findings: what the doctor has looked at, and what it thinks of it.
#pragma once

#include <string>
#include <vector>

namespace orl::client
{

enum class Health
{
    Right, // as it should be
    Note,  // works, and is worth knowing
    Wrong
};

struct Finding
{
    std::string area;    // what is examined: "Registry"
    std::string subject; // the thing: a key and value, a library, a class
    Health health;
    std::string found;  // what was found
    std::string advice; // what to do; empty when there is nothing to do
};

using Findings = std::vector<Finding>;

} // namespace orl::client
