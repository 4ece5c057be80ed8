// ValidateAndSetSetting and SetDefault.
#include "tools/orlwmi/settings/SettingChange.h"

#include "tools/orlwmi/Actions.h"
#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Method.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Warnings.h"

#include <algorithm>

namespace orl::client
{
namespace
{

// Runs the method and tells its messages. The methods of settings return 0 when the adapter has answered, and nothing
// when it has failed.
bool Run(const std::string& path, const char* name, const SettingValues& in, Session& session)
{
    const auto definition = GetObjectAt(session.services, ClassPathOf(path), session.deadline);
    const Method method = FindMethod(definition, name);
    const auto object = CallMethod(session.services, path, method.name, MakeInParameters(method, in), session.deadline);
    const Record out = object ? ReadRecord(object) : Record();
    const auto warnings = WarningsIn(out);
    for (const auto& warning : warnings)
    {
        session.errors(LineOf(warning));
    }
    const bool isDone = TextOf(out, "ReturnValue") == "0";
    const bool isRefused =
        std::any_of(warnings.begin(), warnings.end(), [](const Warning& warning) { return warning.isError; });
    if (!isDone && !isRefused)
    {
        session.errors("error: the adapter failed at " + method.name + " and does not say why\n");
    }
    return isDone && !isRefused;
}

} // namespace

bool OfferValues(const std::string& path, const SettingValues& values, Intent intent, Session& session)
{
    SettingValues in = values;
    in.emplace_back("SetValuesOnNoError", intent == Intent::Set ? "1" : "0");
    return Run(path, "ValidateAndSetSetting", in, session);
}

bool ResetSetting(const std::string& path, Session& session)
{
    return Run(path, "SetDefault", {}, session);
}

Setting ReadSettingAt(const std::string& path, Session& session)
{
    return ReadSetting(path, ReadRecord(GetObjectAt(session.services, path, session.deadline)));
}

} // namespace orl::client
