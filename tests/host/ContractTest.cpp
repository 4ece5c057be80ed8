// Providers that do not keep to what a provider owes its service.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

namespace orl::test
{
namespace
{

class HostContract : public HostTest
{
protected:
    void Serve(ScriptedProvider::Answer answer)
    {
        Provider().enumerate = std::move(answer);
        Provider().get = Provider().enumerate;
    }
    // The outcome of an enumeration into a sink.
    Collector::Status Enumerate()
    {
        m_sink = MakeObject<Collector>();
        EXPECT_EQ(WBEM_S_NO_ERROR,
                  Service().CreateInstanceEnumAsync(CComBSTR(L"Test_Lamp"), WBEM_FLAG_SHALLOW, nullptr, m_sink));
        Collector::Status status = m_sink->Await();
        Own().Workers().Stop();
        EXPECT_EQ(1u, m_sink->Statuses());
        return status;
    }
    void ExpectBreach(const wchar_t* what, std::size_t objects)
    {
        const Collector::Status status = Enumerate();
        EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(status.code));
        EXPECT_EQ(std::wstring(L"the provider LampProvider ") + what, ToldBy(status.object).description);
        EXPECT_EQ(objects, m_sink->Count());
        // The same on the caller's own thread.
        CComPtr<IWbemClassObject> object;
        EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE),
                  HexText(Service().GetObject(CComBSTR(L"Test_Lamp.Name=\"a\""), 0, nullptr, &object, nullptr)));
        EXPECT_EQ(std::wstring(L"the provider LampProvider ") + what, TakeTold().description);
        EXPECT_EQ(nullptr, object.p);
    }

    CComPtr<Collector> m_sink;
};

TEST_F(HostContract, NoSetStatusBeforeTheSinkIsReleased)
{
    Serve(
        [this](const std::wstring&, IWbemObjectSink* sink)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(L"a", 1);
            return sink->Indicate(1, &lamp.p);
        });
    ExpectBreach(L"released its sink without a SetStatus", 1);
}

TEST_F(HostContract, ASecondSetStatus)
{
    Serve(
        [this](const std::wstring&, IWbemObjectSink* sink)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(L"a", 1);
            sink->Indicate(1, &lamp.p);
            sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
            EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(sink->SetStatus(0, WBEM_E_FAILED, nullptr, nullptr)));
            return HRESULT{WBEM_S_NO_ERROR};
        });
    ExpectBreach(L"sent a second SetStatus", 1);
}

TEST_F(HostContract, AnObjectAfterTheSetStatus)
{
    Serve(
        [this](const std::wstring&, IWbemObjectSink* sink)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(L"a", 1);
            sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
            EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(sink->Indicate(1, &lamp.p)));
            return HRESULT{WBEM_S_NO_ERROR};
        });
    ExpectBreach(L"sent an object after its SetStatus", 0);
}

TEST_F(HostContract, ANullObject)
{
    Serve(
        [this](const std::wstring&, IWbemObjectSink* sink)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(L"a", 1);
            IWbemClassObject* objects[] = {lamp, nullptr};
            EXPECT_EQ(HexText(WBEM_E_INVALID_OBJECT), HexText(sink->Indicate(2, objects)));
            return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
        });
    ExpectBreach(L"sent a null object", 1);
}

TEST_F(HostContract, AnIndicateWithoutObjects)
{
    Serve(
        [](const std::wstring&, IWbemObjectSink* sink)
        {
            EXPECT_EQ(HexText(WBEM_E_INVALID_PARAMETER), HexText(sink->Indicate(1, nullptr)));
            EXPECT_EQ(HexText(WBEM_E_INVALID_PARAMETER), HexText(sink->Indicate(-1, nullptr)));
            return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
        });
    ExpectBreach(L"sent an Indicate without objects", 0);
}

TEST_F(HostContract, AnEmptyIndicateIsNone)
{
    Serve(
        [](const std::wstring&, IWbemObjectSink* sink)
        {
            EXPECT_EQ(WBEM_S_NO_ERROR, sink->Indicate(0, nullptr));
            EXPECT_EQ(WBEM_S_NO_ERROR, sink->SetStatus(WBEM_STATUS_PROGRESS, 50, nullptr, nullptr));
            return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
        });
    EXPECT_EQ(WBEM_S_NO_ERROR, Enumerate().code);
}

// An object that the service did not make.
class ForeignObject : public ComObject<IUnknown>
{
};

TEST_F(HostContract, AnObjectFromElsewhere)
{
    Serve(
        [](const std::wstring&, IWbemObjectSink* sink)
        {
            const CComPtr<ForeignObject> foreign = MakeObject<ForeignObject>();
            auto* object = reinterpret_cast<IWbemClassObject*>(foreign.p); // only ever asked for its interfaces
            EXPECT_EQ(HexText(WBEM_E_INVALID_OBJECT), HexText(sink->Indicate(1, &object)));
            return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
        });
    ExpectBreach(L"sent an object that is not made from this service's classes", 0);
}

TEST_F(HostContract, AClassInsteadOfAnInstance)
{
    Provider().enumerate = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> definition;
        Provider().Service()->GetObject(CComBSTR(L"Test_Lamp"), 0, nullptr, &definition, nullptr);
        EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(sink->Indicate(1, &definition.p)));
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const Collector::Status status = Enumerate();
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(status.code));
    EXPECT_EQ(L"the provider sent the class Test_Lamp instead of an instance", ToldBy(status.object).description);
}

TEST_F(HostContract, AnExceptionOutOfAMethod)
{
    Serve([](const std::wstring&, IWbemObjectSink*) -> HRESULT { throw std::runtime_error("at once"); });
    ExpectBreach(L"let an exception out of its method", 0);
}

TEST_F(HostContract, AFailureThatWasToldTwiceIsTheFirstOne)
{
    Serve(
        [](const std::wstring&, IWbemObjectSink* sink)
        {
            sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr);
            return HRESULT{WBEM_E_FAILED};
        });
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(Enumerate().code));
}

TEST_F(HostContract, TheReasonInTheErrorObjectOfAFailedMethodIsHandedOn)
{
    Serve(
        [](const std::wstring&, IWbemObjectSink*)
        {
            CallStatus own;
            own.code = WBEM_E_FAILED;
            own.description = L"the cable is off";
            return Publish(own);
        });
    const Collector::Status status = Enumerate();
    EXPECT_EQ(HexText(WBEM_E_FAILED), HexText(status.code));
    EXPECT_EQ(L"the cable is off", ToldBy(status.object).description);
}

} // namespace
} // namespace orl::test
