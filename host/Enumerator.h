// IEnumWbemClassObject: the objects of a request, one after the other.
#pragma once

#include "com/OrlCom.h"
#include "host/Request.h"
#include "host/ResultStream.h"

#include <memory>
#include <mutex>
#include <vector>

namespace orl
{

class WorkerPool;

// A small result is kept as it passes, so that Reset and Clone see the same objects again; a larger one is asked for
// again, whatever flags the client gave. Memory does not grow with the result.
//
// Next answers WBEM_S_NO_ERROR with fewer objects than wanted only when a failure comes after them, which the following
// Next then answers; WBEM_S_FALSE at the end; WBEM_S_TIMEDOUT with the objects that came in time. Thread safe, one call
// after the other; a timeout holds also while another thread's call is under way.
class Enumerator : public ComObject<IEnumWbemClassObject>
{
public:
    static constexpr std::size_t kKept = 256; // objects of a result that is kept

    Enumerator(WorkerPool& workers, Ref<Request> request);
    ~Enumerator() override;

    // For synchronous calls: waits for the first object or the end. Throws CallFailure when the request fails before
    // its first object.
    void AwaitFirst();

    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject** objects, ULONG* returned) override;
    HRESULT STDMETHODCALLTYPE NextAsync(ULONG count, IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject** copy) override;
    HRESULT STDMETHODCALLTYPE Skip(LONG timeout, ULONG count) override;

private:
    // What it takes to show an object again.
    struct Kept
    {
        Ref<ObjectBody> body;
        std::shared_ptr<const Projection> projection;
    };
    enum class Step
    {
        Object,
        End,
        TimedOut
    };

    std::unique_lock<std::mutex> Enter(const Deadline& deadline);
    Step Advance(const Deadline& deadline, CComPtr<ClassObject>* object);
    Step Refill(const Deadline& deadline);
    void Start();
    void Stop();
    void Keep(const ClassObject& object);
    void Pass(ULONG count, IWbemObjectSink& sink) noexcept;
    HRESULT EndCode() const noexcept;

    WorkerPool& m_workers;
    const Ref<Request> m_request;
    std::mutex m_mutex;
    std::size_t m_position = 0; // of the object that comes next

    bool m_keeps = true;
    std::vector<Kept> m_kept; // the first objects of the result, while m_keeps

    Ref<ResultStream> m_stream; // null when the request is not running
    std::size_t m_streamPosition = 0;
    Objects m_chunk; // taken from the stream; m_chunk[m_chunkNext] is object m_streamPosition
    std::size_t m_chunkNext = 0;
    bool m_hasEnd = false; // the stream has ended: m_status tells how, m_streamPosition is the count
    CallStatus m_status;
};

} // namespace orl
