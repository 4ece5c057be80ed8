// Quoted values of object paths and of WQL.
#include "wbem/Quoted.h"

namespace wbem
{

bool ReadQuoted(std::wstring_view text, std::size_t& position, std::wstring& value)
{
    const wchar_t quote = text[position];
    value.clear();
    for (std::size_t i = position + 1; i < text.size(); ++i)
    {
        wchar_t c = text[i];
        if (c == quote)
        {
            position = i + 1;
            return true;
        }
        if (c == L'\\' && i + 1 < text.size())
        {
            const wchar_t next = text[i + 1];
            if (next == L'"' || next == L'\\' || next == quote)
            {
                c = next;
                ++i;
            }
        }
        value.push_back(c);
    }
    return false;
}

} // namespace wbem
