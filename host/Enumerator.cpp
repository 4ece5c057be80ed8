// IEnumWbemClassObject: the objects of a request, one after the other.
#include "host/Enumerator.h"

#include "host/WorkerPool.h"

#include <algorithm>
#include <memory>
#include <thread>

namespace orl
{
namespace
{

constexpr std::chrono::milliseconds kLookAgain{1};

} // namespace

Enumerator::Enumerator(WorkerPool& workers, Ref<Request> request) : m_workers(workers), m_request(std::move(request)) {}

Enumerator::~Enumerator()
{
    Stop();
}

// The request --------------------------------------------------------------------------------------------------------

void Enumerator::Start()
{
    auto call = MakeRef<Call>();
    m_stream = MakeRef<ResultStream>(call);
    try
    {
        m_workers.Run([request = m_request, call, stream = m_stream] { request->Run(*call, *stream); });
    }
    catch (...)
    {
        m_stream = {};
        throw;
    }
}

void Enumerator::Stop()
{
    if (m_stream)
        m_stream->Close();
    m_stream = {};
    m_streamPosition = 0;
    m_hasEnd = false;
    m_chunk.clear();
    m_chunkNext = 0;
}

void Enumerator::Keep(const ClassObject& object)
{
    if (m_kept.size() < kKept)
    {
        m_kept.push_back({object.Body(), object.Shown()});
        return;
    }
    m_keeps = false;
    m_kept = {};
}

Enumerator::Step Enumerator::Refill(const Deadline& deadline)
{
    m_chunk.clear();
    m_chunkNext = 0;
    switch (m_stream->Take(m_chunk, deadline))
    {
    case ResultStream::Taken::Some:
        return Step::Object;
    case ResultStream::Taken::TimedOut:
        return Step::TimedOut;
    default:
        m_hasEnd = true;
        m_status = m_stream->Status();
        return Step::End;
    }
}

// Moves over the object at m_position and, when `object` is given, hands it out.
Enumerator::Step Enumerator::Advance(const Deadline& deadline, CComPtr<ClassObject>* object)
{
    if (m_position < m_kept.size())
    {
        if (object)
            *object = MakeObject<ClassObject>(m_kept[m_position].body, m_kept[m_position].projection);
        ++m_position;
        return Step::Object;
    }
    if (m_position < m_streamPosition) // gone by: the request runs again
        Stop();
    if (!m_stream && !m_hasEnd)
        Start();
    for (;;)
    {
        if (m_chunkNext == m_chunk.size())
        {
            if (m_hasEnd)
                return Step::End;
            if (const Step step = Refill(deadline); step != Step::Object)
                return step;
        }
        CComPtr<ClassObject> next = std::move(m_chunk[m_chunkNext++]);
        if (m_keeps && m_streamPosition == m_kept.size())
            Keep(*next);
        if (m_streamPosition++ != m_position)
            continue; // passed before
        ++m_position;
        if (object)
            *object = std::move(next);
        return Step::Object;
    }
}

HRESULT Enumerator::EndCode() const noexcept
{
    return m_status.Failed() ? Publish(m_status) : HRESULT{WBEM_S_FALSE};
}

void Enumerator::AwaitFirst()
{
    const std::lock_guard lock(m_mutex);
    if (!m_stream)
        Start();
    if (m_chunk.empty() && Refill(std::nullopt) == Step::End && m_status.Failed())
        throw CallFailure(m_status);
}

// Not held when the deadline passes first. Threads that share an enumerator are rare, so who finds it taken just looks
// again every now and then.
std::unique_lock<std::mutex> Enumerator::Enter(const Deadline& deadline)
{
    if (!deadline)
        return std::unique_lock(m_mutex);
    std::unique_lock lock(m_mutex, std::try_to_lock);
    while (!lock && std::chrono::steady_clock::now() < *deadline)
    {
        std::this_thread::sleep_for(kLookAgain);
        static_cast<void>(lock.try_lock());
    }
    return lock;
}

// The interface ------------------------------------------------------------------------------------------------------

HRESULT Enumerator::Reset()
{
    const std::lock_guard lock(m_mutex);
    m_position = 0;
    return WBEM_S_NO_ERROR;
}

HRESULT Enumerator::Next(LONG timeout, ULONG count, IWbemClassObject** objects, ULONG* returned)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (returned)
                *returned = 0;
            if (!objects || !returned)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"Next has no place for its objects");
            std::fill_n(objects, count, nullptr);
            const Deadline deadline = DeadlineIn(timeout);
            const std::unique_lock lock = Enter(deadline);
            if (!lock)
                return WBEM_S_TIMEDOUT;
            while (*returned < count)
            {
                CComPtr<ClassObject> object;
                const Step step = Advance(deadline, std::addressof(object));
                if (step == Step::TimedOut)
                    return WBEM_S_TIMEDOUT;
                if (step == Step::End)
                    return m_status.Failed() && *returned > 0 ? HRESULT{WBEM_S_NO_ERROR} : EndCode();
                objects[(*returned)++] = object.Detach();
            }
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Enumerator::Skip(LONG timeout, ULONG count)
{
    return ComCall(
        [&]() -> HRESULT
        {
            const Deadline deadline = DeadlineIn(timeout);
            const std::unique_lock lock = Enter(deadline);
            if (!lock)
                return WBEM_S_TIMEDOUT;
            for (ULONG i = 0; i < count; ++i)
            {
                const Step step = Advance(deadline, nullptr);
                if (step == Step::TimedOut)
                    return WBEM_S_TIMEDOUT;
                if (step == Step::End)
                    return EndCode();
            }
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Enumerator::NextAsync(ULONG count, IWbemObjectSink* sink)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!sink)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"NextAsync has no sink");
            m_workers.Run([self = CComPtr<Enumerator>(this), client = CComPtr<IWbemObjectSink>(sink), count]
                          { self->Pass(count, *client); });
            return WBEM_S_NO_ERROR;
        });
}

// The next objects to a sink, one Indicate each.
void Enumerator::Pass(ULONG count, IWbemObjectSink& sink) noexcept
try
{
    HRESULT code = WBEM_S_NO_ERROR;
    for (ULONG i = 0; i < count && code == WBEM_S_NO_ERROR; ++i)
    {
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        code = Next(WBEM_INFINITE, 1, &object, &returned);
        if (returned && FAILED(sink.Indicate(1, &object.p)))
            code = WBEM_E_CALL_CANCELLED;
    }
    sink.SetStatus(WBEM_STATUS_COMPLETE, code, nullptr, TakeExtendedStatus());
}
catch (...)
{
    return; // a client that throws has nothing more to be told
}

HRESULT Enumerator::Clone(IEnumWbemClassObject** copy)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!copy)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"Clone has no place for the copy");
            const std::lock_guard lock(m_mutex);
            CComPtr<Enumerator> made = MakeObject<Enumerator>(m_workers, m_request);
            made->m_position = m_position;
            made->m_keeps = m_keeps;
            made->m_kept = m_kept;
            if (m_hasEnd && m_keeps) // all there is: the copy need not ask again
            {
                made->m_hasEnd = true;
                made->m_status = m_status;
                made->m_streamPosition = m_streamPosition;
            }
            *copy = made.Detach();
            return WBEM_S_NO_ERROR;
        });
}

} // namespace orl
