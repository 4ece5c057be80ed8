// What one call yields, on its way to whoever asked.
#pragma once

#include "host/CallStatus.h"
#include "host/ClassObject.h"
#include "host/Ref.h"

#include <vector>

namespace orl
{

using Objects = std::vector<CComPtr<ClassObject>>;

// Receives the objects of a call and then its status. Deliver and Finish are called by one thread at a time.
class ResultSink : public RefCounted
{
public:
    // Takes the objects out of the list, or refuses them with WBEM_E_CALL_CANCELLED: nobody wants more. May wait until
    // there is room.
    virtual HRESULT Deliver(Objects& objects) = 0;
    // Once, last.
    virtual void Finish(CallStatus status) = 0;
};

} // namespace orl
