// CWomContext: what the client's context sets, and nothing else.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

CComVariant Typed(VARTYPE type, LONGLONG bits)
{
    CComVariant value;
    value.llVal = bits;
    value.vt = type;
    return value;
}

CComPtr<FakeContext> ContextWith(const wchar_t* name, CComVariant value)
{
    CComPtr<FakeContext> context = MakeObject<FakeContext>();
    context->SetValue(name, 0, &value);
    return context;
}

TEST(CWomContext, StartsWithAllWordsZeroWithoutAClientContext)
{
    const CWomContext context(nullptr);
    EXPECT_EQ(context.ulStatus, 0u);
    EXPECT_EQ(context.ulSuppressProperties, 0u);
    EXPECT_EQ(context.ulOmitSystemKeys, 0u);
    EXPECT_EQ(context.ulDisplayValueUnsupported, 0u);
    EXPECT_FALSE(context.IsCancelled());
}

TEST(CWomContext, LeavesFlagsZeroThatTheClientContextLacks)
{
    const CComPtr<FakeContext> client = ContextWith(L"SomethingElse", CComVariant(true));
    const CWomContext context(nullptr, client);
    EXPECT_EQ(context.ulSuppressProperties, 0u);
    EXPECT_EQ(context.ulOmitSystemKeys, 0u);
    EXPECT_EQ(context.ulDisplayValueUnsupported, 0u);
}

TEST(CWomContext, SetsEachFlagFromItsOwnValueOnly)
{
    struct Case
    {
        const wchar_t* name;
        ULONG suppress, omit, unsupported;
    };
    for (const Case& row : {Case{L"__GET_EXT_KEYS_ONLY", 1, 0, 0}, Case{L"OrlOmitSystemKeys", 0, 1, 0},
                            Case{L"OrlDisplayValueUnsupported", 0, 0, 1}})
    {
        SCOPED_TRACE(Narrow(row.name));
        const CComPtr<FakeContext> client = ContextWith(row.name, CComVariant(true));
        const CWomContext context(nullptr, client);
        EXPECT_EQ(context.ulSuppressProperties, row.suppress);
        EXPECT_EQ(context.ulOmitSystemKeys, row.omit);
        EXPECT_EQ(context.ulDisplayValueUnsupported, row.unsupported);
        EXPECT_EQ(context.ulStatus, 0u);
    }
}

TEST(CWomContext, ReadsAFlagFromABooleanAndFromEveryIntegerType)
{
    struct Case
    {
        VARTYPE type;
        LONGLONG bits;
        bool set;
    };
    for (const Case& row : {Case{VT_BOOL, 0, false}, Case{VT_BOOL, -1, true}, Case{VT_I1, 1, true},
                            Case{VT_UI1, 2, true}, Case{VT_I2, 1, true}, Case{VT_UI2, 1, true}, Case{VT_I4, 0, false},
                            Case{VT_I4, 7, true}, Case{VT_UI4, 1, true}, Case{VT_INT, 1, true}, Case{VT_UINT, 1, true},
                            Case{VT_I8, 0x100000000, true}, Case{VT_UI8, 1, true}, Case{VT_I8, 0, false},
                            Case{VT_NULL, 1, false}, Case{VT_EMPTY, 1, false}, Case{VT_R8, 1, false}})
    {
        SCOPED_TRACE(row.type);
        const CComPtr<FakeContext> client = ContextWith(L"OrlOmitSystemKeys", Typed(row.type, row.bits));
        EXPECT_EQ(CWomContext(nullptr, client).ulOmitSystemKeys != 0, row.set);
    }
}

TEST(CWomContext, TakesNoTextForAFlag)
{
    const CComPtr<FakeContext> client = ContextWith(L"OrlOmitSystemKeys", CComVariant(L"1"));
    EXPECT_EQ(CWomContext(nullptr, client).ulOmitSystemKeys, 0u);
}

TEST(CWomContext, AsksTheServicesForAClassAndHandsTheirAnswerOn)
{
    const CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    services->Add(MakeFakeClass(L"Zarn_Thing"));
    CWomContext context(services);
    CComPtr<IWbemClassObject> definition;
    EXPECT_EQ(Hex{context.LoadClass(CComBSTR(L"Zarn_Thing"), definition)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_NE(definition.p, nullptr);
    EXPECT_EQ(Hex{context.LoadClass(CComBSTR(L"Zarn_Other"), definition)}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(definition.p, nullptr);
    EXPECT_THAT(services->Lookups(), ::testing::ElementsAre(L"Zarn_Thing", L"Zarn_Other"));
}

TEST(CWomContext, HasNoClassesWithoutServices)
{
    CWomContext context(nullptr);
    CComPtr<IWbemClassObject> definition;
    EXPECT_EQ(Hex{context.LoadClass(CComBSTR(L"Zarn_Thing"), definition)}, Hex{WBEM_E_INVALID_CONTEXT});
}

TEST(CWomContext, RemembersTheFirstLackOfMemoryAndNoOtherLoss)
{
    CWomContext context(nullptr);
    context.NoteLostRecord(WBEM_E_FAILED);
    EXPECT_EQ(Hex{context.LossStatus()}, Hex{WBEM_S_NO_ERROR});
    context.NoteLostRecord(E_OUTOFMEMORY);
    context.NoteLostRecord(WBEM_E_OUT_OF_MEMORY);
    EXPECT_EQ(Hex{context.LossStatus()}, Hex{E_OUTOFMEMORY});
}

} // namespace
} // namespace orl::test
