// VARIANTs: what they own, and changing their type.
#include "tests/winport/CountedObject.h"

#include <oleauto.h>

#include <gtest/gtest.h>
#include <limits>

namespace
{

VARIANT Text(const wchar_t* text)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    return value;
}

VARIANT Number(LONG number)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT Large(LONGLONG number)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I8;
    value.llVal = number;
    return value;
}

VARIANT Real(double number)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_R8;
    value.dblVal = number;
    return value;
}

VARIANT Truth(bool truth)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BOOL;
    value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

VARIANT OfType(VARTYPE type)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return value;
}

TEST(Variant, ClearingLetsGoOfAnObject)
{
    CountedObject object;
    VARIANT value = OfType(VT_UNKNOWN);
    value.punkVal = &object;
    object.AddRef();
    EXPECT_EQ(VariantClear(&value), S_OK);
    EXPECT_EQ(object.references, 1u);
    EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(Variant, ClearingLeavesWhatIsOnlyPointedAt)
{
    CountedObject object;
    IUnknown* pointer = &object;
    VARIANT value = OfType(VT_UNKNOWN | VT_BYREF);
    value.byref = &pointer;
    EXPECT_EQ(VariantClear(&value), S_OK);
    EXPECT_EQ(object.references, 1u);
}

TEST(Variant, ClearingRefusesATypeThatIsNone)
{
    VARIANT value = OfType(0x0FFE);
    EXPECT_EQ(VariantClear(&value), DISP_E_BADVARTYPE);
}

TEST(Variant, ACopyOfATextIsATextOfItsOwn)
{
    VARIANT source = Text(L"adapter");
    VARIANT copy = Number(1);
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_EQ(copy.vt, VT_BSTR);
    EXPECT_NE(copy.bstrVal, source.bstrVal);
    EXPECT_STREQ(copy.bstrVal, L"adapter");
    VariantClear(&source);
    VariantClear(&copy);
}

TEST(Variant, ACopyOfAnEmptyTextKeepsItsZeros)
{
    VARIANT source = OfType(VT_BSTR);
    source.bstrVal = SysAllocStringLen(L"a\0b", 3);
    VARIANT copy = OfType(VT_EMPTY);
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_EQ(SysStringLen(copy.bstrVal), 3u);
    VariantClear(&source);
    VariantClear(&copy);
}

TEST(Variant, ACopyOfAnObjectIsOneMoreReference)
{
    CountedObject object;
    VARIANT source = OfType(VT_UNKNOWN);
    source.punkVal = &object;
    VARIANT copy = OfType(VT_EMPTY);
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_EQ(object.references, 2u);
    VariantClear(&copy);
    EXPECT_EQ(object.references, 1u);
}

TEST(Variant, ACopyLetsGoOfWhatWasThere)
{
    CountedObject object;
    object.AddRef();
    VARIANT copy = OfType(VT_UNKNOWN);
    copy.punkVal = &object;
    VARIANT source = Number(5);
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_EQ(object.references, 1u);
    EXPECT_EQ(copy.lVal, 5);
}

TEST(Variant, ACopyOfAnArrayIsAnArrayOfItsOwn)
{
    VARIANT source = OfType(VT_ARRAY | VT_I4);
    source.parray = SafeArrayCreateVector(VT_I4, 0, 1);
    LONG index = 0;
    LONG number = 42;
    SafeArrayPutElement(source.parray, &index, &number);
    VARIANT copy = OfType(VT_EMPTY);
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    VariantClear(&source);
    number = 0;
    EXPECT_EQ(SafeArrayGetElement(copy.parray, &index, &number), S_OK);
    EXPECT_EQ(number, 42);
    VariantClear(&copy);
}

TEST(Variant, CopyingOntoItselfChangesNothing)
{
    VARIANT value = Text(L"same");
    EXPECT_EQ(VariantCopy(&value, &value), S_OK);
    EXPECT_STREQ(value.bstrVal, L"same");
    VariantClear(&value);
}

struct ToText
{
    VARIANT source;
    const wchar_t* text;
};

TEST(VariantChangeType, NumbersBecomeTexts)
{
    VARIANT real4 = OfType(VT_R4);
    real4.fltVal = 0.1f;
    VARIANT unsigned8 = OfType(VT_UI8);
    unsigned8.ullVal = std::numeric_limits<ULONGLONG>::max();
    VARIANT unsigned4 = OfType(VT_UI4);
    unsigned4.ulVal = 4000000000u;
    const ToText cases[] = {
        {Number(0), L"0"},
        {Number(-17), L"-17"},
        {Large(std::numeric_limits<LONGLONG>::min()), L"-9223372036854775808"},
        {unsigned8, L"18446744073709551615"},
        {unsigned4, L"4000000000"},
        {Real(1.5), L"1.5"},
        {Real(-0.25), L"-0.25"},
        {Real(1e20), L"1E+20"},
        {real4, L"0.1"},
        {Truth(true), L"-1"},
        {Truth(false), L"0"},
        {OfType(VT_EMPTY), L""},
    };
    for (const ToText& one : cases)
    {
        VARIANT source = one.source;
        VARIANT result = OfType(VT_EMPTY);
        ASSERT_EQ(VariantChangeType(&result, &source, 0, VT_BSTR), S_OK) << one.text;
        EXPECT_EQ(result.vt, VT_BSTR);
        EXPECT_STREQ(result.bstrVal, one.text);
        VariantClear(&result);
    }
}

TEST(VariantChangeType, TruthBecomesAWordWhenAsked)
{
    VARIANT source = Truth(true);
    VARIANT result = OfType(VT_EMPTY);
    ASSERT_EQ(VariantChangeType(&result, &source, VARIANT_ALPHABOOL, VT_BSTR), S_OK);
    EXPECT_STREQ(result.bstrVal, L"True");
    VariantClear(&result);
}

struct ToLong
{
    const wchar_t* text;
    HRESULT hr;
    LONG number;
};

TEST(VariantChangeType, TextsBecomeNumbersOrAreRefused)
{
    const ToLong cases[] = {
        {L"42", S_OK, 42},
        {L" 42 ", S_OK, 42},
        {L"+42", S_OK, 42},
        {L"-42", S_OK, -42},
        {L"1.5", S_OK, 2},
        {L"2.5", S_OK, 2},
        {L"1e3", S_OK, 1000},
        {L"2147483647", S_OK, 2147483647},
        {L"2147483648", DISP_E_OVERFLOW, 0},
        {L"-2147483649", DISP_E_OVERFLOW, 0},
        {L"", DISP_E_TYPEMISMATCH, 0},
        {L" ", DISP_E_TYPEMISMATCH, 0},
        {L"abc", DISP_E_TYPEMISMATCH, 0},
        {L"12abc", DISP_E_TYPEMISMATCH, 0},
        {L"inf", DISP_E_TYPEMISMATCH, 0},
        {L"--1", DISP_E_TYPEMISMATCH, 0},
    };
    for (const ToLong& one : cases)
    {
        VARIANT source = Text(one.text);
        VARIANT result = Number(0);
        EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_I4), one.hr) << one.text;
        EXPECT_EQ(result.lVal, one.number) << one.text;
        VariantClear(&source);
    }
}

TEST(VariantChangeType, ANumberMustFit)
{
    VARIANT result = OfType(VT_EMPTY);
    VARIANT source = Number(256);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI1), DISP_E_OVERFLOW);
    source = Number(255);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI1), S_OK);
    EXPECT_EQ(result.bVal, 255);
    source = Number(-1);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI2), DISP_E_OVERFLOW);
    source = Large(1LL << 40);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_I4), DISP_E_OVERFLOW);
    source = Real(1e300);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_R4), DISP_E_OVERFLOW);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_I8), DISP_E_OVERFLOW);
}

TEST(VariantChangeType, ANegativeNumberKeepsItsBitsInTheUnsignedTypeOfItsWidth)
{
    VARIANT result = OfType(VT_EMPTY);
    VARIANT source = Number(-2);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI4), S_OK);
    EXPECT_EQ(result.ulVal, 0xFFFFFFFEu);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI8), DISP_E_OVERFLOW);
    source = Large(-2);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI8), S_OK);
    EXPECT_EQ(result.ullVal, 0xFFFFFFFFFFFFFFFEu);
    source = Real(-2);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_UI4), DISP_E_OVERFLOW);
}

TEST(VariantChangeType, HalvesGoToTheEvenNumber)
{
    const std::pair<double, LONG> cases[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {2.4, 2}, {2.6, 3}};
    for (const auto& [real, whole] : cases)
    {
        VARIANT source = Real(real);
        VARIANT result = OfType(VT_EMPTY);
        ASSERT_EQ(VariantChangeType(&result, &source, 0, VT_I4), S_OK);
        EXPECT_EQ(result.lVal, whole) << real;
    }
}

TEST(VariantChangeType, WordsAndNumbersBecomeTruth)
{
    const std::pair<const wchar_t*, VARIANT_BOOL> cases[] = {
        {L"True", VARIANT_TRUE}, {L"FALSE", VARIANT_FALSE}, {L"1", VARIANT_TRUE}, {L"0", VARIANT_FALSE}};
    for (const auto& [text, truth] : cases)
    {
        VARIANT source = Text(text);
        VARIANT result = OfType(VT_EMPTY);
        ASSERT_EQ(VariantChangeType(&result, &source, 0, VT_BOOL), S_OK) << text;
        EXPECT_EQ(result.boolVal, truth) << text;
        VariantClear(&source);
    }
}

TEST(VariantChangeType, LargeDecimalTextsKeepEveryDigit)
{
    VARIANT source = Text(L"18446744073709551615");
    VARIANT result = OfType(VT_EMPTY);
    ASSERT_EQ(VariantChangeType(&result, &source, 0, VT_UI8), S_OK);
    EXPECT_EQ(result.ullVal, std::numeric_limits<ULONGLONG>::max());
    VariantClear(&source);
}

TEST(VariantChangeType, InPlaceItReplacesTheText)
{
    VARIANT value = Text(L"7");
    EXPECT_EQ(VariantChangeType(&value, &value, 0, VT_I4), S_OK);
    EXPECT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 7);
}

TEST(VariantChangeType, AnObjectAndNullAreNoNumbers)
{
    VARIANT result = OfType(VT_EMPTY);
    VARIANT source = OfType(VT_NULL);
    EXPECT_EQ(VariantChangeType(&result, &source, 0, VT_I4), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(result.vt, VT_EMPTY);
}

} // namespace
