// set and reset: properties of an instance, and settings by their names.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Actions.h"
#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Method.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/ParameterValue.h"
#include "tools/orlwmi/Qualifiers.h"
#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/settings/SettingChange.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

std::vector<Setting> ChosenSettings(const Options& options, Session& session)
{
    const AdapterChoice choice({options.hba}, session);
    return FindSettings(ReadSettings(choice, session), options.setting);
}

// "eth0 DevLossTimeout: 60 -> 30", and what follows.
std::string ChangeLine(const Setting& before, const std::string& after, const char* remark = "")
{
    return Printable(before.adapter + " " + before.name + ": " + ValueText(before, before.value) + " -> " + after) +
           remark + "\n";
}

// What the setting holds afterwards is what its adapter says then.
void TellChange(const Setting& before, Session& session)
{
    const Setting after = ReadSettingAt(before.path, session);
    session.output.Write(ChangeLine(before, ValueText(after, after.value)));
}

ExitCode SetByName(const Options& options, Session& session)
{
    ExitCode code = ExitCode::Done;
    for (const auto& setting : ChosenSettings(options, session))
    {
        session.timing.CountObject();
        const auto value = NewValue(setting, options.operands.front());
        const bool isTaken =
            OfferValues(setting.path, {value}, options.dryRun ? Intent::Validate : Intent::Set, session);
        if (!isTaken)
        {
            code = ExitCode::NotDone;
        }
        else if (options.dryRun)
        {
            const bool isNumber = value.first == "CurrentValue";
            session.output.Write(ChangeLine(setting, isNumber ? ValueText(setting, value.second) : options.operands[0],
                                            " would be taken; nothing is changed"));
        }
        else
        {
            TellChange(setting, session);
        }
    }
    return code;
}

bool IsTrue(const Value& value)
{
    const auto* flag = std::get_if<bool>(&value);
    return flag != nullptr && *flag;
}

// Puts a value into a property, if the class says that it can be written.
void Assign(IWbemClassObject* instance, IWbemClassObject* definition, const std::string& name, const std::string& text)
{
    const std::string className = ReadText(instance, L"__CLASS");
    CComVariant old;
    CIMTYPE type = CIM_EMPTY;
    const HRESULT status = instance->Get(FromUtf8(name).c_str(), 0, &old, &type, nullptr);
    if (status == static_cast<HRESULT>(WBEM_E_NOT_FOUND))
    {
        throw Failure(ExitCode::NotFound, className + " has no property " + name);
    }
    Check(status, "cannot read the property " + name);
    if (!IsTrue(PropertyQualifier(definition, name, "write")))
    {
        throw Failure(ExitCode::Usage, "the property " + name + " of " + className + " cannot be written");
    }
    CComVariant value = MakeParameterValue("the property " + name, type, {text});
    Check(instance->Put(FromUtf8(name).c_str(), 0, &value, 0), "cannot set the property " + name);
}

ExitCode SetByPath(const Options& options, Session& session)
{
    const std::string& path = options.operands.front();
    const auto instance = GetObjectAt(session.services, path, session.deadline);
    if (IsClass(instance))
    {
        throw Failure(ExitCode::Usage, path + " names a class: name an instance of it");
    }
    const auto definition = GetObjectAt(session.services, ClassPathOf(path), session.deadline);
    for (const auto& [name, text] : options.parameters)
    {
        Assign(instance, definition, name, text);
    }
    session.timing.CountObject();
    if (options.dryRun)
    {
        if (!OfferValues(path, options.parameters, Intent::Validate, session))
        {
            return ExitCode::NotDone;
        }
        session.output.Write("would change " + Printable(path) + "; nothing is changed\n");
        return ExitCode::Done;
    }
    PutInstance(session.services, instance, path, session.deadline);
    session.output.Write("changed " + Printable(path) + "\n");
    return ExitCode::Done;
}

} // namespace

ExitCode RunSet(const Options& options, Session& session)
{
    return options.setting.empty() ? SetByPath(options, session) : SetByName(options, session);
}

ExitCode RunReset(const Options& options, Session& session)
{
    ExitCode code = ExitCode::Done;
    const auto settings = options.setting.empty()
                              ? std::vector<Setting>{ReadSettingAt(options.operands.front(), session)}
                              : ChosenSettings(options, session);
    for (const auto& setting : settings)
    {
        session.timing.CountObject();
        if (ResetSetting(setting.path, session))
        {
            TellChange(setting, session);
        }
        else
        {
            code = ExitCode::NotDone;
        }
    }
    return code;
}

} // namespace orl::client
