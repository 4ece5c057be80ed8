// class: the definition of a class, as MOF or as a list of its members.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Qualifiers.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/TypeNames.h"
#include "winport/portable/Utf8.h"

#include <functional>

namespace orl::client
{
namespace
{

std::string TextOf(const CComBSTR& text)
{
    return text.m_str == nullptr ? std::string() : ToUtf8({text.m_str, text.Length()});
}

// Calls visit with the name and type of each property but the system's.
void EachProperty(IWbemClassObject* object, const std::function<void(const std::string&, LONG)>& visit)
{
    Check(object->BeginEnumeration(WBEM_FLAG_NONSYSTEM_ONLY), "cannot read the properties of a class");
    for (;;)
    {
        CComBSTR name;
        CIMTYPE type = CIM_EMPTY;
        const HRESULT status = object->Next(0, &name, nullptr, &type, nullptr);
        if (status != WBEM_S_NO_ERROR)
        {
            object->EndEnumeration();
            Check(status, "cannot read the properties of a class");
            return;
        }
        visit(TextOf(name), type);
    }
}

// The class that a reference or embedded object is of stands in the CIMTYPE qualifier: "ref:Zarn_FCOEHBA".
std::string TypeOf(IWbemClassObject* object, const std::string& name, LONG type)
{
    const Value qualifier = PropertyQualifier(object, name, "CIMTYPE");
    const auto* text = std::get_if<std::string>(&qualifier);
    const LONG element = type & ~static_cast<LONG>(CIM_FLAG_ARRAY);
    if (text == nullptr || (element != CIM_REFERENCE && element != CIM_OBJECT))
    {
        return TypeName(type);
    }
    return *text + (element == type ? "" : "[]");
}

Record Member(std::string name, std::string type, bool isKey, Value description)
{
    Record record;
    record.properties = {{"Member", std::move(name)},
                         {"Type", std::move(type)},
                         {"Key", isKey},
                         {"Description", std::move(description)}};
    return record;
}

bool IsTrue(const Value& value)
{
    const auto* flag = std::get_if<bool>(&value);
    return flag != nullptr && *flag;
}

void AppendParameters(std::string& list, IWbemClassObject* signature, const char* direction, std::string& result)
{
    if (signature == nullptr)
    {
        return;
    }
    EachProperty(signature,
                 [&](const std::string& name, LONG type)
                 {
                     const std::string typeName = TypeOf(signature, name, type);
                     if (name == "ReturnValue")
                     {
                         result = typeName;
                         return;
                     }
                     list += list.empty() ? direction : ", " + std::string(direction);
                     list += " " + typeName;
                     list += " " + name;
                 });
}

void WriteMethods(IWbemClassObject* definition, ResultWriter& writer)
{
    Check(definition->BeginMethodEnumeration(0), "cannot read the methods of a class");
    for (;;)
    {
        CComBSTR name;
        CComPtr<IWbemClassObject> in;
        CComPtr<IWbemClassObject> out;
        const HRESULT status = definition->NextMethod(0, &name, &in, &out);
        if (status != WBEM_S_NO_ERROR)
        {
            definition->EndMethodEnumeration();
            Check(status, "cannot read the methods of a class");
            return;
        }
        std::string parameters;
        std::string result = "void";
        AppendParameters(parameters, in, "in", result);
        AppendParameters(parameters, out, "out", result);
        const std::string method = TextOf(name);
        writer.Write(Member(method + "()", result + " (" + parameters + ")", false,
                            MethodQualifier(definition, method, "Description")));
    }
}

void WriteMembers(IWbemClassObject* definition, ResultWriter& writer)
{
    EachProperty(definition,
                 [&](const std::string& name, LONG type)
                 {
                     writer.Write(Member(name, TypeOf(definition, name, type),
                                         IsTrue(PropertyQualifier(definition, name, "key")),
                                         PropertyQualifier(definition, name, "Description")));
                 });
    WriteMethods(definition, writer);
}

} // namespace

void RunClass(const Options& options, Session& session)
{
    const auto definition = GetObjectAt(session.services, options.subject, session.deadline);
    if (!IsClass(definition))
    {
        throw Failure(ExitCode::Usage, options.subject + " names an instance: use orlwmi get");
    }
    session.timing.CountObject();
    const Format format = options.format.value_or(Format::Mof);
    const auto writer = MakeResultWriter(format, Shape::Many, session.output);
    if (format == Format::Mof)
    {
        writer->Write(ReadMof(definition));
    }
    else
    {
        WriteMembers(definition, *writer);
    }
    writer->End();
}

} // namespace orl::client
