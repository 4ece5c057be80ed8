// Reads whatever there is, waits for each answer and looks at every object from all sides.
#include "tests/stress/Actors.h"

#include "wbem/ObjectPath.h"

namespace orl::test
{
namespace
{

constexpr LONG AnswerTime = static_cast<LONG>(std::chrono::milliseconds(LongestAnswer).count());

std::string Narrowed(std::wstring_view text)
{
    std::string narrow;
    for (const wchar_t c : text.substr(0, 200))
        narrow += c >= 0x20 && c < 0x7f ? static_cast<char>(c) : '?';
    return narrow;
}

// A path that the service writes can be read again, and names the same class.
void CheckPath(IWbemClassObject& object, Ledger& ledger)
{
    CComVariant path;
    if (FAILED(object.Get(L"__RELPATH", 0, &path, nullptr, nullptr)) || path.vt != VT_BSTR)
        return;
    const std::wstring_view text(path.bstrVal, SysStringLen(path.bstrVal));
    const auto parsed = wbem::ObjectPath::Parse(text);
    if (!parsed)
        ledger.Wrong("the path of an object cannot be read: " + Narrowed(text));
    else if (parsed->Text() != text)
        ledger.Wrong("the path of an object reads as another one: " + Narrowed(text));
}

void Examine(IWbemClassObject& object, Dice& dice, Ledger& ledger)
{
    ledger.Add(Ledger::Objects);
    CheckPath(object, ledger);
    if (!dice.OneIn(8))
        return;
    const Exposed exposed;
    if (SUCCEEDED(object.BeginEnumeration(0)))
    {
        CComBSTR name;
        CComVariant value;
        while (object.Next(0, &name, &value, nullptr, nullptr) == WBEM_S_NO_ERROR)
        {
            name.Empty();
            value.Clear();
        }
        object.EndEnumeration();
    }
    CComBSTR text;
    object.GetObjectText(0, &text);
    CComPtr<IWbemClassObject> copy;
    object.Clone(&copy);
    if (copy)
        copy->CompareTo(0, &object);
}

void ReadAll(IEnumWbemClassObject& objects, Dice& dice, Ledger& ledger)
{
    const ULONG many = static_cast<ULONG>(1 + dice.Below(40));
    for (HRESULT code = WBEM_S_NO_ERROR; code == WBEM_S_NO_ERROR;)
    {
        std::vector<IWbemClassObject*> plain(many);
        ULONG returned = 0;
        code = Ask(ledger, [&] { return objects.Next(AnswerTime, many, plain.data(), &returned); });
        if (code == WBEM_S_TIMEDOUT)
            ledger.Wrong("an enumeration was not answered");
        for (ULONG i = 0; i < returned; ++i)
        {
            CComPtr<IWbemClassObject> object;
            object.Attach(plain[i]);
            Examine(*object, dice, ledger);
        }
    }
}

void Read(World& world, IWbemServices& services, Dice& dice)
{
    Ledger& ledger = world.ledger;
    const LONG how = dice.OneIn(2) ? WBEM_FLAG_RETURN_IMMEDIATELY : 0;
    CComPtr<IEnumWbemClassObject> objects;
    CComPtr<IWbemClassObject> object;
    CComPtr<IWbemCallResult> result;
    HRESULT code = WBEM_S_NO_ERROR;
    switch (dice.Below(5))
    {
    case 0:
    {
        const CComBSTR path(SomePath(dice).c_str());
        code = Ask(ledger, [&] { return services.GetObject(path, 0, nullptr, &object, nullptr); });
        break;
    }
    case 1:
    {
        const CComBSTR path(SomePath(dice).c_str());
        code = Ask(ledger,
                   [&] { return services.GetObject(path, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, &result); });
        if (result && Ask(ledger, [&] { return result->GetResultObject(AnswerTime, &object); }) == WBEM_S_TIMEDOUT)
            ledger.Wrong("a get was not answered");
        break;
    }
    case 2:
    {
        const CComBSTR className(SomeClass(dice).c_str());
        code = Ask(ledger, [&] { return services.CreateInstanceEnum(className, how, nullptr, &objects); });
        break;
    }
    default:
    {
        const CComBSTR query(SomeQuery(dice).c_str());
        const CComBSTR language(L"WQL");
        code = Ask(ledger, [&] { return services.ExecQuery(language, query, how, nullptr, &objects); });
        break;
    }
    }
    if (FAILED(code) && (object || objects || result))
        ledger.Wrong("a call failed and left something behind");
    if (object)
        Examine(*object, dice, ledger);
    if (objects)
        ReadAll(*objects, dice, ledger);
}

} // namespace

Actor MakeReader(World& world, CComPtr<IWbemServices> services)
{
    return {"reader", [&world, services](Dice& dice) { Read(world, *services, dice); }};
}

} // namespace orl::test
