// How failures are explained and what exit code they get.
#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Failure.h"

#include "tests/client/FakeWmi.h"

#include <gtest/gtest.h>

using namespace orl::client;
using orl::test::FakeContent;
using orl::test::Instance;
using orl::test::LeaveErrorInfo;

namespace
{

FakeContent Explanation()
{
    return orl::test::MakeExtendedStatus(L"No HBA has this device id.", L"GetObject", L"Zarn_FCOEHBA.DeviceID=\"x\"",
                                         L"Orl2InstUtility", WBEM_E_NOT_FOUND);
}

std::string LinesOf(HRESULT status, const std::string& what)
{
    try
    {
        Check(status, what);
    }
    catch (const Failure& failure)
    {
        return failure.Lines();
    }
    return "nothing thrown";
}

TEST(ClientFailure, TellsStatusTextAndExtendedStatus)
{
    LeaveErrorInfo(Explanation());
    EXPECT_EQ(
        LinesOf(WBEM_E_NOT_FOUND, "cannot get Zarn_FCOEHBA.DeviceID=\"x\""),
        "orlwmi: cannot get Zarn_FCOEHBA.DeviceID=\"x\": WBEM_E_NOT_FOUND (0x80041002): The object was not found.\n"
        "  Description: No HBA has this device id.\n"
        "  Operation: GetObject\n"
        "  ParameterInfo: Zarn_FCOEHBA.DeviceID=\"x\"\n"
        "  ProviderName: Orl2InstUtility\n"
        "  StatusCode: WBEM_E_NOT_FOUND (0x80041002)\n");
}

TEST(ClientFailure, LeavesOutWhatTheExtendedStatusDoesNotSay)
{
    FakeContent content =
        Instance(L"__ExtendedStatus", {{L"Description", CComVariant(L"why")}, {L"Operation", CComVariant()}});
    LeaveErrorInfo(content);
    EXPECT_EQ(LinesOf(WBEM_E_FAILED, "cannot x"),
              "orlwmi: cannot x: WBEM_E_FAILED (0x80041001): The request failed.\n  Description: why\n");
}

TEST(ClientFailure, IsExplainedByItsOwnCallOnly)
{
    LeaveErrorInfo(Explanation());
    ClearErrorInfo();
    EXPECT_EQ(LinesOf(WBEM_E_FAILED, "cannot x"),
              "orlwmi: cannot x: WBEM_E_FAILED (0x80041001): The request failed.\n");
    LeaveErrorInfo(Explanation());
    EXPECT_NE(LinesOf(WBEM_E_FAILED, "cannot x").find("Description"), std::string::npos);
    EXPECT_EQ(LinesOf(WBEM_E_FAILED, "cannot x").find("Description"), std::string::npos) << "taken by the first";
}

TEST(ClientFailure, SurvivesAnExplanationThatCannotBeRead)
{
    FakeContent content = Explanation();
    content.unreadable = E_FAIL;
    LeaveErrorInfo(content);
    EXPECT_EQ(LinesOf(WBEM_E_FAILED, "cannot x"),
              "orlwmi: cannot x: WBEM_E_FAILED (0x80041001): The request failed.\n");
}

TEST(ClientFailure, CannotSteerATerminal)
{
    LeaveErrorInfo(Instance(L"__ExtendedStatus", {{L"Description", CComVariant(L"\x1B[2Jgone\nnext")}}));
    EXPECT_EQ(LinesOf(WBEM_E_FAILED, "cannot get \x1B]0;x\x07"),
              "orlwmi: cannot get \\x1B]0;x\\x07: WBEM_E_FAILED (0x80041001): The request failed.\n"
              "  Description: \\x1B[2Jgone\\nnext\n");
}

TEST(ClientFailure, DoesNotHappenForSuccess)
{
    EXPECT_NO_THROW(Check(WBEM_S_NO_ERROR, "x"));
    EXPECT_NO_THROW(Check(WBEM_S_FALSE, "x"));
}

TEST(ClientFailure, HasAnExitCodeByItsStatus)
{
    EXPECT_EQ(ExitCodeOf(WBEM_E_NOT_FOUND), ExitCode::NotFound);
    EXPECT_EQ(ExitCodeOf(WBEM_E_INVALID_CLASS), ExitCode::NotFound);
    EXPECT_EQ(ExitCodeOf(WBEM_E_TIMED_OUT), ExitCode::TimedOut);
    EXPECT_EQ(ExitCodeOf(WBEM_E_INVALID_NAMESPACE), ExitCode::NoConnection);
    EXPECT_EQ(ExitCodeOf(WBEM_E_ACCESS_DENIED), ExitCode::Failed);
    EXPECT_EQ(ExitCodeOf(WBEM_E_INVALID_QUERY), ExitCode::Failed);
    EXPECT_EQ(ExitCodeOf(E_OUTOFMEMORY), ExitCode::Failed);
}

} // namespace
