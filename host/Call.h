// One call of a client while it is under way: what there is to cancel.
#pragma once

#include "host/Ref.h"

#include <mutex>

namespace orl
{

class ProviderCall;

// Thread safe.
class Call : public RefCounted
{
public:
    Call();
    ~Call() override;

    // Ends the provider's part of the call, now and later: it answers WBEM_E_CALL_CANCELLED.
    void Cancel();
    bool IsCancelled() const;

    // Brackets the call of a provider. False when the client has cancelled already.
    bool Begin(const Ref<ProviderCall>& providerCall);
    void End();

private:
    mutable std::mutex m_mutex;
    bool m_isCancelled = false;
    Ref<ProviderCall> m_current;
};

} // namespace orl
