// The module's invalid-parameter handler.
#include "winport/src/InvalidParameter.h"

#include <atomic>

namespace
{

std::atomic<_invalid_parameter_handler> g_handler{nullptr};

} // namespace

_invalid_parameter_handler _set_invalid_parameter_handler(_invalid_parameter_handler handler)
{
    return g_handler.exchange(handler);
}

_invalid_parameter_handler _get_invalid_parameter_handler()
{
    return g_handler.load();
}

errno_t winport::Refuse(wchar_t* destination, size_t capacity, errno_t error)
{
    if (destination && capacity)
        destination[0] = L'\0';
    if (const _invalid_parameter_handler handler = g_handler.load())
        handler(nullptr, nullptr, nullptr, 0, 0);
    errno = error;
    return error;
}
