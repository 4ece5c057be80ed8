#include "tests/support/RecordingSink.h"

#include <gtest/gtest.h>

namespace orl::test
{

std::vector<CComPtr<IWbemClassObject>> RecordingSink::Objects() const
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_objects;
}

CComPtr<FakeClassObject> RecordingSink::Fake(std::size_t index) const
{
    const auto objects = Objects();
    return index < objects.size() ? CComPtr<FakeClassObject>(dynamic_cast<FakeClassObject*>(objects[index].p))
                                  : CComPtr<FakeClassObject>();
}

ULONG RecordingSink::IndicateCalls() const
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_calls;
}

ULONG RecordingSink::Taken() const
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_taken;
}

std::vector<RecordingSink::Status> RecordingSink::Statuses() const
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_statuses;
}

RecordingSink::Status RecordingSink::Final() const
{
    Status final{-1, E_UNEXPECTED, L"", nullptr};
    int count = 0;
    for (const Status& status : Statuses())
    {
        if (status.flags != WBEM_STATUS_COMPLETE)
            continue;
        final = status;
        ++count;
    }
    EXPECT_EQ(count, 1) << "final statuses";
    return final;
}

std::wstring RecordingSink::Extended(const std::wstring& name) const
{
    const CComPtr<IWbemClassObject> object = Final().object;
    const auto* fake = dynamic_cast<FakeClassObject*>(object.p);
    return fake != nullptr ? fake->Value(name) : L"<none>";
}

HRESULT RecordingSink::Indicate(LONG count, IWbemClassObject** objects)
{
    const std::lock_guard<std::mutex> guard(m_lock);
    const HRESULT status = indicate ? indicate(m_calls + 1) : WBEM_S_NO_ERROR;
    ++m_calls;
    if (FAILED(status))
        return status;
    m_taken += static_cast<ULONG>(count);
    for (LONG index = 0; keepsObjects && index < count; ++index)
        m_objects.emplace_back(objects[index]);
    return status;
}

HRESULT RecordingSink::SetStatus(LONG flags, HRESULT result, BSTR text, IWbemClassObject* object)
{
    const std::lock_guard<std::mutex> guard(m_lock);
    m_statuses.push_back({flags, result, std::wstring(text != nullptr ? text : L"", SysStringLen(text)), object});
    return statusAnswer;
}

} // namespace orl::test
