// Registry files: no bytes crash the reader, and what was read whole is the same after it was written and read again.
#include "winport/src/RegFile.h"

#include <cstdlib>

namespace
{

bool IsSame(const winport::RegKey& left, const winport::RegKey& right)
{
    if (left.name != right.name || left.values.size() != right.values.size() || left.keys.size() != right.keys.size())
        return false;
    for (auto [a, b] = std::pair(left.values.begin(), right.values.begin()); a != left.values.end(); ++a, ++b)
    {
        if (a->second.name != b->second.name || a->second.type != b->second.type || a->second.data != b->second.data)
            return false;
    }
    for (auto [a, b] = std::pair(left.keys.begin(), right.keys.begin()); a != left.keys.end(); ++a, ++b)
    {
        if (!IsSame(a->second, b->second))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const winport::RegFile file = winport::ParseRegFile({reinterpret_cast<const char*>(data), size});
    const winport::RegFile again = winport::ParseRegFile(winport::WriteRegFile(file));
    if (!again.damage.empty() || !IsSame(file.root, again.root))
        std::abort();
    return 0;
}
