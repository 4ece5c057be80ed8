// The smart pointers.
#include "tests/com/TestObjects.h"

#include <gtest/gtest.h>

namespace
{

class ComPtr : public ::testing::Test
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(References(), 1u) << "every reference is given back";
        m_object->Release();
        EXPECT_TRUE(m_gone);
    }
    ULONG References()
    {
        m_object->AddRef();
        return m_object->Release();
    }

    bool m_gone = false;
    Counter* m_object = new Counter(&m_gone);
};

TEST_F(ComPtr, APlainPointerIsGivenAReference)
{
    CComPtr<IWbemObjectSink> sink(m_object);
    EXPECT_EQ(References(), 2u);
    sink = m_object;
    EXPECT_EQ(References(), 2u);
    EXPECT_TRUE(sink);
    EXPECT_FALSE(!sink);
    EXPECT_TRUE(sink == static_cast<IWbemObjectSink*>(m_object));
    EXPECT_FALSE(sink == nullptr);
    sink.Release();
    EXPECT_EQ(References(), 1u);
    EXPECT_TRUE(!sink);
    EXPECT_TRUE(sink == nullptr);
    sink.Release();
}

TEST_F(ComPtr, CopiesCountAndMovesDoNot)
{
    CComPtr<Counter> first(m_object);
    CComPtr<Counter> second(first);
    EXPECT_EQ(References(), 3u);
    CComPtr<Counter> third(std::move(second));
    EXPECT_EQ(References(), 3u);
    EXPECT_EQ(second.p, nullptr);
    second = std::move(third);
    EXPECT_EQ(References(), 3u);
    first = second;
    EXPECT_EQ(References(), 3u);
    CComPtr<Counter>& itself = first;
    first = itself;
    EXPECT_EQ(References(), 3u);
    first = nullptr;
    EXPECT_EQ(References(), 2u);
}

TEST_F(ComPtr, AttachAndDetachDoNotCount)
{
    m_object->AddRef();
    CComPtr<Counter> pointer;
    pointer.Attach(m_object);
    EXPECT_EQ(References(), 2u);
    Counter* plain = pointer.Detach();
    EXPECT_EQ(References(), 2u);
    EXPECT_EQ(pointer.p, nullptr);
    plain->Release();
}

TEST_F(ComPtr, ItsAddressTakesAnAnswerAndLosesNothing)
{
    CComPtr<IUnknown> pointer(static_cast<IWbemObjectSink*>(m_object));
    EXPECT_EQ(References(), 2u);
    IUnknown** place = &pointer;
    EXPECT_EQ(References(), 1u);
    m_object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(place));
    EXPECT_EQ(References(), 2u);
}

TEST_F(ComPtr, ACopyGoesOutWithItsOwnReference)
{
    CComPtr<Counter> pointer(m_object);
    Counter* out = nullptr;
    EXPECT_EQ(pointer.CopyTo(&out), S_OK);
    EXPECT_EQ(References(), 3u);
    out->Release();
    EXPECT_EQ(pointer.CopyTo(nullptr), E_POINTER);
}

TEST_F(ComPtr, AnotherInterfaceIsAskedFor)
{
    CComPtr<IWbemObjectSink> sink(m_object);
    CComQIPtr<IWbemShutdown> shutdown(sink);
    EXPECT_EQ(shutdown.p, static_cast<IWbemShutdown*>(m_object));
    CComQIPtr<IWbemServices> services(sink);
    EXPECT_EQ(services.p, nullptr);
    CComPtr<IUnknown> unknown;
    unknown = shutdown;
    EXPECT_TRUE(unknown.IsEqualObject(sink));
    CComPtr<IWbemContext> none;
    none = sink;
    EXPECT_EQ(none.p, nullptr);
    EXPECT_FALSE(unknown.IsEqualObject(none));
    shutdown = unknown;
    EXPECT_EQ(References(), 4u);
}

TEST_F(ComPtr, OfTheSameInterfaceItIsTakenAsItIs)
{
    CComPtr<IWbemObjectSink> sink(m_object);
    CComQIPtr<IWbemObjectSink> same(sink.p);
    EXPECT_EQ(same.p, sink.p);
    EXPECT_EQ(References(), 3u);
}

} // namespace
