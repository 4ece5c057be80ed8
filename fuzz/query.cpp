// Queries over a namespace: what is refused says why, what is admitted and what its NOT admits are apart, a query
// answers as its canonical text does, and an association leads back from what it leads to.
#include "fuzz/Require.h"
#include "host/Host.h"
#include "host/ObjectNames.h"
#include "host/QueryRunner.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace
{

using orl::CallFailure;

// All kinds of properties with and without values, a class below another, and associations in both directions, with an
// end that leads nowhere.
constexpr std::wstring_view kSchema = LR"(
#pragma namespace("\\\\.\\root\\KESTA")
class Room { [key] string Name; [key] uint32 Floor; boolean HasWindow = TRUE; };
class Shade { string Material; uint8 Layers[]; };
[Powered] class Lamp
{
    [key] string Name;
    uint8 Small; sint64 Balance; uint64 Hours; real32 Dim; real64 Bright; boolean IsOn; char16 Letter;
    datetime Installed; string Colors[]; Shade Cover; Room ref Place;
};
class Bulb : Lamp { string Socket; };
[association] class Lights { [key] Lamp ref Antecedent; [key] Room ref Dependent; uint32 Order; };
[association, Wired] class Chains { [key] Lamp ref Left; [key] Lamp ref Right; };
instance of Room { Name = "Hall"; Floor = 0; };
instance of Room { Name = "Attic"; Floor = 3; HasWindow = FALSE; };
instance of Lamp { Name = "empty"; };
instance of Lamp
{
    Name = "full"; Small = 255; Balance = -9223372036854775808; Hours = 18446744073709551615; Dim = 0.5; Bright = -1e300;
    IsOn = TRUE; Letter = 120; Installed = "20260101120000.000000+060"; Colors = { "red", NULL, "" };
    Cover = instance of Shade { Material = "silk"; Layers = { 1, 2 }; }; Place = "Room.Name=\"Hall\",Floor=0";
};
instance of Bulb { Name = "100%_[a]"; Hours = 9007199254740993; Balance = 9007199254740993; Socket = "E27"; };
instance of Lights { Antecedent = "Lamp.Name=\"full\""; Dependent = "room.FLOOR=\"3\",name='attic'"; Order = 1; };
instance of Lights { Antecedent = "Lamp=\"FULL\""; Dependent = "\\\\.\\root\\KESTA:Room.Name=\"Hall\",Floor=0"; };
instance of Lights { Antecedent = "Lamp.Name=\"nowhere\""; Dependent = "Room.Name=\"Hall\",Floor=0"; };
instance of Chains { Left = "Bulb.Name=\"100%_[a]\""; Right = "Lamp.Name=\"full\""; };
instance of Chains { Left = "Lamp.Name=\"full\""; Right = "Lamp.Name=\"full\""; };
)";

orl::Host& Service()
{
    static orl::Host host([] { return orl::Repository::FromText(kSchema); },
                          [](const std::wstring&, IUnknown**) -> HRESULT { return REGDB_E_CLASSNOTREG; });
    return host;
}

// Classes by name, instances by their path.
class Answer : public orl::ResultSink
{
public:
    HRESULT Deliver(orl::Objects& objects) override
    {
        Require(!m_isFinished);
        for (const auto& object : objects)
            m_paths.push_back(orl::RelativePath(*object->Body()).value_or(L""));
        objects.clear();
        return WBEM_S_NO_ERROR;
    }
    void Finish(orl::CallStatus status) override
    {
        Require(!m_isFinished);
        m_isFinished = true;
        m_status = std::move(status);
    }

    HRESULT Code() const
    {
        Require(m_isFinished);
        return m_status.code;
    }
    std::vector<std::wstring> Sorted() const
    {
        auto paths = m_paths;
        std::sort(paths.begin(), paths.end());
        return paths;
    }

private:
    std::vector<std::wstring> m_paths;
    orl::CallStatus m_status;
    bool m_isFinished = false;
};

struct Outcome
{
    HRESULT code = WBEM_S_NO_ERROR;
    std::vector<std::wstring> paths; // sorted

    bool operator==(const Outcome&) const = default;
};

Outcome Ask(const std::wstring& text)
{
    try
    {
        const orl::Namespace& nameSpace = *Service().Schema().FindNamespace({L"root", L"KESTA"});
        const auto request = orl::MakeQuery({Service(), nameSpace, nullptr, 0}, L"WQL", text);
        const auto answer = orl::MakeRef<Answer>();
        const auto call = orl::MakeRef<orl::Call>();
        request->Run(*call, *answer);
        return {answer->Code(), answer->Sorted()};
    }
    catch (const CallFailure& failure)
    {
        Require(FAILED(failure.status.code) && !failure.status.description.empty());
        return {failure.status.code, {}};
    }
}

void CheckSelect(const wbem::WqlQuery& query, const Outcome& outcome)
{
    wbem::WqlQuery all = query;
    all.where.reset();
    const Outcome everything = Ask(all.Text());
    Require(
        std::includes(everything.paths.begin(), everything.paths.end(), outcome.paths.begin(), outcome.paths.end()));
    if (!query.where)
        return;
    wbem::WqlQuery opposite = query;
    opposite.where.emplace();
    opposite.where->kind = wbem::WqlCondition::Kind::Not;
    opposite.where->operands.push_back(*query.where);
    const std::wstring text = opposite.Text();
    if (text.size() > wbem::kMaxQueryLength || !wbem::WqlQuery::Parse(text))
        return; // one NOT too many
    const Outcome others = Ask(text);
    Require(others.code == WBEM_S_NO_ERROR);
    for (const std::wstring& path : others.paths)
        Require(!std::binary_search(outcome.paths.begin(), outcome.paths.end(), path));
}

void CheckAssociation(const wbem::WqlQuery& query, const Outcome& outcome)
{
    wbem::WqlQuery all;
    all.kind = query.kind;
    all.object = query.object;
    all.objectText = query.objectText;
    all.schemaOnly = query.schemaOnly;
    const Outcome everything = Ask(all.Text());
    Require(everything.code == WBEM_S_NO_ERROR);
    if (query.classDefsOnly || query.schemaOnly)
        return;
    Require(
        std::includes(everything.paths.begin(), everything.paths.end(), outcome.paths.begin(), outcome.paths.end()));
    if (query.kind == wbem::WqlKind::References)
        return;
    for (const std::wstring& path : outcome.paths)
        Require(!Ask(L"REFERENCES OF {" + path + L"}").paths.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = wbem::FromUtf8({reinterpret_cast<const char*>(data), size});
    const Outcome outcome = Ask(text);
    const auto query = wbem::WqlQuery::Parse(text);
    Require(query || outcome.code == WBEM_E_INVALID_QUERY);
    if (!query)
        return 0;
    const std::wstring printed = query->Text();
    if (printed.size() <= wbem::kMaxQueryLength)
        Require(Ask(printed) == outcome);
    if (FAILED(outcome.code))
        return 0;
    if (query->kind != wbem::WqlKind::Select)
        CheckAssociation(*query, outcome);
    else
        CheckSelect(*query, outcome);
    return 0;
}
