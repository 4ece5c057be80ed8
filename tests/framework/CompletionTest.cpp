// Completion and RequestSink: one end for a request, and nothing after it.
#include "framework/com/Completion.h"
#include "framework/com/RequestSink.h"
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

TEST(Completion, TellsTheClientOnceWhatFinishSays)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    {
        Completion completion(sink);
        completion.Finish(WBEM_E_NOT_FOUND, CComBSTR(L"text"));
        EXPECT_EQ(sink->References(), 1u);
        completion.Finish(WBEM_S_NO_ERROR);
    }
    ASSERT_EQ(sink->Statuses().size(), 1u);
    EXPECT_EQ(Hex{sink->Final().result}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(sink->Final().text, L"text");
    EXPECT_EQ(sink->References(), 1u);
}

TEST(Completion, TellsAFailureWhenNobodyFinished)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    {
        const Completion completion(sink);
        EXPECT_TRUE(sink->Statuses().empty());
    }
    EXPECT_EQ(Hex{sink->Final().result}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(sink->References(), 1u);
}

TEST(Completion, DoesNotRepeatWhatTheClientDidNotTake)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    sink->statusAnswer = WBEM_E_FAILED;
    {
        Completion completion(sink);
        completion.Finish(WBEM_S_NO_ERROR);
    }
    EXPECT_EQ(sink->Statuses().size(), 1u);
}

class RequestSinkTest : public ::testing::Test
{
protected:
    HRESULT Indicate()
    {
        IWbemClassObject* object = instance;
        return sink->Indicate(1, &object);
    }

    CComPtr<FakeClassObject> instance = MakeObject<FakeClassObject>(MakeFakeClass(L"C"));
    CComPtr<RecordingSink> client = MakeObject<RecordingSink>();
    CComPtr<RequestSink> sink = MakeObject<RequestSink>(client.p);
};

TEST_F(RequestSinkTest, CountsWhatTheClientTakes)
{
    IWbemClassObject* three[] = {instance, instance, instance};
    EXPECT_EQ(sink->Indicate(3, three), WBEM_S_NO_ERROR);
    EXPECT_EQ(Indicate(), WBEM_S_NO_ERROR);
    EXPECT_EQ(sink->Indicated(), 4u);
    EXPECT_EQ(client->Taken(), 4u);
    EXPECT_EQ(sink->Refusal(), WBEM_S_NO_ERROR);
}

TEST_F(RequestSinkTest, RemembersTheFirstRefusalAndKeepsAsking)
{
    client->indicate = [](ULONG n) {
        return n == 1 ? WBEM_E_FAILED : n == 2 ? WBEM_E_INVALID_OBJECT : WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Hex{Indicate()}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(Hex{Indicate()}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(Hex{Indicate()}, Hex{WBEM_S_NO_ERROR});
    EXPECT_EQ(Hex{sink->Refusal()}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(sink->Indicated(), 1u);
}

TEST_F(RequestSinkTest, AsksAClientThatCancelledNoMore)
{
    client->indicate = [](ULONG) { return WBEM_E_CALL_CANCELLED; };
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Hex{Indicate()}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_EQ(client->IndicateCalls(), 1u);
}

TEST_F(RequestSinkTest, LetsNothingThroughAfterTheEnd)
{
    sink->Close();
    EXPECT_EQ(Hex{Indicate()}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_EQ(client->IndicateCalls(), 0u);
    EXPECT_EQ(sink->Refusal(), WBEM_S_NO_ERROR);
}

TEST_F(RequestSinkTest, DropsAManagersFinalStatusAndPassesItsProgressOn)
{
    EXPECT_EQ(sink->SetStatus(WBEM_STATUS_COMPLETE, WBEM_E_FAILED, nullptr, nullptr), WBEM_S_NO_ERROR);
    EXPECT_TRUE(client->Statuses().empty());
    EXPECT_EQ(sink->SetStatus(WBEM_STATUS_PROGRESS, 5, CComBSTR(L"half"), nullptr), WBEM_S_NO_ERROR);
    ASSERT_EQ(client->Statuses().size(), 1u);
    EXPECT_EQ(client->Statuses()[0].flags, WBEM_STATUS_PROGRESS);
    EXPECT_EQ(client->Statuses()[0].text, L"half");
}

} // namespace
} // namespace orl::test
