// CZarn_FcoeHBA: what is its own.

#include "classes/Zarn_FcoeHBA.h"

namespace orl
{

COrlString HbaIdOf(const ORL_FCOE_HBA& hba)
{
    const std::size_t last = hba.instancePath.rfind(L'\\');
    return last == std::wstring::npos ? hba.instancePath : COrlString(hba.instancePath.c_str() + last + 1);
}

} // namespace orl
