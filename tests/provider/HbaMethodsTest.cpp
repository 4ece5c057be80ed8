// The methods of CZarn_FcoeHBA: what they ask of the agent, what they give back, and which failures leave them.

#include "tests/provider/DeviceCases.h"

#include "classes/Zarn_FcoeHBA.h"
#include "com/OrlBstr.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

constexpr const wchar_t* HbaPath = L"Zarn_FCOEHBA.DeviceID=\"X\"";
constexpr const wchar_t* PathWithoutDevice = L"Zarn_FCOEHBA.A=\"1\",B=\"2\"";

struct MethodCase
{
    const char* name;
    const wchar_t* method;
    bool takesName;
    std::vector<std::wstring> calls;
    std::vector<std::wstring> puts;
    bool readsPath = true;
};

// With the agent that warns of one thing and leaves the name 2101525400fc0009 behind.
const std::vector<MethodCase>& Methods()
{
    static const std::wstring warnings = L"WarningMessages={Zarn_WarningMessage{Kind=2, MessageID=7, Message=slow}}";
    static const std::vector<MethodCase> methods = {
        {"Create",
         L"CreateVirtualPort",
         true,
         {L"CreateVirtualPort(X, 2101525400fc0001)"},
         {L"PortPath=Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400fc0009\"", warnings, L"ReturnValue=0"}},
        {"Delete",
         L"DeleteVirtualPort",
         true,
         {L"DeleteVirtualPort(X, 2101525400fc0001)"},
         {warnings, L"ReturnValue=0"}},
        {"Generate",
         L"GenerateVirtualPortWWPN",
         false,
         {L"GenerateVirtualPortWWPN(X)"},
         {warnings, L"WorldWidePortName=2101525400fc0009", L"ReturnValue=0"}},
        {"Refresh", L"RefreshTargets", false, {L"RefreshTargets(X)"}, {L"ReturnValue=0"}},
        {"Uninstall", L"Uninstall", false, {L"Uninstall()"}, {L"ReturnValue=0"}, false},
    };
    return methods;
}

class HbaMethod : public ManagerTest
{
protected:
    HbaMethod()
    {
        services->Add(FakeWarningMessage());
        agent.warnings = {{2, 7, L"slow"}};
        agent.assignedName = L"2101525400fc0009";
    }

    Outcome CallMethod(const MethodCase& method, const wchar_t* path = HbaPath)
    {
        return Call(manager, path, method.method, out,
                    method.takesName ? FakeParameters{{L"WorldWidePortName", L"2101525400fc0001"}} : FakeParameters{});
    }

    FakeClassPtr out = MakeFakeClass(L"__PARAMETERS");
    CZarn_FcoeHBA manager{&agent};
};

class EachHbaMethod : public HbaMethod, public ::testing::WithParamInterface<MethodCase>
{
};

INSTANTIATE_TEST_SUITE_P(All, EachHbaMethod, ::testing::ValuesIn(Methods()),
                         [](const auto& testCase) { return testCase.param.name; });

TEST_P(EachHbaMethod, AsksTheAgentOnceAndSetsItsOutParametersInOrder)
{
    status = 0x77;
    const Outcome outcome = CallMethod(GetParam());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(agent.calls, GetParam().calls);
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x77U);
    EXPECT_EQ(agent.statusSeen.ulReserved, 0U);
    EXPECT_EQ(Shown(outcome.instances[0]), GetParam().puts);
    EXPECT_EQ(outcome.instances[0].back().type, VT_I4);
}

TEST_P(EachHbaMethod, IsKnownInAnyMixOfCases)
{
    std::wstring mixed = GetParam().method;
    for (std::size_t i = 0; i < mixed.size(); ++i)
        mixed[i] = static_cast<wchar_t>(i % 2 == 0 ? towlower(static_cast<wint_t>(mixed[i]))
                                                   : towupper(static_cast<wint_t>(mixed[i])));
    MethodCase method = GetParam();
    method.method = mixed.c_str();
    EXPECT_EQ(CallMethod(method).status, 0);
    EXPECT_EQ(agent.calls, GetParam().calls);
}

TEST_P(EachHbaMethod, SucceedsWhateverTheAgentAnswersAndPassesItsWarningsOn)
{
    agent.answer = false;
    const Outcome outcome = CallMethod(GetParam());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Shown(outcome.instances[0]), GetParam().puts);
}

TEST_P(EachHbaMethod, PathWithoutDeviceIdIsRefusedBeforeTheAgentIsAskedIfThePathIsRead)
{
    if (!GetParam().readsPath)
    {
        const Outcome outcome = CallMethod(GetParam(), PathWithoutDevice);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(Shown(outcome.instances[0]), GetParam().puts);
        EXPECT_EQ(agent.calls, GetParam().calls);
        return;
    }
    ExpectRefusal([&] { CallMethod(GetParam(), PathWithoutDevice); },
                  {0x8004090F, PathWithoutDevice, 0x80041002, L"Src\\Zarn_FCOE", 260});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(EachHbaMethod, FailureToSetTheReturnValueIsTheMethodsStatus)
{
    out->putFails[L"ReturnValue"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    EXPECT_EQ(CallMethod(GetParam()).status, static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH));
    EXPECT_EQ(agent.calls, GetParam().calls);
}

TEST_P(EachHbaMethod, TracesOneLineAndTheScopesOfItsHandler)
{
    const TraceCapture trace;
    CallMethod(GetParam());
    const std::string handler = "CZarn_FcoeHBA::" + Narrow(GetParam().method);
    std::vector<std::string> expected = {"0 CZarn_FcoeHBA::ExecMethodAsync", "1 ENTRY:  " + handler};
    const auto expectScope = [&](const std::string& name)
    {
        expected.push_back("2 ENTRY:  CZarn_Fcoe::" + name);
        expected.push_back("2 EXIT:  CZarn_Fcoe::" + name);
    };
    if (GetParam().readsPath)
        expectScope("GetDeviceIdFromPath");
    if (GetParam().method == std::wstring(L"CreateVirtualPort"))
        expectScope("MakePortPathFromWWN");
    expected.push_back("1 EXIT:  " + handler);
    EXPECT_EQ(trace.TieredMessages(), expected);
}

TEST_P(EachHbaMethod, ExceptionOfTheAgentLeavesTheCall)
{
    agent.inside = [] { throw std::runtime_error("the agent's own"); };
    EXPECT_THROW(CallMethod(GetParam()), std::runtime_error);
}

TEST_F(HbaMethod, OutParameterThatCannotBeSetIsReportedWithItsLine)
{
    const struct
    {
        const MethodCase& method;
        const wchar_t* parameter;
        const wchar_t* text;
        int line;
        std::size_t before; // how many of the method's puts came first
    } rows[] = {
        {Methods()[0], L"WarningMessages", L"CZarn_FcoeHBA::CreateVirtualPort()", 304, 1},
        {Methods()[1], L"WarningMessages", L"CZarn_FcoeHBA::DeleteVirtualPort()", 368, 0},
        {Methods()[2], L"WarningMessages", L"CZarn_FcoeHBA::DeleteVirtualPort()", 428, 0},
        {Methods()[2], L"WorldWidePortName", L"CZarn_FcoeHBA::DeleteVirtualPort()", 441, 1},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.line);
        out = MakeFakeClass(L"__PARAMETERS");
        out->putFails[row.parameter] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
        agent.calls.clear();
        const auto in = MakeObject<FakeClassObject>(MakeFakeClass(L"__PARAMETERS"));
        in->Preset(L"WorldWidePortName", CComVariant(L"2101525400fc0001"));
        const auto set = MakeObject<FakeClassObject>(out);
        ExpectRefusal([&] { Call(manager, HbaPath, row.method.method, in.p, set.p); },
                      {0x80040901, row.text, 0x80041005, L"Src\\Zarn_FCOEHBA", row.line});
        // What the agent did is done, and nothing more is set.
        EXPECT_EQ(agent.calls, row.method.calls);
        const auto first = row.method.puts.begin();
        EXPECT_EQ(Shown(set->Puts()),
                  std::vector<std::wstring>(first, first + static_cast<std::ptrdiff_t>(row.before)));
    }
}

TEST_F(HbaMethod, PathOfTheNewPortThatCannotBeSetIsLeftOut)
{
    out->putFails[L"PortPath"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    const Outcome outcome = CallMethod(Methods()[0]);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Shown(outcome.instances[0]), (std::vector<std::wstring>{Methods()[0].puts[1], Methods()[0].puts[2]}));
}

TEST_F(HbaMethod, NameIsTheUsersOwnUnlessTheAgentReplacesIt)
{
    agent.assignedName = L"";
    const Outcome outcome = CallMethod(Methods()[0]);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"PortPath"),
              L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400fc0001\"");
}

TEST_F(HbaMethod, NameThatIsMissingOrNullReachesTheAgentEmpty)
{
    agent.assignedName = L"";
    EXPECT_EQ(Call(manager, HbaPath, L"CreateVirtualPort", out).status, 0);
    EXPECT_EQ(Call(manager, HbaPath, L"DeleteVirtualPort", out).status, 0);
    EXPECT_EQ(agent.calls, (std::vector<std::wstring>{L"CreateVirtualPort(X, )", L"DeleteVirtualPort(X, )"}));
}

TEST_F(HbaMethod, NoWarningsAreAnEmptyList)
{
    agent.warnings.clear();
    const Outcome outcome = CallMethod(Methods()[1]);
    EXPECT_EQ(Shown(outcome.instances[0]), (std::vector<std::wstring>{L"WarningMessages={}", L"ReturnValue=0"}));
}

TEST_F(HbaMethod, UnknownMethodDoesNothing)
{
    for (const wchar_t* name : {L"", L"CreateVirtualPort ", L"CreateVirtualPorts", L"SetDefault"})
    {
        const Outcome outcome = Call(manager, HbaPath, name, out);
        EXPECT_EQ(static_cast<ULONG>(outcome.status), 0x80041055U) << Narrow(name);
        EXPECT_TRUE(outcome.instances[0].empty());
    }
    EXPECT_TRUE(agent.calls.empty());
}

} // namespace
} // namespace orl::test
