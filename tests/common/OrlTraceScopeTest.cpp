// Entry and exit lines.

#include "Common/Src/OrlSecure.h"
#include "tests/common/TraceTest.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

namespace
{

class OrlTraceScope : public TraceTest
{
};

struct Record
{
    ULONG ulErrCode;
    ULONG ulOther;
};

} // namespace

TEST_F(OrlTraceScope, WritesEntryAndExitWithTheFunctionsName)
{
    StartLog();
    {
        COrlTraceScope scope(L"CZarn_FcoeHBA::SendInstance");
        EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  CZarn_FcoeHBA::SendInstance"));
    }
    EXPECT_THAT(TiersAndMessages(),
                ElementsAre("1 ENTRY:  CZarn_FcoeHBA::SendInstance", "1 EXIT:  CZarn_FcoeHBA::SendInstance"));
}

TEST_F(OrlTraceScope, NestedShowsTheSameTierOnEntryAndExit)
{
    StartLog();
    {
        COrlTraceScope first(L"a");
        COrlTraceScope second(L"b");
        {
            COrlTraceScope third(L"c");
            g_OrlDebug.Print(L"inside");
            g_OrlDebug.Error(L"file", 1, L"inside");
        }
        COrlTraceScope again(L"d");
    }
    g_OrlDebug.Print(L"outside");
    EXPECT_THAT(TiersAndMessages(),
                ElementsAre("1 ENTRY:  a", "2 ENTRY:  b", "3 ENTRY:  c", "3 inside", "3 file (1): inside", "3 EXIT:  c",
                            "3 ENTRY:  d", "3 EXIT:  d", "2 EXIT:  b", "1 EXIT:  a", "0 outside"));
}

TEST_F(OrlTraceScope, ReportsTheBoolThatHoldsAtItsEnd)
{
    StartLog();
    bool result = true;
    {
        COrlTraceScope scope(L"a", &result);
        result = false;
    }
    {
        COrlTraceScope scope(L"b", &result);
        result = true;
    }
    EXPECT_THAT(TiersAndMessages(),
                ElementsAre("1 ENTRY:  a", "1 EXIT:  a, bReturn=false", "1 ENTRY:  b", "1 EXIT:  b, bReturn=true"));
}

TEST_F(OrlTraceScope, ReportsTheIntThatHoldsAtItsEnd)
{
    StartLog();
    int result = 0;
    {
        COrlTraceScope scope(L"a", &result);
        result = -34;
    }
    EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  a", "1 EXIT:  a, nReturn=-34"));
}

TEST_F(OrlTraceScope, ReportsTheErrorCodeOfARecord)
{
    StartLog();
    Record record = {7, 9};
    {
        COrlTraceScope scope(L"a");
        scope.WatchRecord(&record);
        record.ulErrCode = 12;
    }
    {
        COrlTraceScope scope(L"b");
        scope.WatchRecord(&record);
        record.ulErrCode = 0xFFFFFFFF;
    }
    EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  a", "1 EXIT:  a, res.ulErrCode=12", "1 ENTRY:  b",
                                                "1 EXIT:  b, res.ulErrCode=-1"));
}

TEST_F(OrlTraceScope, ReportsAnHresult)
{
    StartLog();
    HRESULT result = 0;
    {
        COrlTraceScope scope(L"a");
        scope.WatchHresult(&result);
        result = static_cast<HRESULT>(0x8004100E);
    }
    EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  a", "1 EXIT:  a, HRESULT=0X8004100e"));
}

TEST_F(OrlTraceScope, ReportsWhatWasWatchedLast)
{
    StartLog();
    bool flag = true;
    Record record = {5, 0};
    {
        COrlTraceScope scope(L"a", &flag);
        scope.WatchRecord(&record);
    }
    EXPECT_THAT(Messages(), ElementsAre("ENTRY:  a", "EXIT:  a, res.ulErrCode=5"));
}

TEST_F(OrlTraceScope, ReportsNothingForMissingResults)
{
    StartLog();
    {
        COrlTraceScope scope(L"a", static_cast<bool*>(nullptr));
    }
    {
        COrlTraceScope scope(L"b", static_cast<int*>(nullptr));
    }
    {
        COrlTraceScope scope(L"c");
        scope.WatchRecord(static_cast<Record*>(nullptr));
    }
    {
        COrlTraceScope scope(L"d");
        scope.WatchHresult(nullptr);
    }
    EXPECT_THAT(Messages(), ElementsAre("ENTRY:  a", "EXIT:  a", "ENTRY:  b", "EXIT:  b", "ENTRY:  c", "EXIT:  c",
                                        "ENTRY:  d", "EXIT:  d"));
}

TEST_F(OrlTraceScope, KeepsACopyOfItsName)
{
    StartLog();
    std::wstring name = L"CClass::Method";
    {
        COrlTraceScope scope(name.c_str());
        name.assign(name.size(), L'x');
    }
    EXPECT_THAT(Messages(), ElementsAre("ENTRY:  CClass::Method", "EXIT:  CClass::Method"));
}

TEST_F(OrlTraceScope, PassesItsNameOnAsItStands)
{
    StartLog();
    {
        COrlTraceScope scope(L"%s%n%d");
    }
    EXPECT_THAT(Messages(), ElementsAre("ENTRY:  %s%n%d", "EXIT:  %s%n%d"));
}

TEST_F(OrlTraceScope, CountsItsTierWhereErrorsOnlyAreLogged)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 2);
    StartLog(1);
    {
        bool result = false;
        COrlTraceScope scope(L"a", &result);
        COrlTraceScope inner(L"b");
        g_OrlDebug.Error(L"file", 1, L"bad");
    }
    g_OrlDebug.Error(L"file", 2, L"bad");
    EXPECT_THAT(TiersAndMessages(), ElementsAre("2 file (1): bad", "0 file (2): bad"));
}

TEST_F(OrlTraceScope, IsSilentWhileTheLogIsOff)
{
    {
        int result = 0;
        COrlTraceScope scope(L"a", &result);
    }
    StartLog();
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(OrlTraceScope, EnteredWhileTheLogIsOffStaysSilentAndUncounted)
{
    {
        COrlTraceScope outer(L"a");
        StartLog();
        COrlTraceScope inner(L"b");
    }
    g_OrlDebug.Print(L"after");
    EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  b", "1 EXIT:  b", "0 after"));
}

TEST_F(OrlTraceScope, WithoutANameWritesNoExitAndIsStillUncountedAtItsEnd)
{
    StartLog();
    {
        COrlTraceScope scope(nullptr);
    }
    g_OrlDebug.Print(L"after");
    EXPECT_THAT(TiersAndMessages(), ElementsAre("1 ENTRY:  ", "0 after"));
}

} // namespace orl::test
