// COrlWmiAutoParsedObjectPath: keys and their types.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

TEST(COrlWmiAutoParsedObjectPath, GivesTheKeysOfAPathWithTheirTypes)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(Hex{path.Parse(L"Zarn_FCoeLUN.DeviceID=\"X\",ID=5,Low=-7,On=TRUE,Off=false")}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(path.ClassName(), L"Zarn_FCoeLUN");
    ASSERT_EQ(path.Keys().size(), 5u);
    const COrlWmiNamedValue* text = path.GetKeyRef(L"DeviceID");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->value.vt, VT_BSTR);
    EXPECT_STREQ(text->value.bstrVal, L"X");
    const COrlWmiNamedValue* number = path.GetKeyRef(L"ID");
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->value.vt, VT_I4);
    EXPECT_EQ(number->value.lVal, 5);
    EXPECT_EQ(path.GetKeyRef(L"Low")->value.lVal, -7);
    EXPECT_EQ(path.GetKeyRef(L"On")->value.vt, VT_BOOL);
    EXPECT_EQ(path.GetKeyRef(L"On")->value.boolVal, VARIANT_TRUE);
    EXPECT_EQ(path.GetKeyRef(L"Off")->value.boolVal, VARIANT_FALSE);
}

TEST(COrlWmiAutoParsedObjectPath, TakesAQuotedNumberForText)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"100\""), WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"VlanID")->value.vt, VT_BSTR);
    EXPECT_STREQ(path.GetKeyRef(L"VlanID")->value.bstrVal, L"100");
}

TEST(COrlWmiAutoParsedObjectPath, CarriesAnIntegerOfMoreThan32BitsAsDecimalText)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(L"C.A=2147483648,B=18446744073709551615,D=-9223372036854775808,E=2147483647"),
              WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"A")->value.vt, VT_BSTR);
    EXPECT_STREQ(path.GetKeyRef(L"A")->value.bstrVal, L"2147483648");
    EXPECT_STREQ(path.GetKeyRef(L"B")->value.bstrVal, L"18446744073709551615");
    EXPECT_STREQ(path.GetKeyRef(L"D")->value.bstrVal, L"-9223372036854775808");
    EXPECT_EQ(path.GetKeyRef(L"E")->value.vt, VT_I4);
}

TEST(COrlWmiAutoParsedObjectPath, GivesEveryValueInWords)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(L"C.A=\"x y\",B=-5,D=TRUE,E=FALSE,F=\"\""), WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"A")->Text(), L"x y");
    EXPECT_EQ(path.GetKeyRef(L"B")->Text(), L"-5");
    EXPECT_EQ(path.GetKeyRef(L"D")->Text(), L"TRUE");
    EXPECT_EQ(path.GetKeyRef(L"E")->Text(), L"FALSE");
    EXPECT_EQ(path.GetKeyRef(L"F")->Text(), L"");
    EXPECT_EQ(COrlWmiNamedValue().Text(), L"");
}

TEST(COrlWmiAutoParsedObjectPath, FindsKeysWithoutCaseAndOnlyThoseThatAreThere)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(L"C.DeviceID=\"X\""), WBEM_S_NO_ERROR);
    EXPECT_NE(path.GetKeyRef(L"DEVICEid"), nullptr);
    EXPECT_EQ(path.GetKeyRef(L"Device"), nullptr);
    EXPECT_EQ(path.GetKeyRef(L""), nullptr);
    EXPECT_EQ(path.GetKeyRef(nullptr), nullptr);
}

TEST(COrlWmiAutoParsedObjectPath, TakesTheOnlyUnnamedKeyForTheOneAskedForWhenTold)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(L"C=\"X\""), WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"DeviceID"), nullptr);
    EXPECT_EQ(path.GetKeyRef(L""), nullptr);
    ASSERT_NE(path.GetKeyRef(L"DeviceID", true), nullptr);
    EXPECT_EQ(path.GetKeyRef(L"DeviceID", true)->Text(), L"X");
    ASSERT_EQ(path.Parse(L"C.Other=\"X\""), WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"DeviceID", true), nullptr);
}

TEST(COrlWmiAutoParsedObjectPath, PassesOverServerAndNamespace)
{
    COrlWmiAutoParsedObjectPath path;
    for (const wchar_t* text :
         {L"\\\\.\\root\\KESTA:C.A=\"1\"", L"//server/root/KESTA:C.A=\"1\"", L"root\\KESTA:C.A=\"1\""})
    {
        ASSERT_EQ(path.Parse(text), WBEM_S_NO_ERROR) << Narrow(text);
        EXPECT_EQ(path.ClassName(), L"C");
        EXPECT_STREQ(path.PathText().m_str, text);
        EXPECT_EQ(path.GetKeyRef(L"A")->Text(), L"1");
    }
}

TEST(COrlWmiAutoParsedObjectPath, ReadsTheTwoEscapesAndKeepsEveryOtherBackslash)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(LR"(C.A="a\"b\\c\d\")"
                         L"\""),
              WBEM_S_NO_ERROR);
    EXPECT_EQ(path.GetKeyRef(L"A")->Text(), LR"(a"b\c\d")");
}

TEST(COrlWmiAutoParsedObjectPath, TakesAClassPath)
{
    COrlWmiAutoParsedObjectPath path;
    EXPECT_EQ(path.Parse(L"Zarn_FCOEHBA"), WBEM_S_NO_ERROR);
    EXPECT_EQ(path.ClassName(), L"Zarn_FCOEHBA");
    EXPECT_TRUE(path.Keys().empty());
}

TEST(COrlWmiAutoParsedObjectPath, RefusesWhatIsNoPathAndSaysWhy)
{
    for (const wchar_t* text : {L"", L"C.", L"C.A", L"C.A=", L"C.A=\"x", L"C.A=\"x\",", L"C.A=x", L".A=1",
                                L"C.A=\"x\" B", L"\\\\s\\root\\x", L"C..A=1", L"C.A=\"x\"B=\"y\"", L"=", L"C.=1"})
    {
        COrlWmiAutoParsedObjectPath path;
        path.Parse(L"Before.Key=\"kept\"");
        EXPECT_EQ(Hex{path.Parse(text)}, Hex{WBEM_E_INVALID_OBJECT_PATH}) << Narrow(text);
        EXPECT_EQ(path.ClassName(), L"") << Narrow(text);
        EXPECT_TRUE(path.Keys().empty()) << Narrow(text);
        EXPECT_EQ(path.GetKeyRef(L"A"), nullptr) << Narrow(text);
        EXPECT_NE(path.ErrorText(), L"") << Narrow(text);
        EXPECT_STREQ(path.PathText().m_str, text);
    }
}

TEST(COrlWmiAutoParsedObjectPath, RefusesANullPath)
{
    COrlWmiAutoParsedObjectPath path;
    EXPECT_EQ(Hex{path.Parse(nullptr)}, Hex{WBEM_E_INVALID_OBJECT_PATH});
    EXPECT_EQ(path.PathText().m_str, nullptr);
}

TEST(COrlWmiAutoParsedObjectPath, RefusesANamespaceInWords)
{
    COrlWmiAutoParsedObjectPath path;
    EXPECT_EQ(Hex{path.Parse(L"\\\\.\\root\\KESTA")}, Hex{WBEM_E_INVALID_OBJECT_PATH});
    EXPECT_EQ(path.ErrorText(), L"it names a namespace, not a class or an instance");
}

TEST(COrlWmiAutoParsedObjectPath, ParsesThePathInsideAValue)
{
    COrlWmiAutoParsedObjectPath outer;
    ASSERT_EQ(outer.Parse(LR"(A.Antecedent="Zarn_FCOEHBA.DeviceID=\"eth0.1002\"",Dependent="D.K=\"1\"")"),
              WBEM_S_NO_ERROR);
    COrlWmiAutoParsedObjectPath inner;
    ASSERT_EQ(inner.Parse(outer.GetKeyRef(L"Antecedent")->Text().c_str()), WBEM_S_NO_ERROR);
    EXPECT_EQ(inner.GetKeyRef(L"DeviceID")->Text(), L"eth0.1002");
}

TEST(COrlWmiAutoParsedObjectPath, ThrowsWhenThereIsNoMemory)
{
    COrlWmiAutoParsedObjectPath path;
    for (ULONG n = 1; n <= 2; ++n) // the path's own text, then the key
    {
        OrlFailBstrAllocation(n);
        EXPECT_THROW(path.Parse(L"C.A=\"x\""), CAtlException) << n;
    }
    OrlFailBstrAllocation(0);
    EXPECT_EQ(path.Parse(L"C.A=\"x\""), WBEM_S_NO_ERROR);
}

} // namespace
} // namespace orl::test
