// What is worked out once and then known.
#pragma once

#include <map>
#include <memory>
#include <mutex>

namespace orl
{

// Any thread may ask. What is known stays where it is for as long as the memo lives.
template <class Key, class Value>
class Memo
{
public:
    // The value of a key, from `make` the first time. What `make` throws goes to the caller and nothing is kept; two
    // threads that ask first may both make it, and one of the two is kept.
    template <class Make>
    const Value& Get(const Key& key, const Make& make)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (const auto known = m_values.find(key); known != m_values.end())
                return *known->second;
        }
        auto made = std::make_shared<const Value>(make());
        const std::lock_guard lock(m_mutex);
        return *m_values.emplace(key, std::move(made)).first->second;
    }

private:
    std::mutex m_mutex;
    std::map<Key, std::shared_ptr<const Value>> m_values; // shared: the value's type may be unknown where a memo ends
};

} // namespace orl
