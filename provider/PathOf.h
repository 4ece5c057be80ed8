// PathOf: the path of an object that a record names: one of the base's builders, and the record's fields that it takes.
#pragma once

#include "com/OrlAtl.h"
#include "provider/Zarn_Fcoe.h"

namespace orl
{

template <typename Member>
struct RecordOf;
template <typename RecordType, typename ValueType>
struct RecordOf<ValueType RecordType::*>
{
    using Type = RecordType;
};
template <auto Member>
using RecordOfMember = typename RecordOf<decltype(Member)>::Type;

// As the builders take it: their numbers are signed.
inline const COrlString& PathArgument(const COrlString& text)
{
    return text;
}
inline LONG PathArgument(ULONG number)
{
    return static_cast<LONG>(number);
}

template <auto Builder, auto FirstField, auto... MoreFields>
struct PathOf
{
    using Record = RecordOfMember<FirstField>;

    // Throws CAtlException with E_OUTOFMEMORY.
    static CComBSTR Make(const CZarn_Fcoe& manager, CWomContext& context, const Record& record)
    {
        CComBSTR path;
        (manager.*Builder)(context, PathArgument(record.*FirstField), PathArgument(record.*MoreFields)..., path.m_str);
        return path;
    }
};

} // namespace orl
