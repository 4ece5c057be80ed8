// COrlWmiAutoParsedObjectPath: the parser's answer in the managers' terms.

#include "framework/include/COrlWmiAutoParsedObjectPath.h"

#include "framework/src/CimVariant.h"
#include "framework/src/PropertyValue.h"
#include "wbem/ObjectPath.h"

HRESULT COrlWmiAutoParsedObjectPath::Parse(const wchar_t* path)
{
    m_className.clear();
    m_keys.clear();
    m_errorText.clear();
    const std::wstring_view text = path != nullptr ? std::wstring_view(path) : std::wstring_view();
    m_text = orl::MakeBstr(text.data(), text.size());

    const wbem::Parsed<wbem::ObjectPath> parsed = wbem::ObjectPath::Parse(text);
    if (!parsed)
    {
        m_errorText = parsed.Error().Text();
        return WBEM_E_INVALID_OBJECT_PATH;
    }
    if (parsed->IsNamespace())
    {
        m_errorText = L"it names a namespace, not a class or an instance";
        return WBEM_E_INVALID_OBJECT_PATH;
    }
    std::vector<COrlWmiNamedValue> keys;
    keys.reserve(parsed->keys.size());
    for (const wbem::PathKey& key : parsed->keys)
        keys.push_back({COrlString(key.name), orl::CimVariant(key.value)});
    m_className = parsed->className;
    m_keys = std::move(keys);
    return WBEM_S_NO_ERROR;
}

const COrlWmiNamedValue* COrlWmiAutoParsedObjectPath::GetKeyRef(const wchar_t* name, bool unnamedToo) const
{
    if (unnamedToo && m_keys.size() == 1 && m_keys.front().name.empty())
        return &m_keys.front();
    // The name of a key without one is empty, which no caller asks for by name.
    return name != nullptr && *name != L'\0' ? orl::FindNamedValue(m_keys, name) : nullptr;
}
