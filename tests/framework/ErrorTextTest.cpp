// The error object of the thread, as COM clients read it.
#include "framework/com/ErrorText.h"

#include "com/OrlBstr.h"
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

CComPtr<IErrorInfo> TakeErrorInfo()
{
    CComPtr<IErrorInfo> error;
    GetErrorInfo(0, &error);
    return error;
}

TEST(ErrorTextTest, TellsSourceAndDescriptionAndHasNoHelp)
{
    SetErrorText(L"Orl2InstUtility", L"the class has no manager");
    const CComPtr<IErrorInfo> error = TakeErrorInfo();
    ASSERT_NE(error, nullptr);
    CComBSTR source;
    CComBSTR description;
    CComBSTR helpFile;
    EXPECT_EQ(error->GetSource(&source), S_OK);
    EXPECT_STREQ(source.m_str, L"Orl2InstUtility");
    EXPECT_EQ(error->GetDescription(&description), S_OK);
    EXPECT_STREQ(description.m_str, L"the class has no manager");
    EXPECT_EQ(error->GetHelpFile(&helpFile), S_OK);
    EXPECT_EQ(helpFile.m_str, nullptr);
    GUID guid = IID_IUnknown;
    EXPECT_EQ(error->GetGUID(&guid), S_OK);
    EXPECT_TRUE(IsEqualGUID(guid, GUID{}));
    DWORD helpContext = 7;
    EXPECT_EQ(error->GetHelpContext(&helpContext), S_OK);
    EXPECT_EQ(helpContext, 0u);
}

TEST(ErrorTextTest, RefusesToAnswerNowhere)
{
    SetErrorText(L"source", L"description");
    const CComPtr<IErrorInfo> error = TakeErrorInfo();
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(Hex{error->GetGUID(nullptr)}, Hex{E_POINTER});
    EXPECT_EQ(Hex{error->GetSource(nullptr)}, Hex{E_POINTER});
    EXPECT_EQ(Hex{error->GetDescription(nullptr)}, Hex{E_POINTER});
    EXPECT_EQ(Hex{error->GetHelpFile(nullptr)}, Hex{E_POINTER});
    EXPECT_EQ(Hex{error->GetHelpContext(nullptr)}, Hex{E_POINTER});
}

TEST(ErrorTextTest, LeavesNoOlderWordsBehindWhenThereIsNoMemory)
{
    SetErrorText(L"source", L"of an earlier call");
    OrlFailBstrAllocation(1);
    SetErrorText(L"source", L"of this call");
    OrlFailBstrAllocation(0);
    EXPECT_EQ(TakeErrorInfo(), nullptr);
    SetErrorText(L"source", L"description");
    const CComPtr<IErrorInfo> error = TakeErrorInfo();
    OrlFailBstrAllocation(1);
    CComBSTR description;
    EXPECT_EQ(Hex{error->GetDescription(&description)}, Hex{E_OUTOFMEMORY});
    OrlFailBstrAllocation(0);
    EXPECT_EQ(description.m_str, nullptr);
}

} // namespace
} // namespace orl::test
