// Asking the provider of a class.
#pragma once

#include "host/ProviderCall.h"
#include "host/Registration.h"
#include "host/Request.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orl
{

// One call of the provider, to its end. A failure that the provider does not explain is described.
CallStatus AskProvider(const RequestScope& scope, const Registration& registration, Acceptor& acceptor,
                       ResultSink& results, Call& call, const ProviderCall::Invoke& invoke);

// Whether the registration lets the provider do something; a refusal is thrown as WBEM_E_PROVIDER_NOT_CAPABLE.
void NeedCapability(bool isCapable, const Registration& registration, const ClassDef& ofClass, const wchar_t* what);

// The instances of exactly this class: its provider's, by the query where there is one and the provider takes queries,
// else all; or those that the MOF declares.
CallStatus AskForInstances(const RequestScope& scope, const ClassDef& ofClass, const std::optional<std::wstring>& query,
                           Acceptor& acceptor, ResultSink& results, Call& call);

// Asks for one class after the other. What fails for one does not keep the others from the client; the first failure is
// the outcome.
CallStatus AskForEach(const std::vector<const ClassDef*>& classes, const Call& call,
                      const std::function<CallStatus(const ClassDef& ofClass)>& ask);

// The flags of a call as they go on to a provider: without those that say how the client waits.
LONG ProviderFlags(LONG flags) noexcept;

} // namespace orl
