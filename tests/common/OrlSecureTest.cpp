// Bounded copying and what it reports.

#include "Common/Src/OrlSecure.h"
#include "tests/common/TraceTest.h"

#include <gmock/gmock.h>

#include <cstdlib>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

namespace
{

class OrlSecure : public TraceTest
{
protected:
    void SetUp() override { StartLog(); }
};

constexpr wchar_t Source[] = L"..\\..\\provider\\Caller";
constexpr char HandlerLine[] = "OrlSecureInvalidParameterHandler : ERROR";
constexpr char TooSmall[] = "..\\..\\provider\\Caller (42): OrlSafeCopy ERROR: strDestination size 0, or too small";
constexpr char NoSource[] = "..\\..\\provider\\Caller (42): OrlSafeCopy ERROR: NULL == strSource";
constexpr char NoDestination[] = "..\\..\\Common\\Src\\OrlSecure (189): OrlSafeCopy ERROR: NULL == strDestination";

} // namespace

TEST_F(OrlSecure, CopiesWhatFits)
{
    wchar_t room[4] = L"???";
    EXPECT_EQ(0, OrlSafeCopy(Source, 42, room, 4, L"abc"));
    EXPECT_STREQ(L"abc", room);
    EXPECT_EQ(0, OrlSafeCopy(Source, 42, room, 4, L""));
    EXPECT_STREQ(L"", room);
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(OrlSecure, AppendsWhatFits)
{
    wchar_t room[6] = L"ab";
    EXPECT_EQ(0, OrlSafeCat(Source, 42, room, 6, L"cde"));
    EXPECT_STREQ(L"abcde", room);
    EXPECT_EQ(0, OrlSafeCat(Source, 42, room, 6, L""));
    EXPECT_STREQ(L"abcde", room);
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(OrlSecure, RefusesToCopyIntoRoomOneCharacterTooSmall)
{
    wchar_t room[5] = L"????";
    EXPECT_EQ(34, OrlSafeCopy(Source, 42, room, 3, L"abc"));
    EXPECT_STREQ(L"", room);
    EXPECT_EQ(L'?', room[3]) << "written beyond the room";
    EXPECT_THAT(Messages(), ElementsAre(HandlerLine, TooSmall));
}

TEST_F(OrlSecure, RefusesToAppendIntoRoomOneCharacterTooSmall)
{
    wchar_t room[6] = L"ab";
    EXPECT_EQ(34, OrlSafeCat(Source, 42, room, 5, L"cde"));
    EXPECT_STREQ(L"", room);
    EXPECT_THAT(Messages(), ElementsAre(HandlerLine, TooSmall));
}

TEST_F(OrlSecure, RefusesAMissingSource)
{
    wchar_t room[4] = L"abc";
    EXPECT_EQ(22, OrlSafeCopy(Source, 42, room, 4, nullptr));
    EXPECT_STREQ(L"", room);
    room[0] = L'a';
    EXPECT_EQ(22, OrlSafeCat(Source, 42, room, 4, nullptr));
    EXPECT_STREQ(L"", room);
    EXPECT_THAT(Messages(), ElementsAre(HandlerLine, NoSource, HandlerLine, NoSource));
}

TEST_F(OrlSecure, RefusesAMissingDestinationInItsOwnName)
{
    EXPECT_EQ(22, OrlSafeCopy(Source, 42, nullptr, 4, L"abc"));
    EXPECT_EQ(22, OrlSafeCat(Source, 42, nullptr, 4, L"abc"));
    EXPECT_EQ(22, OrlSafeCopy(Source, 42, nullptr, 0, nullptr));
    EXPECT_THAT(Messages(),
                ElementsAre(HandlerLine, NoDestination, HandlerLine, NoDestination, HandlerLine, NoDestination));
}

TEST_F(OrlSecure, RefusesNoRoomAsTheRuntimeDoesAndTouchesNothing)
{
    wchar_t room[4] = L"abc";
    EXPECT_EQ(22, OrlSafeCopy(Source, 42, room, 0, L"x"));
    EXPECT_EQ(22, OrlSafeCat(Source, 42, room, 0, L"x"));
    EXPECT_STREQ(L"abc", room);
    EXPECT_THAT(Messages(), ElementsAre(HandlerLine, NoSource, HandlerLine, NoSource));
}

TEST_F(OrlSecure, ArrayFormsCopyInsideAScopeThatReportsTheResult)
{
    wchar_t room[4] = L"???";
    EXPECT_EQ(0, OrlSafeCopy(Source, 42, room, L"ab"));
    EXPECT_STREQ(L"ab", room);
    EXPECT_EQ(0, OrlSafeCat(Source, 42, room, L"c"));
    EXPECT_STREQ(L"abc", room);
    EXPECT_EQ(34, OrlSafeCat(Source, 42, room, L"d"));
    EXPECT_STREQ(L"", room);
    EXPECT_EQ(34, OrlSafeCopy(Source, 42, room, L"abcd"));
    EXPECT_EQ(22, OrlSafeCopy(Source, 42, room, nullptr));
    const std::string handler = std::string("1 ") + HandlerLine;
    EXPECT_THAT(TiersAndMessages(),
                ElementsAre("1 ENTRY:  OrlSafeCopy", "1 EXIT:  OrlSafeCopy, nReturn=0", "1 ENTRY:  OrlSafeCat",
                            "1 EXIT:  OrlSafeCat, nReturn=0", "1 ENTRY:  OrlSafeCat", handler,
                            std::string("1 ") + TooSmall, "1 EXIT:  OrlSafeCat, nReturn=34", "1 ENTRY:  OrlSafeCopy",
                            handler, std::string("1 ") + TooSmall, "1 EXIT:  OrlSafeCopy, nReturn=34",
                            "1 ENTRY:  OrlSafeCopy", handler, std::string("1 ") + NoSource,
                            "1 EXIT:  OrlSafeCopy, nReturn=22"));
}

TEST_F(OrlSecure, InstallsItsHandlerOnceAndSaysSo)
{
    constexpr char installation[] = "..\\..\\Common\\Src\\OrlSecure (97): "
                                    "Setting invalid parameter handler to: OrlSecureInvalidParameterHandler";
    ForgetInvalidParameterHandler();
    EXPECT_NE(&OrlSecureInvalidParameterHandler, _get_invalid_parameter_handler());

    wchar_t room[2] = {};
    OrlSafeCopy(Source, 42, room, 2, L"a");
    EXPECT_EQ(&OrlSecureInvalidParameterHandler, _get_invalid_parameter_handler());
    EXPECT_THAT(Messages(), ElementsAre(installation));
    OrlSafeCat(Source, 42, room, 2, L"");
    OrlSafeCopy(Source, 42, room, 2, L"b");
    EXPECT_THAT(Messages(), ElementsAre(installation));

    ForgetInvalidParameterHandler();
    OrlSafeCat(Source, 42, room, 2, L"");
    EXPECT_THAT(Messages(), ElementsAre(installation, installation));
}

TEST_F(OrlSecure, InstallsItsHandlerBeforeTheCopyThatFails)
{
    ForgetInvalidParameterHandler();
    wchar_t room[2] = {};
    EXPECT_EQ(34, OrlSafeCopy(Source, 42, room, 2, L"abc"));
    EXPECT_THAT(Messages(), ElementsAre("..\\..\\Common\\Src\\OrlSecure (97): "
                                        "Setting invalid parameter handler to: OrlSecureInvalidParameterHandler",
                                        HandlerLine, TooSmall));
}

TEST_F(OrlSecure, HandlerTracesAndReturns)
{
    OrlSecureInvalidParameterHandler(nullptr, nullptr, nullptr, 0, 0);
    OrlSecureInvalidParameterHandler(L"expression", L"function", L"file", 1, 0);
    EXPECT_THAT(Messages(), ElementsAre(HandlerLine, HandlerLine));
}

TEST_F(OrlSecure, ReportsErrorsOnlyWhereErrorsOnlyAreLogged)
{
    m_registry.SetNumber(ProductKey, L"TRACE", 2);
    StartLog(1);
    wchar_t room[2] = {};
    EXPECT_EQ(34, OrlSafeCopy(Source, 42, room, L"abc"));
    EXPECT_THAT(Messages(), ElementsAre(TooSmall));
}

} // namespace orl::test
