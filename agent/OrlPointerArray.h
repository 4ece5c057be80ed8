// COrlPointerArray: a vector of pointers that owns what they point to.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <vector>

// Pointer is the element's type, such as ORL_SETTING*; null pointers may stand in the array.
//
// Erasing and destroying delete what was pointed to. Whatever else the standard vector offers to take pointers out
// (assign, pop_back, resize) deletes nothing and leaves them to the caller. The array is handed over
// by reference between modules that are built apart: the destructor is its only virtual operation.
//
// One thread uses an array at a time.
template <typename Pointer>
class COrlPointerArray : public std::vector<Pointer>
{
    static_assert(std::is_pointer_v<Pointer>);
    using Base = std::vector<Pointer>;

public:
    using typename Base::const_iterator;
    using typename Base::const_reference;
    using typename Base::iterator;
    using typename Base::reference;

    COrlPointerArray() = default;
    COrlPointerArray(const COrlPointerArray&) = delete;
    COrlPointerArray& operator=(const COrlPointerArray&) = delete;
    virtual ~COrlPointerArray() { clear(); }

    // Every slot of the range is null before the next element is deleted, so no one who looks meets a dead pointer.
    iterator erase(const_iterator first, const_iterator last)
    {
        const auto begin = Base::begin() + (first - Base::cbegin());
        const auto end = Base::begin() + (last - Base::cbegin());
        for (auto slot = begin; slot != end; ++slot)
        {
            delete *slot;
            *slot = nullptr;
        }
        return Base::erase(begin, end);
    }
    iterator erase(const_iterator position) { return erase(position, position + 1); }
    void clear() { erase(Base::cbegin(), Base::cend()); }

    // Takes the element over also when there is no memory to keep it in: it is deleted then, and std::bad_alloc thrown.
    void Add(std::unique_ptr<std::remove_pointer_t<Pointer>> element)
    {
        Base::push_back(element.get());
        static_cast<void>(element.release());
    }

    // std::out_of_range beyond the end.
    reference operator[](std::size_t index) { return Base::begin()[Checked(index)]; }
    const_reference operator[](std::size_t index) const { return Base::begin()[Checked(index)]; }
    reference at(std::size_t index) { return (*this)[index]; }
    const_reference at(std::size_t index) const { return (*this)[index]; }

private:
    std::ptrdiff_t Checked(std::size_t index) const
    {
        if (index >= Base::size())
            throw std::out_of_range("invalid vector<T> subscript");
        return static_cast<std::ptrdiff_t>(index);
    }
};
