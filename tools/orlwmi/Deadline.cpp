// Waiting in slices, and leaving behind what does not come back.
#include "tools/orlwmi/Deadline.h"

#include "tools/orlwmi/Platform.h"

#include <objbase.h>

#include <algorithm>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace orl::client
{
namespace
{

constexpr std::chrono::milliseconds LongestSlice{100};
constexpr std::chrono::milliseconds ReleaseTime{200};

std::string Seconds(std::chrono::milliseconds time)
{
    std::string text = std::to_string(time.count() / 1000);
    if (const auto rest = time.count() % 1000; rest != 0)
    {
        std::string digits = std::to_string(1000 + rest).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        text += "." + digits;
    }
    return text + (text == "1" ? " second" : " seconds");
}

} // namespace

Deadline::Deadline(std::optional<std::chrono::milliseconds> timeout)
    : m_timeout(timeout), m_end(Clock::now() + timeout.value_or(std::chrono::milliseconds(0)))
{
}

LONG Deadline::Slice() const
{
    if (Interrupted())
    {
        throw Failure(ExitCode::Interrupted, "interrupted");
    }
    if (!m_timeout)
    {
        return static_cast<LONG>(LongestSlice.count());
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now());
    if (left.count() <= 0)
    {
        throw Failure(ExitCode::TimedOut, "no answer within " + Seconds(*m_timeout));
    }
    return static_cast<LONG>(std::min(left, LongestSlice).count());
}

void Deadline::Await(std::function<void()> work) const
{
    auto done = std::make_shared<std::promise<void>>();
    auto future = done->get_future();
    std::thread(
        [done, run = std::move(work)]
        {
            const HRESULT com = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            try
            {
                run();
                done->set_value();
            }
            catch (...)
            {
                done->set_exception(std::current_exception());
            }
            if (SUCCEEDED(com))
            {
                CoUninitialize();
            }
        })
        .detach();
    while (future.wait_for(std::chrono::milliseconds(Slice())) != std::future_status::ready)
    {
    }
    future.get();
}

void Abandon(IUnknown* object)
{
    if (object == nullptr)
    {
        return;
    }
    auto done = std::make_shared<std::promise<void>>();
    auto future = done->get_future();
    std::thread(
        [done, object]
        {
            object->Release();
            done->set_value();
        })
        .detach();
    future.wait_for(ReleaseTime);
}

} // namespace orl::client
