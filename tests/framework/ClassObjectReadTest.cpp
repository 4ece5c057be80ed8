// CWomClassObject: reading.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

class ReadTest : public ::testing::Test
{
protected:
    // Presets the value of a property of the given type.
    void Given(CIMTYPE type, const CComVariant& value)
    {
        definition->properties = {{L"P", type}};
        fake->Preset(L"P", value);
    }

    FakeClassPtr definition = MakeFakeClass(L"Zarn_Thing", {{L"P", CIM_STRING}});
    CComPtr<FakeClassObject> fake = MakeObject<FakeClassObject>(definition);
    CWomContext context{nullptr};
    CWomClassObject object{context, fake};
};

// A number in another form than the ones that a CComVariant makes: its bits as 64.
CComVariant Form(VARTYPE type, LONGLONG bits)
{
    CComVariant made;
    made.vt = type;
    made.llVal = bits;
    return made;
}

CComVariant Unsigned32(ULONG value)
{
    CComVariant made;
    made.vt = VT_UI4;
    made.ulVal = value;
    return made;
}

CComVariant Unsigned64(ULONGLONG value)
{
    CComVariant made;
    made.vt = VT_UI8;
    made.ullVal = value;
    return made;
}

TEST_F(ReadTest, ReadsText)
{
    Given(CIM_STRING, CComVariant(L"text"));
    CComBSTR text(L"before");
    EXPECT_EQ(Hex{object.GetProperty(L"P", text)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_STREQ(text.m_str, L"text");
}

TEST_F(ReadTest, ReadsAPropertyThatIsNullAsANullText)
{
    CComBSTR text(L"before");
    EXPECT_EQ(Hex{object.GetProperty(L"P", text)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(text.m_str, nullptr);
}

TEST_F(ReadTest, AnswersForAPropertyThatTheClassLacksAndEmptiesTheResult)
{
    CComBSTR text(L"before");
    EXPECT_EQ(Hex{object.GetProperty(L"Q", text)}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(text.m_str, nullptr);
    LONGLONG number = 5;
    bool isNull = true;
    EXPECT_EQ(Hex{object.GetPropertySint64(L"Q", number, isNull)}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(number, 0);
    EXPECT_FALSE(isNull);
}

TEST_F(ReadTest, ReadsNoTextFromANumber)
{
    Given(CIM_SINT32, CComVariant(5));
    CComBSTR text;
    EXPECT_EQ(Hex{object.GetProperty(L"P", text)}, Hex{WBEM_E_TYPE_MISMATCH});
    EXPECT_EQ(text.m_str, nullptr);
}

TEST_F(ReadTest, AnswersWithoutAnObject)
{
    const CWomClassObject empty(context);
    CComBSTR text;
    ULONG number = 0;
    bool isNull = false;
    EXPECT_EQ(Hex{empty.GetProperty(L"P", text)}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(Hex{empty.GetPropertyUint32(L"P", number, isNull)}, Hex{WBEM_E_INVALID_OBJECT});
}

TEST_F(ReadTest, ReadsSint64FromEveryFormAnIntegerTravelsIn)
{
    struct Case
    {
        CIMTYPE type;
        CComVariant value;
        LONGLONG expected;
    };
    const std::vector<Case> cases = {{CIM_SINT64, CComVariant(L"5"), 5},
                                     {CIM_SINT64, CComVariant(L"-9223372036854775808"), INT64_MIN},
                                     {CIM_SINT64, CComVariant(L"9223372036854775807"), INT64_MAX},
                                     {CIM_SINT64, CComVariant(L"+12"), 12},
                                     {CIM_SINT32, CComVariant(-5), -5},
                                     {CIM_UINT32, CComVariant(-1), 0xFFFFFFFF},
                                     {CIM_SINT8, Form(VT_I1, -7), -7},
                                     {CIM_UINT8, Form(VT_UI1, 0xFF), 0xFF},
                                     {CIM_SINT16, Form(VT_I2, -7), -7},
                                     {CIM_UINT16, Form(VT_UI2, 0xFFFF), 0xFFFF},
                                     {CIM_SINT32, Form(VT_INT, -7), -7},
                                     {CIM_UINT32, Form(VT_UINT, 0xFFFFFFFF), 0xFFFFFFFF},
                                     {CIM_SINT64, Form(VT_I8, INT64_MIN), INT64_MIN},
                                     {CIM_UINT32, Unsigned32(0xFFFFFFFE), 0xFFFFFFFE},
                                     {CIM_UINT64, Unsigned64(1), 1}};
    for (const Case& row : cases)
    {
        Given(row.type, row.value);
        LONGLONG number = 0;
        bool isNull = true;
        EXPECT_EQ(Hex{object.GetPropertySint64(L"P", number, isNull)}, Hex{WBEM_S_NO_ERROR}) << row.expected;
        EXPECT_EQ(number, row.expected);
        EXPECT_FALSE(isNull);
    }
}

TEST_F(ReadTest, ReadsNoNumberFromWhatIsNone)
{
    for (const wchar_t* text : {L"", L"-", L"+", L"x", L"5x", L" 5", L"0x10", L"9223372036854775808",
                                L"-9223372036854775809", L"99999999999999999999999"})
    {
        Given(CIM_SINT64, CComVariant(text));
        LONGLONG number = 5;
        bool isNull = true;
        EXPECT_EQ(Hex{object.GetPropertySint64(L"P", number, isNull)}, Hex{WBEM_E_TYPE_MISMATCH}) << Narrow(text);
        EXPECT_FALSE(isNull);
    }
    Given(CIM_BOOLEAN, CComVariant(true));
    LONGLONG number = 5;
    bool isNull = true;
    EXPECT_EQ(Hex{object.GetPropertySint64(L"P", number, isNull)}, Hex{WBEM_E_TYPE_MISMATCH});
    Given(CIM_UINT64, Unsigned64(0x8000000000000000));
    EXPECT_EQ(Hex{object.GetPropertySint64(L"P", number, isNull)}, Hex{WBEM_E_TYPE_MISMATCH});
    EXPECT_EQ(number, 0);
}

TEST_F(ReadTest, ReadsANumberThatIsNullAsZero)
{
    Given(CIM_SINT64,
          []
          {
              CComVariant null;
              null.vt = VT_NULL;
              return null;
          }());
    LONGLONG wide = 5;
    ULONG narrow = 5;
    bool isNull = false;
    EXPECT_EQ(Hex{object.GetPropertySint64(L"P", wide, isNull)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_TRUE(isNull);
    EXPECT_EQ(wide, 0);
    isNull = false;
    EXPECT_EQ(Hex{object.GetPropertyUint32(L"P", narrow, isNull)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_TRUE(isNull);
    EXPECT_EQ(narrow, 0u);
}

TEST_F(ReadTest, ReadsUint32WithinItsRangeOnly)
{
    ULONG number = 0;
    bool isNull = true;
    Given(CIM_UINT32, CComVariant(-1));
    EXPECT_EQ(Hex{object.GetPropertyUint32(L"P", number, isNull)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(number, 0xFFFFFFFFu);
    EXPECT_FALSE(isNull);
    Given(CIM_SINT32, CComVariant(-1));
    EXPECT_EQ(Hex{object.GetPropertyUint32(L"P", number, isNull)}, Hex{WBEM_E_TYPE_MISMATCH});
    Given(CIM_SINT64, CComVariant(L"4294967296"));
    EXPECT_EQ(Hex{object.GetPropertyUint32(L"P", number, isNull)}, Hex{WBEM_E_TYPE_MISMATCH});
    Given(CIM_SINT64, CComVariant(L"4294967295"));
    EXPECT_EQ(Hex{object.GetPropertyUint32(L"P", number, isNull)}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(number, 0xFFFFFFFFu);
}

TEST_F(ReadTest, ThrowsWhenThereIsNoMemoryForAText)
{
    Given(CIM_STRING, CComVariant(L"text"));
    CComBSTR text;
    OrlFailBstrAllocation(2); // the first is the object's answer for its class name
    EXPECT_THROW(object.GetProperty(L"P", text), CAtlException);
    OrlFailBstrAllocation(0);
    EXPECT_EQ(text.m_str, nullptr);
}

} // namespace
} // namespace orl::test
