// Arrays of one dimension and what they own.
#include "tests/winport/CountedObject.h"

#include <oleauto.h>

#include <gtest/gtest.h>

namespace
{

TEST(SafeArray, AVectorKnowsItsTypeAndBounds)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 2, 3);
    ASSERT_NE(array, nullptr);
    LONG lowest = 0;
    LONG highest = 0;
    VARTYPE type = VT_EMPTY;
    EXPECT_EQ(SafeArrayGetDim(array), 1u);
    EXPECT_EQ(SafeArrayGetLBound(array, 1, &lowest), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &highest), S_OK);
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(lowest, 2);
    EXPECT_EQ(highest, 4);
    EXPECT_EQ(type, VT_I4);
    EXPECT_EQ(SafeArrayGetElemsize(array), 4u);
    EXPECT_EQ(SafeArrayGetLBound(array, 2, &lowest), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, AnArrayFromBoundsIsTheSame)
{
    SAFEARRAYBOUND bounds{2, 0};
    SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bounds);
    ASSERT_NE(array, nullptr);
    LONG highest = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &highest), S_OK);
    EXPECT_EQ(highest, 1);
    SafeArrayDestroy(array);
}

TEST(SafeArray, AnEmptyVectorEndsBeforeItBegins)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 0);
    LONG highest = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &highest), S_OK);
    EXPECT_EQ(highest, -1);
    SafeArrayDestroy(array);
}

TEST(SafeArray, ElementsOutsideAreRefused)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 1, 2);
    LONG value = 7;
    for (LONG index : {0, 3, -1})
    {
        EXPECT_EQ(SafeArrayPutElement(array, &index, &value), DISP_E_BADINDEX) << index;
        EXPECT_EQ(SafeArrayGetElement(array, &index, &value), DISP_E_BADINDEX) << index;
    }
    SafeArrayDestroy(array);
}

TEST(SafeArray, TextsAreCopiedInAndOut)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 1);
    LONG index = 0;
    BSTR text = SysAllocString(L"one");
    EXPECT_EQ(SafeArrayPutElement(array, &index, text), S_OK);
    SysFreeString(text);
    BSTR out = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &out), S_OK);
    EXPECT_STREQ(out, L"one");
    SysFreeString(out);
    BSTR second = SysAllocString(L"two");
    EXPECT_EQ(SafeArrayPutElement(array, &index, second), S_OK);
    SysFreeString(second);
    EXPECT_EQ(SafeArrayGetElement(array, &index, &out), S_OK);
    EXPECT_STREQ(out, L"two");
    SysFreeString(out);
    SafeArrayDestroy(array);
}

TEST(SafeArray, AnUnsetTextIsNull)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 1);
    LONG index = 0;
    BSTR out = SysAllocString(L"");
    SysFreeString(out);
    out = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &out), S_OK);
    EXPECT_EQ(SysStringLen(out), 0u);
    SysFreeString(out);
    SafeArrayDestroy(array);
}

TEST(SafeArray, ObjectsAreCountedInOutAndAway)
{
    CountedObject object;
    SAFEARRAY* array = SafeArrayCreateVector(VT_UNKNOWN, 0, 2);
    LONG index = 0;
    IUnknown* pointer = &object;
    EXPECT_EQ(SafeArrayPutElement(array, &index, pointer), S_OK);
    EXPECT_EQ(object.references, 2u);
    IUnknown* out = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &out), S_OK);
    EXPECT_EQ(out, &object);
    EXPECT_EQ(object.references, 3u);
    out->Release();
    SAFEARRAY* copy = nullptr;
    EXPECT_EQ(SafeArrayCopy(array, &copy), S_OK);
    EXPECT_EQ(object.references, 3u);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
    EXPECT_EQ(SafeArrayDestroy(copy), S_OK);
    EXPECT_EQ(object.references, 1u);
}

TEST(SafeArray, VariantsAreCopiedWithTheirContent)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    LONG index = 0;
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(L"inside");
    EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
    VariantClear(&value);
    EXPECT_EQ(SafeArrayGetElement(array, &index, &value), S_OK);
    EXPECT_STREQ(value.bstrVal, L"inside");
    VariantClear(&value);
    SafeArrayDestroy(array);
}

TEST(SafeArray, ItsDataAreTheElementsInOrder)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 4);
    for (LONG index = 0; index < 4; ++index)
    {
        BYTE byte = static_cast<BYTE>(index * 3);
        SafeArrayPutElement(array, &index, &byte);
    }
    BYTE* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array, reinterpret_cast<void**>(&data)), S_OK);
    EXPECT_EQ(std::vector<BYTE>(data, data + 4), (std::vector<BYTE>{0, 3, 6, 9}));
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, ATypeThatNoArrayHoldsGivesNull)
{
    EXPECT_EQ(SafeArrayCreateVector(VT_EMPTY, 0, 1), nullptr);
    EXPECT_EQ(SafeArrayCreateVector(VT_NULL, 0, 1), nullptr);
}

} // namespace
