// DeviceProperty: one row of a device class's property table: a name, and how its value is made from a record.
#pragma once

#include "Common/Src/OrlString.h"
#include "framework/include/CWomClassObject.h"
#include "framework/include/CWomContext.h"
#include "provider/PathOf.h"
#include "provider/Zarn_Fcoe.h"

// What a row's setter is given.
template <typename Record>
struct DevicePropertyCall
{
    CWomClassObject& instance;
    const wchar_t* name;
    const Record& record;
    const CZarn_Fcoe& manager;
    CWomContext& context;
};

// The setters' results are not looked at: an instance goes out with what could be set.
template <typename Record>
struct DeviceProperty
{
    const wchar_t* name;
    void (*set)(const DevicePropertyCall<Record>& call);
};

namespace orl
{

// "0x" and upper-case hexadecimal digits without leading zeros, as addresses are written in this field.
class HexadecimalText
{
public:
    explicit HexadecimalText(ULONG value)
    {
        do
            *--m_begin = L"0123456789ABCDEF"[value & 0xF];
        while ((value >>= 4) != 0);
        *--m_begin = L'x';
        *--m_begin = L'0';
    }
    HexadecimalText(const HexadecimalText&) = delete;
    HexadecimalText& operator=(const HexadecimalText&) = delete;

    const wchar_t* Text() const { return m_begin; }

private:
    wchar_t m_room[11] = {}; // eight digits and the end
    wchar_t* m_begin = m_room + 10;
};

} // namespace orl

// The rows. Each names the record's field as a template argument.

template <auto Member>
constexpr DeviceProperty<orl::RecordOfMember<Member>> TextProperty(const wchar_t* name)
{
    return {name, [](const DevicePropertyCall<orl::RecordOfMember<Member>>& call)
            { call.instance.SetProperty(call.name, call.record.*Member); }};
}

template <auto Member>
constexpr DeviceProperty<orl::RecordOfMember<Member>> Uint32Property(const wchar_t* name)
{
    return {name, [](const DevicePropertyCall<orl::RecordOfMember<Member>>& call)
            { call.instance.SetPropertyUint32(call.name, call.record.*Member); }};
}

template <auto Member>
constexpr DeviceProperty<orl::RecordOfMember<Member>> Uint64Property(const wchar_t* name)
{
    return {name, [](const DevicePropertyCall<orl::RecordOfMember<Member>>& call)
            { call.instance.SetPropertyUint64(call.name, call.record.*Member); }};
}

template <auto Member>
constexpr DeviceProperty<orl::RecordOfMember<Member>> HexadecimalProperty(const wchar_t* name)
{
    return {name, [](const DevicePropertyCall<orl::RecordOfMember<Member>>& call)
            { call.instance.SetProperty(call.name, orl::HexadecimalText(call.record.*Member).Text()); }};
}

// A text that `Make` derives from the record.
template <typename Record, auto Make>
constexpr DeviceProperty<Record> DerivedTextProperty(const wchar_t* name)
{
    return {name,
            [](const DevicePropertyCall<Record>& call) { call.instance.SetProperty(call.name, Make(call.record)); }};
}

// The path of another object, made by one of the base's builders from one or two of the record's fields.
template <auto Builder, auto FirstKey, auto... MoreKeys>
constexpr DeviceProperty<orl::RecordOfMember<FirstKey>> ReferenceProperty(const wchar_t* name)
{
    return {name, [](const DevicePropertyCall<orl::RecordOfMember<FirstKey>>& call)
            {
                using Path = orl::PathOf<Builder, FirstKey, MoreKeys...>;
                call.instance.SetProperty(call.name, Path::Make(call.manager, call.context, call.record));
            }};
}
