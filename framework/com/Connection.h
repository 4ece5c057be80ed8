// Connection: what one successful Initialize gave the provider.
#pragma once

#include "framework/com/ClassCache.h"
#include "framework/com/ManagerTable.h"

namespace orl
{

struct Connection
{
    Connection(IWbemServices* service, const ManagerTable& table) : services(service), classes(service), managers(table)
    {
    }

    CComPtr<IWbemServices> services;
    ClassCache classes;
    const ManagerTable& managers;
};

} // namespace orl
