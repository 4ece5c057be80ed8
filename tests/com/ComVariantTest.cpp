// CComVariant.
#include "tests/com/TestObjects.h"

#include <gtest/gtest.h>

namespace
{

TEST(ComVariant, EachTypeHasItsVartype)
{
    EXPECT_EQ(CComVariant().vt, VT_EMPTY);
    EXPECT_EQ(CComVariant(L"x").vt, VT_BSTR);
    EXPECT_EQ(CComVariant(CComBSTR(L"x")).vt, VT_BSTR);
    EXPECT_EQ(CComVariant(true).vt, VT_BOOL);
    EXPECT_EQ(CComVariant(true).boolVal, VARIANT_TRUE);
    EXPECT_EQ(CComVariant(BYTE{5}).vt, VT_UI1);
    EXPECT_EQ(CComVariant(SHORT{-5}).vt, VT_I2);
    EXPECT_EQ(CComVariant(USHORT{5}).vt, VT_UI2);
    EXPECT_EQ(CComVariant(5).vt, VT_I4);
    EXPECT_EQ(CComVariant(LONG{-5}).vt, VT_I4);
    EXPECT_EQ(CComVariant(LONG{-5}).lVal, -5);
    EXPECT_EQ(CComVariant(ULONG{5}).vt, VT_UI4);
    EXPECT_EQ(CComVariant(LONGLONG{-5}).vt, VT_I8);
    EXPECT_EQ(CComVariant(LONGLONG{-5}).llVal, -5);
    EXPECT_EQ(CComVariant(ULONGLONG{5}).vt, VT_UI8);
    EXPECT_EQ(CComVariant(1.5f).vt, VT_R4);
    EXPECT_EQ(CComVariant(1.5).vt, VT_R8);
}

TEST(ComVariant, AnObjectIsHeld)
{
    bool gone = false;
    CComPtr<Counter> object = orl::MakeObject<Counter>(&gone);
    {
        CComVariant value(static_cast<IUnknown*>(static_cast<IWbemObjectSink*>(object.p)));
        EXPECT_EQ(value.vt, VT_UNKNOWN);
        CComVariant copy(value);
        object.Release();
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

TEST(ComVariant, AnArrayIsCopied)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
    LONG index = 0;
    LONG number = 7;
    SafeArrayPutElement(array, &index, &number);
    const CComVariant value(array);
    SafeArrayDestroy(array);
    EXPECT_EQ(value.vt, VT_ARRAY | VT_I4);
    number = 0;
    EXPECT_EQ(SafeArrayGetElement(value.parray, &index, &number), S_OK);
    EXPECT_EQ(number, 7);
}

TEST(ComVariant, CopiesAreTheirOwnAndMovesLeaveNothing)
{
    CComVariant first(L"one");
    CComVariant second(first);
    EXPECT_NE(first.bstrVal, second.bstrVal);
    CComVariant third(std::move(second));
    EXPECT_EQ(second.vt, VT_EMPTY);
    EXPECT_STREQ(third.bstrVal, L"one");
    third = CComVariant(5);
    EXPECT_EQ(third.lVal, 5);
    third = first;
    EXPECT_STREQ(third.bstrVal, L"one");
    CComVariant& itself = third;
    third = itself;
    EXPECT_STREQ(third.bstrVal, L"one");
}

TEST(ComVariant, AValueIsHandedInAndOut)
{
    VARIANT plain;
    VariantInit(&plain);
    plain.vt = VT_BSTR;
    plain.bstrVal = SysAllocString(L"mine");
    CComVariant value(5);
    EXPECT_EQ(value.Attach(&plain), S_OK);
    EXPECT_EQ(plain.vt, VT_EMPTY);
    EXPECT_STREQ(value.bstrVal, L"mine");
    EXPECT_EQ(value.CopyTo(&plain), S_OK);
    EXPECT_NE(plain.bstrVal, value.bstrVal);
    EXPECT_EQ(value.Detach(&plain), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
    EXPECT_STREQ(plain.bstrVal, L"mine");
    VariantClear(&plain);
    EXPECT_EQ(value.Detach(nullptr), E_POINTER);
    EXPECT_EQ(value.Attach(nullptr), E_INVALIDARG);
}

TEST(ComVariant, ItsTypeCanChange)
{
    CComVariant value(L"42");
    EXPECT_EQ(value.ChangeType(VT_I4), S_OK);
    EXPECT_EQ(value.lVal, 42);
    const CComVariant text(L"no number");
    EXPECT_EQ(value.ChangeType(VT_I4, &text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(value.lVal, 42);
}

TEST(ComVariant, WhatCannotBeCopiedThrows)
{
    VARIANT odd;
    VariantInit(&odd);
    odd.vt = 0x0FFE;
    EXPECT_THROW(CComVariant value(odd), CAtlException);
    OrlFailBstrAllocation(1);
    EXPECT_THROW(CComVariant value(L"x"), CAtlException);
}

} // namespace
