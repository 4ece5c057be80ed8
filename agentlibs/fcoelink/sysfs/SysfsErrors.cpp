// What the kernel answers when it refuses.

#include "agentlibs/fcoelink/sysfs/SysfsErrors.h"

#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include <cerrno>
#include <system_error>

namespace orl::sysfs
{

ULONG ErrorCode(int error)
{
    switch (error)
    {
    case EACCES:
    case EPERM:
        return ERROR_ACCESS_DENIED;
    case EBUSY:
        return ERROR_BUSY;
    case EINVAL:
    case ERANGE:
        return ERROR_INVALID_PARAMETER;
    case ENODEV:
    case ENOENT:
    case ENXIO:
        return ERROR_DEV_NOT_EXIST;
    case EROFS:
        return ERROR_WRITE_PROTECT;
    default:
        return ERROR_GEN_FAILURE;
    }
}

std::wstring ErrorText(int error)
{
    return Wide(std::generic_category().message(error));
}

} // namespace orl::sysfs
