// How far a file's time can be trusted.
#pragma once

#include <chrono>

namespace orl
{

// File systems and runtimes count a file's time in steps of up to this. A file that is younger may have been written
// again without its time showing it, so until then its contents are compared.
inline constexpr std::chrono::seconds FileTimeStep{2};

} // namespace orl
