// FcoeBackend: what stands behind the FCoE agent and knows where the device data comes from.
#pragma once

#include "agent/OrlFcoeAgentIntf.h"
#include "agentlibs/BackendConfig.h"

#include <memory>
#include <string>

namespace orl
{

// The operations are those of the agent, with the same meaning of device ids, lists and results, except that a failure
// is thrown as BackendError instead of being answered with false. Answering false is for an enumeration or an action
// that has nothing to say about why.
//
// A device id that the back end does not know is no failure of an enumeration: the list stays empty and the answer is
// true. It is one of an action.
//
// Any number of threads may be inside a back end at once.
class FcoeBackend : public COrlFcoeAgentIntf
{
public:
    // Looks afresh: reads what an enumeration would read. Throws nothing but std::bad_alloc.
    virtual BackendStatus Status() = 0;
};

// The factories never fail because of what they find, only for want of memory: what is wrong with the source shows in
// Status() and in each operation, so that it can be put right while the process runs.
std::unique_ptr<FcoeBackend> MakeInventoryBackend(const BackendConfig& config);
std::unique_ptr<FcoeBackend> MakeSysfsBackend(const BackendConfig& config);

// A back end all of whose operations fail with this error.
std::unique_ptr<FcoeBackend> MakeUnavailableBackend(std::wstring source, const BackendError& error);

// The back end that the configuration names; an unavailable one that says what is wrong when it names none.
std::unique_ptr<FcoeBackend> MakeBackend(const BackendConfig& config);

} // namespace orl
