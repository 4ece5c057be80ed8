// Counted references to objects that are not COM objects.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace orl
{

// The count that Ref keeps. Thread safe; the last Release deletes.
class RefCounted
{
public:
    void AddRef() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept
    {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    RefCounted(const RefCounted&) = delete;
    RefCounted& operator=(const RefCounted&) = delete;

protected:
    RefCounted() = default;
    virtual ~RefCounted() = default;

private:
    mutable std::atomic<std::uint32_t> m_references{0};
};

// Holds one reference to a T that has AddRef and Release; T's own count starts at 0.
template <class T>
class Ref
{
public:
    Ref() noexcept = default;
    Ref(T* object) noexcept : m_object(object)
    {
        if (m_object)
            m_object->AddRef();
    }
    Ref(const Ref& other) noexcept : Ref(other.m_object) {}
    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <class U>
    Ref(const Ref<U>& other) noexcept : Ref(other.Get())
    {
    }
    ~Ref()
    {
        if (m_object)
            m_object->Release();
    }
    Ref& operator=(Ref other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* Get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};

template <class T, class... Arguments>
Ref<T> MakeRef(Arguments&&... arguments)
{
    return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace orl
