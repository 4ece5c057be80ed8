// CWomProviderException: what it carries and how it reads.
#include "tests/framework/Fixture.h"

#include "framework/include/OrlStatusOfCurrentException.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

TEST(CWomProviderException, CarriesAllThatItWasMadeFrom)
{
    CWomContext context(nullptr);
    context.ulStatus = 7;
    const CWomProviderException failure(context, 0x8004090F, CComBSTR(L"Zarn_FCOEHBA.Name=\"x\""), WBEM_E_NOT_FOUND,
                                        L"Src\\Zarn_FCOE", 260, COrlString(L"extra"), {CComBSTR(L"a"), CComBSTR()});
    EXPECT_EQ(failure.ContextStatus(), 7u);
    EXPECT_EQ(failure.ProviderCode(), 0x8004090Fu);
    EXPECT_EQ(failure.Text(), L"Zarn_FCOEHBA.Name=\"x\"");
    EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(failure.Result(), nullptr);
    EXPECT_EQ(failure.SourceName(), L"Src\\Zarn_FCOE");
    EXPECT_EQ(failure.Line(), 260);
    EXPECT_EQ(failure.ExtraText(), L"extra");
    ASSERT_EQ(failure.Inserts().size(), 2u);
    EXPECT_STREQ(failure.Inserts()[0].m_str, L"a");
    EXPECT_EQ(failure.Inserts()[1].m_str, nullptr);
}

TEST(CWomProviderException, TakesAStatusInEveryTypeItIsWrittenIn)
{
    const CWomContext context(nullptr);
    const ULONG asUlong = 0x80041002;
    const HRESULT asHresult = WBEM_E_NOT_FOUND;
    for (const CWomProviderException& failure :
         {CWomProviderException(context, 1, CComBSTR(), asUlong, nullptr, 0),
          CWomProviderException(context, 1, CComBSTR(), asHresult, nullptr, 0),
          CWomProviderException(context, 1, CComBSTR(), 0x80041002, nullptr, 0),
          CWomProviderException(context, 1, CComBSTR(), WBEM_E_NOT_FOUND, nullptr, 0)})
        EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{static_cast<HRESULT>(0x80041002)});
}

TEST(CWomProviderException, MakesAStatusOfAnAgentsRecord)
{
    const CWomContext context(nullptr);
    struct Case
    {
        ULONG code;
        HRESULT status;
    };
    for (const Case& row : {Case{0x80041002, WBEM_E_NOT_FOUND}, Case{0x80070005, static_cast<HRESULT>(0x80070005)},
                            Case{5, WBEM_E_FAILED}, Case{0, WBEM_E_FAILED}, Case{0xFFFFFFFF, WBEM_E_FAILED}})
    {
        const CResult result{row.code, 9};
        const CWomProviderException failure(context, result, CComBSTR(L"OrlAdapterAgent::GetSetting"),
                                            L"Src\\KfgSettingMgrRoot", 127);
        EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{row.status}) << row.code;
        EXPECT_EQ(failure.ProviderCode(), row.code);
        ASSERT_NE(failure.Result(), nullptr);
        EXPECT_EQ(failure.Result()->ulErrCode, row.code);
        EXPECT_EQ(failure.Result()->ulReserved, 9u);
    }
}

TEST(CWomProviderException, KeepsAProviderCodeBesideAnAgentsRecord)
{
    const CWomContext context(nullptr);
    const CWomProviderException failure(context, 0x8004091A, CComBSTR(L"text"), CResult{3, 4}, L"Src\\X", 1);
    EXPECT_EQ(failure.ProviderCode(), 0x8004091Au);
    EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{WBEM_E_FAILED});
}

TEST(CWomProviderException, FormatsAllOfItInOneLine)
{
    CWomContext context(nullptr);
    const CWomProviderException plain(context, 0x8004090F, CComBSTR(L"Zarn_FCOEHBA.Name=\"x\""), WBEM_E_NOT_FOUND,
                                      L"Src\\Zarn_FCOE", 260);
    EXPECT_EQ(plain.FormatErrorMessage(),
              L"Zarn_FCOEHBA.Name=\"x\" (code 0x8004090F, status 0x80041002, Src\\Zarn_FCOE line 260)");
    const CWomProviderException bare(context, 0, CComBSTR(), WBEM_E_FAILED, nullptr, 0);
    EXPECT_EQ(bare.FormatErrorMessage(), L"The request failed (code 0x00000000, status 0x80041001)");
    context.ulStatus = 0x12AB;
    const CWomProviderException full(context, 0x80040901, CComBSTR(L"text"), CResult{3, 4}, L"Src\\X", 304,
                                     COrlString(L"more"), {CComBSTR(L"a"), CComBSTR(), CComBSTR(L"c")});
    EXPECT_EQ(full.FormatErrorMessage(), L"text: more [a, , c] (code 0x80040901, status 0x80041001, "
                                         L"result 0x00000003/0x00000004, request status 0x000012AB, Src\\X line 304)");
}

TEST(CWomProviderException, FormatsLineBreaksAsSpaces)
{
    const CWomContext context(nullptr);
    const CWomProviderException failure(context, 1, CComBSTR(L"a\r\nb\tc"), WBEM_E_FAILED, L"S\n", 1,
                                        COrlString(L"d\ne"), {CComBSTR(L"f\ng")});
    const COrlString line = failure.FormatErrorMessage();
    EXPECT_EQ(line.find_first_of(L"\r\n\t"), std::wstring::npos);
    EXPECT_EQ(line, L"a  b c: d e [f g] (code 0x00000001, status 0x80041001, S  line 1)");
}

TEST(OrlStatusOfCurrentException, GivesEveryExceptionAFailedStatus)
{
    const CWomContext context(nullptr);
    struct Case
    {
        std::function<void()> raise;
        HRESULT status;
    };
    const std::vector<Case> cases = {
        {[&] { throw CWomProviderException(context, 1, CComBSTR(), WBEM_E_ACCESS_DENIED, nullptr, 0); },
         WBEM_E_ACCESS_DENIED},
        {[&] { throw CWomProviderException(context, 1, CComBSTR(), WBEM_S_NO_ERROR, nullptr, 0); }, WBEM_E_FAILED},
        {[] { throw CAtlException(E_OUTOFMEMORY); }, E_OUTOFMEMORY},
        {[] { throw CAtlException(S_FALSE); }, WBEM_E_FAILED},
        {[] { throw std::bad_alloc(); }, WBEM_E_OUT_OF_MEMORY},
        {[] { throw std::runtime_error("x"); }, WBEM_E_FAILED},
        {[] { throw 5; }, WBEM_E_FAILED},
    };
    for (const Case& row : cases)
    {
        try
        {
            row.raise();
        }
        catch (...)
        {
            EXPECT_EQ(Hex{OrlStatusOfCurrentException()}, Hex{row.status});
        }
    }
}

} // namespace
} // namespace orl::test
