// One call of an agent's operation: where a back end's exceptions end.

#include "agentlibs/AgentCall.h"

#include "agentlibs/Text.h"
#include "Common/Src/OrlDebug.h"

#include <new>
#include <string>

namespace orl
{

namespace
{

ULONG Report(const AgentOperation& operation, ULONG code, const wchar_t* text, std::vector<WarningMessageObj>* warnings)
{
    g_OrlDebug.Error(operation.source, __LINE__, L"%s failed with %u: %s", operation.name, code, text);
    if (warnings != nullptr)
        warnings->push_back({WarningMessageObj::KindError, 0, text});
    return code;
}

ULONG CodeOf(const std::exception& failure)
{
    if (const auto* error = dynamic_cast<const BackendError*>(&failure))
        return error->Code();
    return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr ? ERROR_NOT_ENOUGH_MEMORY : ERROR_INTERNAL_ERROR;
}

} // namespace

ULONG ReportFailure(const AgentOperation& operation, const std::exception& failure,
                    std::vector<WarningMessageObj>* warnings) noexcept
{
    const ULONG code = CodeOf(failure);
    try
    {
        if (const auto* error = dynamic_cast<const BackendError*>(&failure))
            return Report(operation, code, error->Text().c_str(), warnings);
        if (code == ERROR_NOT_ENOUGH_MEMORY)
            return Report(operation, code, L"out of memory", warnings);
        return Report(operation, code, Widen(failure.what()).c_str(), warnings);
    }
    catch (const std::exception&)
    {
        g_OrlDebug.Error(operation.source, __LINE__, L"%s: no memory for the warning", operation.name);
        return code;
    }
}

} // namespace orl
