// COrlWmiAutoParsedObjectPath: an object path that has been taken apart.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"
#include "framework/include/COrlWmiNamedValue.h"
#include "framework/include/OrlFrameworkApi.h"

#include <wbemcli.h>

#include <vector>

// Names are compared without regard to case. A path may start with a server and a namespace; both are passed over.
class ORL_FRAMEWORK_API COrlWmiAutoParsedObjectPath
{
public:
    // WBEM_E_INVALID_OBJECT_PATH for anything that is no path of a class or an instance. The object then holds the
    // text, no class and no keys, and ErrorText says what is wrong and where. Out of memory throws.
    HRESULT Parse(const wchar_t* path);

    // The key's value, owned by this object until the next Parse; null when the path lacks the key. A path with a
    // single key may leave its name out (Class="value"); `unnamedToo` takes that value for the key that is asked for.
    const COrlWmiNamedValue* GetKeyRef(const wchar_t* name, bool unnamedToo = false) const;

    // The path as it was given to Parse.
    const CComBSTR& PathText() const { return m_text; }
    const COrlString& ClassName() const { return m_className; }
    const std::vector<COrlWmiNamedValue>& Keys() const { return m_keys; }
    const COrlString& ErrorText() const { return m_errorText; }

private:
    CComBSTR m_text;
    COrlString m_className;
    std::vector<COrlWmiNamedValue> m_keys;
    COrlString m_errorText;
};
