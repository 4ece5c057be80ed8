// call and delete: what they ask the service, what they print, and how they end.
#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/NearestName.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

CComVariant Text(const wchar_t* text)
{
    return CComVariant(text);
}

FakeProperty Number(const wchar_t* name, int value)
{
    return {name, CComVariant(value), CIM_UINT32, {}};
}

FakeContent Message(int kind, int id, const wchar_t* text)
{
    FakeContent message = Instance(L"Zarn_WarningMessage", {});
    message.properties = {Number(L"Kind", kind), Number(L"MessageID", id), {L"Message", Text(text), CIM_STRING, {}}};
    return message;
}

FakeProperty Messages(const std::vector<FakeContent>& messages)
{
    FakeProperty property{L"WarningMessages", CComVariant(), CIM_OBJECT | CIM_FLAG_ARRAY, {}};
    property.value.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(messages.size()));
    property.value.vt = VT_ARRAY | VT_UNKNOWN;
    for (size_t i = 0; i < messages.size(); ++i)
    {
        auto index = static_cast<LONG>(i);
        const auto object = MakeFakeObject(messages[i]);
        EXPECT_EQ(SafeArrayPutElement(property.value.parray, &index, object.p), S_OK);
    }
    return property;
}

FakeContent Out(std::vector<FakeProperty> properties)
{
    FakeContent out = Instance(L"__PARAMETERS", {});
    out.properties = std::move(properties);
    out.mof = L"instance of __PARAMETERS\n{\n};\n";
    return out;
}

constexpr const wchar_t* Path = L"Zarn_FCOEHBA.DeviceID=\"eth0\"";

class ClientActions : public testing::Test
{
protected:
    FakeServices services;

    void SetUp() override
    {
        FakeContent definition = Definition(L"Zarn_FCOEHBA");
        definition.methods = {{L"CreateVirtualPort", {{L"WorldWidePortName", CComVariant(), CIM_STRING, {}}}, {}, {}},
                              {L"RefreshTargets", {}, {}, {}},
                              {L"Tune",
                               {{L"Depth", CComVariant(), CIM_UINT32, {}},
                                {L"Names", CComVariant(), CIM_STRING | CIM_FLAG_ARRAY, {}},
                                {L"Force", CComVariant(), CIM_BOOLEAN, {}}},
                               {},
                               {}}};
        services.OnGetObject(L"Zarn_FCOEHBA", Objects({definition}));
    }

    void Answer(const wchar_t* method, std::vector<FakeProperty> out)
    {
        services.OnMethod(Path, method, Objects({Out(std::move(out))}));
    }

    Ran Call(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"call", "Zarn_FCOEHBA.DeviceID=\"eth0\""});
        return RunOn(services, arguments);
    }
};

TEST_F(ClientActions, CallPrintsTheOutParameters)
{
    Answer(L"RefreshTargets", {Number(L"ReturnValue", 0)});
    const Ran ran = Call({"refreshTARGETS"});
    EXPECT_EQ(ran.code, ExitCode::Done);
    EXPECT_EQ(ran.output, "ReturnValue : 0\n");
    EXPECT_EQ(ran.errors, "");
    EXPECT_THAT(services.Calls(),
                ElementsAre(L"GetObject(Zarn_FCOEHBA)", L"ExecMethod(" + std::wstring(Path) + L", RefreshTargets)"));
}

TEST_F(ClientActions, CallConvertsParametersByTheirDeclaredTypes)
{
    Answer(L"Tune", {Number(L"ReturnValue", 0)});
    struct Case
    {
        std::vector<std::string> parameters;
        std::wstring noted;
    };
    const Case cases[] = {
        {{"depth=0x20", "FORCE=true"}, L", Depth = I4 32, Force = BOOL true"},
        {{"Names=[a,b]"}, L", Names = BSTR[] {a, b}"},
        {{"Names=a", "Depth=1", "names=b"}, L", Depth = I4 1, Names = BSTR[] {a, b}"},
        {{"Depth=NULL"}, L", Depth = NULL"},
        {{}, L""},
    };
    for (const auto& c : cases)
    {
        std::vector<std::string> arguments{"Tune"};
        arguments.insert(arguments.end(), c.parameters.begin(), c.parameters.end());
        EXPECT_EQ(Call(arguments).errors, "");
        EXPECT_EQ(services.Calls().back(), L"ExecMethod(" + std::wstring(Path) + L", Tune" + c.noted + L")");
    }
}

TEST_F(ClientActions, CallRefusesWhatTheClassDoesNotDeclare)
{
    struct Case
    {
        std::vector<std::string> arguments;
        std::string message;
        ExitCode code;
    };
    const Case cases[] = {
        {{"CreatVirtualPort"},
         "the class Zarn_FCOEHBA has no method CreatVirtualPort; the nearest one is CreateVirtualPort",
         ExitCode::NotFound},
        {{"CreateVirtualPort", "WWPN=1"},
         "the method CreateVirtualPort has no in-parameter WWPN; the nearest one is WorldWidePortName",
         ExitCode::NotFound},
        {{"RefreshTargets", "Now=1"},
         "the method RefreshTargets has no in-parameter Now; it takes none",
         ExitCode::NotFound},
        {{"Tune", "Depth=deep"},
         "the parameter Depth wants a whole number from 0 to 4294967295, not deep",
         ExitCode::Usage},
        {{"Tune", "Depth=1", "depth=2"}, "the parameter Depth is given 2 times and takes one value", ExitCode::Usage},
    };
    for (const auto& c : cases)
    {
        const Ran ran = Call(c.arguments);
        EXPECT_EQ(ran.errors, "orlwmi: " + c.message + "\n");
        EXPECT_EQ(ran.code, c.code) << c.message;
        EXPECT_EQ(services.Calls().back(), L"GetObject(Zarn_FCOEHBA)") << "the method is not called";
    }
}

TEST_F(ClientActions, CallShowsMessagesApartFromTheResult)
{
    Answer(L"CreateVirtualPort", {{L"PortPath", Text(L"P"), CIM_STRING, {}},
                                  Messages({Message(1, 1201, L"no room\n"), Message(2, 0, L"slow")}),
                                  Number(L"ReturnValue", 0)});
    for (const std::string format : {"list", "table"})
    {
        const Ran ran = Call({"CreateVirtualPort", "WorldWidePortName=1", "--format", format});
        EXPECT_EQ(ran.errors, "error: no room\\n (message 1201)\nwarning: slow\n");
        EXPECT_EQ(ran.code, ExitCode::NotDone);
        EXPECT_EQ(ran.output, format == "list"
                                  ? "PortPath    : P\nReturnValue : 0\n"
                                  : "PortPath  ReturnValue\n--------  -----------\nP                   0\n");
    }
}

TEST_F(ClientActions, CallKeepsMessagesWhereProgramsReadThem)
{
    Answer(L"CreateVirtualPort", {Messages({Message(1, 7, L"no room")}), Number(L"ReturnValue", 0)});
    const Ran json = Call({"CreateVirtualPort", "WorldWidePortName=1", "--format", "json"});
    EXPECT_EQ(json.output, "{\n  \"WarningMessages\": [\n    {\n      \"Kind\": 1,\n      \"MessageID\": 7,\n"
                           "      \"Message\": \"no room\"\n    }\n  ],\n  \"ReturnValue\": 0\n}\n");
    EXPECT_EQ(json.errors, "");
    EXPECT_EQ(json.code, ExitCode::NotDone);
    EXPECT_THAT(Call({"CreateVirtualPort", "--format", "csv"}).output, HasSubstr("WarningMessages,ReturnValue\r\n"));
    EXPECT_EQ(Call({"CreateVirtualPort", "--format", "mof"}).output, "instance of __PARAMETERS\n{\n};\n");
}

TEST_F(ClientActions, CallEndsAsTheMethodSays)
{
    struct Case
    {
        const char* about;
        std::vector<FakeProperty> out;
        ExitCode code;
    };
    const Case cases[] = {
        {"no messages", {Messages({}), Number(L"ReturnValue", 0)}, ExitCode::Done},
        {"null messages",
         {{L"WarningMessages", CComVariant(), CIM_OBJECT | CIM_FLAG_ARRAY, {}}, Number(L"ReturnValue", 0)},
         ExitCode::Done},
        {"advice", {Messages({Message(2, 0, L"slow")}), Number(L"ReturnValue", 0)}, ExitCode::Done},
        {"an error", {Messages({Message(2, 0, L"a"), Message(1, 0, L"b")})}, ExitCode::NotDone},
        {"another return value", {Number(L"ReturnValue", 5)}, ExitCode::NotDone},
        {"a return value that is no number", {{L"ReturnValue", Text(L"5"), CIM_STRING, {}}}, ExitCode::Done},
        {"no return value", {{L"A", Text(L"b"), CIM_STRING, {}}}, ExitCode::Done},
    };
    for (const auto& c : cases)
    {
        Answer(L"RefreshTargets", c.out);
        const Ran ran = Call({"RefreshTargets"});
        EXPECT_EQ(ran.code, c.code) << c.about;
        EXPECT_THAT(ran.output, testing::Not(HasSubstr("WarningMessages"))) << c.about;
    }
}

TEST_F(ClientActions, CallTellsWhyTheServiceRefuses)
{
    services.OnMethod(Path, L"RefreshTargets",
                      Refusal(WBEM_E_METHOD_NOT_IMPLEMENTED,
                              MakeExtendedStatus(L"not here", L"ExecMethod", L"", L"", WBEM_E_METHOD_NOT_IMPLEMENTED)));
    const Ran ran = Call({"RefreshTargets"});
    EXPECT_EQ(ran.code, ExitCode::Failed);
    EXPECT_EQ(ran.output, "");
    EXPECT_THAT(ran.errors, HasSubstr("cannot call RefreshTargets of Zarn_FCOEHBA.DeviceID=\"eth0\": "
                                      "WBEM_E_METHOD_NOT_IMPLEMENTED (0x80041055)"));
    EXPECT_THAT(ran.errors, HasSubstr("\n  Description: not here\n"));
}

TEST_F(ClientActions, CallGivesUpWhenTheTimeIsOver)
{
    FakeAnswer never;
    never.never = true;
    services.OnMethod(Path, L"RefreshTargets", never);
    EXPECT_EQ(Call({"RefreshTargets", "--timeout", "0.05"}).code, ExitCode::TimedOut);
}

TEST_F(ClientActions, CallOfAStaticMethodTakesTheClass)
{
    services.OnMethod(L"Zarn_FCOEHBA", L"RefreshTargets", Objects({Out({Number(L"ReturnValue", 0)})}));
    EXPECT_EQ(RunOn(services, {"call", "Zarn_FCOEHBA", "RefreshTargets"}).output, "ReturnValue : 0\n");
}

TEST(ClassPaths, AreTheBeginningOfObjectPaths)
{
    struct Case
    {
        std::string path;
        std::string classPath;
    };
    const Case cases[] = {
        {"A", "A"},
        {"A.B=\"c\"", "A"},
        {"A=1", "A"},
        {"A=@", "A"},
        {"A.B=\"x:y.z=w\"", "A"},
        {R"(\\host.lab\root\KESTA:A.B="c:d")", R"(\\host.lab\root\KESTA:A)"},
        {"//./root/KESTA:A=\"c\"", "//./root/KESTA:A"},
        {"root/KESTA:A", "root/KESTA:A"},
        {"", ""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(ClassPathOf(c.path), c.classPath) << c.path;
    }
}

TEST(NearestNames, TakeTheFewestLetters)
{
    const std::vector<std::string> known = {"CreateVirtualPort", "DeleteVirtualPort", "Uninstall"};
    EXPECT_EQ(NearestName("createport", known), "CreateVirtualPort");
    EXPECT_EQ(NearestName("DELETEVIRTUALPRT", known), "DeleteVirtualPort");
    EXPECT_EQ(NearestName("", known), "Uninstall");
    EXPECT_EQ(NearestName("x", {}), "");
}

TEST_F(ClientActions, DeleteSaysWhatItDeleted)
{
    FakeAnswer done;
    done.atEnd = WBEM_S_NO_ERROR;
    done.slices = 2;
    services.OnDelete(L"A.B=1", done);
    services.OnDelete(L"A.B=2", done);
    const Ran ran = RunOn(services, {"delete", "A.B=1", "A.B=2"});
    EXPECT_EQ(ran.code, ExitCode::Done);
    EXPECT_EQ(ran.output, "deleted A.B=1\ndeleted A.B=2\n");
    EXPECT_EQ(ran.errors, "");
    EXPECT_THAT(services.Calls(), ElementsAre(L"DeleteInstance(A.B=1)", L"DeleteInstance(A.B=2)"));
}

TEST_F(ClientActions, DeleteTellsEachRefusalAndGoesOn)
{
    FakeAnswer done;
    done.atEnd = WBEM_S_NO_ERROR;
    services.OnDelete(
        L"A.B=1", Refusal(WBEM_E_ACCESS_DENIED,
                          MakeExtendedStatus(L"physical", L"DeleteInstance", L"A.B=1", L"p", WBEM_E_ACCESS_DENIED)));
    FakeAnswer refusedAtOnce;
    refusedAtOnce.atOnce = WBEM_E_INVALID_OBJECT_PATH;
    services.OnDelete(L"A B", refusedAtOnce);
    services.OnDelete(L"A.B=3", done);
    const Ran ran = RunOn(services, {"delete", "A.B=1", "A B", "A.B=2", "A.B=3"});
    EXPECT_EQ(ran.code, ExitCode::Failed) << "of the first failure, not of A.B=2, which is not found";
    EXPECT_EQ(ran.output, "deleted A.B=3\n");
    EXPECT_EQ(ran.errors,
              "orlwmi: cannot delete A.B=1: WBEM_E_ACCESS_DENIED (0x80041003): The user, or the class itself, does not "
              "allow it.\n"
              "  Description: physical\n  Operation: DeleteInstance\n  ParameterInfo: A.B=1\n  ProviderName: p\n"
              "  StatusCode: WBEM_E_ACCESS_DENIED (0x80041003)\n"
              "orlwmi: cannot delete A B: WBEM_E_INVALID_OBJECT_PATH (0x8004103A): The object path is not valid.\n"
              "orlwmi: cannot delete A.B=2: WBEM_E_NOT_FOUND (0x80041002): The object was not found.\n");
}

TEST_F(ClientActions, DeleteDoesNotGoOnWhenTheTimeIsOver)
{
    FakeAnswer never;
    never.never = true;
    services.OnDelete(L"A.B=1", never);
    const Ran ran = RunOn(services, {"delete", "A.B=1", "A.B=2", "--timeout", "0.05"});
    EXPECT_EQ(ran.code, ExitCode::TimedOut);
    EXPECT_THAT(services.Calls(), ElementsAre(L"DeleteInstance(A.B=1)"));
}

} // namespace
