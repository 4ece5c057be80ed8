// Methods and parameters by name.
#include "tools/orlwmi/Method.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/NearestName.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/ParameterValue.h"
#include "tools/orlwmi/Text.h"
#include "winport/portable/Utf8.h"

#include <algorithm>

namespace orl::client
{
namespace
{

std::string TextOf(const CComBSTR& text)
{
    return text.m_str == nullptr ? std::string() : ToUtf8({text.m_str, text.Length()});
}

std::vector<Method> MethodsOf(IWbemClassObject* definition)
{
    constexpr const char* what = "cannot read the methods of a class";
    std::vector<Method> methods;
    Check(definition->BeginMethodEnumeration(0), what);
    for (;;)
    {
        CComBSTR name;
        Method method;
        CComPtr<IWbemClassObject> out;
        const HRESULT status = definition->NextMethod(0, &name, &method.in, &out);
        if (status != WBEM_S_NO_ERROR)
        {
            definition->EndMethodEnumeration();
            Check(status, what);
            return methods;
        }
        method.name = TextOf(name);
        methods.push_back(std::move(method));
    }
}

std::vector<std::string> ParametersOf(const Method& method)
{
    std::vector<std::string> names;
    for (const auto& property : ReadRecord(method.in).properties)
    {
        names.push_back(property.name);
    }
    return names;
}

// A parameter with all the values that the command line gives it.
struct Given
{
    std::string name; // as the method declares it
    LONG type = CIM_EMPTY;
    std::vector<std::string> values;
};

// The values of a parameter among those that are given already, or of a new one.
std::vector<std::string>& ValuesOf(std::vector<Given>& given, const Given& parameter)
{
    const auto known = std::find_if(given.begin(), given.end(),
                                    [&parameter](const Given& other) { return other.name == parameter.name; });
    return known == given.end() ? given.emplace_back(parameter).values : known->values;
}

// The parameter as the method declares it, without values.
Given Declared(const Method& method, const std::string& name)
{
    const auto known = ParametersOf(method);
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const std::string& other) { return SameName(other, name); });
    if (found == known.end())
    {
        throw Failure(ExitCode::NotFound, "the method " + method.name + " has no in-parameter " + name +
                                              "; the nearest one is " + NearestName(name, known));
    }
    CComVariant value;
    CIMTYPE type = CIM_EMPTY;
    Check(method.in->Get(FromUtf8(*found).c_str(), 0, &value, &type, nullptr),
          "cannot read the parameter " + name + " of " + method.name);
    return {*found, type, {}};
}

} // namespace

Method FindMethod(IWbemClassObject* definition, const std::string& name)
{
    std::vector<std::string> names;
    for (auto& method : MethodsOf(definition))
    {
        if (SameName(method.name, name))
        {
            return std::move(method);
        }
        names.push_back(method.name);
    }
    throw Failure(ExitCode::NotFound, "the class " + ReadText(definition, L"__CLASS") + " has no method " + name +
                                          (names.empty() ? "" : "; the nearest one is " + NearestName(name, names)));
}

CComPtr<IWbemClassObject> MakeInParameters(const Method& method,
                                           const std::vector<std::pair<std::string, std::string>>& parameters)
{
    if (!method.in)
    {
        if (!parameters.empty())
        {
            throw Failure(ExitCode::NotFound, "the method " + method.name + " has no in-parameter " +
                                                  parameters.front().first + "; it takes none");
        }
        return nullptr;
    }
    std::vector<Given> given;
    for (const auto& [name, value] : parameters)
    {
        ValuesOf(given, Declared(method, name)).push_back(value);
    }
    const std::string what = "cannot set the parameters of " + method.name;
    CComPtr<IWbemClassObject> in;
    Check(method.in->SpawnInstance(0, &in), what);
    for (const auto& parameter : given)
    {
        CComVariant value = MakeParameterValue("the parameter " + parameter.name, parameter.type, parameter.values);
        Check(in->Put(FromUtf8(parameter.name).c_str(), 0, &value, 0), what);
    }
    return in;
}

} // namespace orl::client
