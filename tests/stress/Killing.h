// Processes that change adapters and are killed while they do.
#pragma once

#include "tests/stress/Account.h"
#include "tests/stress/Actors.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace orl::test
{

// What the killed processes were answered, in the order of their adapters. Written by the killer alone, to be read when
// it has ended.
using KilledAccounts = std::vector<Account>;

// Starts a process on an adapter of its own, kills it at some moment, and notes what it was answered.
Actor MakeKiller(World& world, const std::filesystem::path& inventory, std::uint64_t seed, KilledAccounts& killed);

// The life of such a process: it changes its adapter and tells each step on its standard output, until it is killed.
int RunVictim(const std::filesystem::path& inventory, const std::wstring& hba, std::uint64_t seed);

} // namespace orl::test
