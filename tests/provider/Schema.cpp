#include "tests/provider/Schema.h"

#include "tests/provider/Fixture.h"

#include <filesystem>

namespace orl::test
{

wbem::MofClass Schema(const std::wstring& name)
{
    const std::filesystem::path file = std::filesystem::path(ORL_SOURCE_DIR) / "schema" / (name + L".mof");
    const wbem::MofResult read = wbem::ReadMofFile(file);
    if (!read)
    {
        ADD_FAILURE() << Narrow(read.Error().Text());
        return {};
    }
    for (const wbem::MofDeclaration& declaration : read->declarations)
    {
        if (const auto* found = std::get_if<wbem::MofClass>(&declaration); found != nullptr && found->name == name)
            return *found;
    }
    ADD_FAILURE() << file << " does not declare its class";
    return {};
}

std::vector<std::wstring> Keys(const wbem::MofClass& schema)
{
    std::vector<std::wstring> keys;
    for (const wbem::MofProperty& property : schema.properties)
    {
        if (wbem::FindQualifier(property.qualifiers, L"key") != nullptr)
            keys.push_back(property.name);
    }
    return keys;
}

VARTYPE Travels(const wbem::MofType& type)
{
    VARTYPE single = VT_EMPTY;
    switch (type.type)
    {
    case wbem::CimType::String:
    case wbem::CimType::Reference:
    case wbem::CimType::SInt64:
    case wbem::CimType::UInt64:
        single = VT_BSTR;
        break;
    case wbem::CimType::Boolean:
        single = VT_BOOL;
        break;
    case wbem::CimType::SInt32:
    case wbem::CimType::UInt32:
    case wbem::CimType::UInt16:
        single = VT_I4;
        break;
    default:
        break;
    }
    return static_cast<VARTYPE>(type.isArray ? VT_ARRAY | single : single);
}

} // namespace orl::test
