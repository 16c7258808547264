#pragma once

#include <type_traits>
#include <typeinfo>
#include <utility>

#include "support/SlcCollectable.h"

/// Shared ownership of a `T` derived from `SlcCollectable`. The whole object is one raw pointer.
///
/// It is kept as a `SlcCollectable*`, so that a forward declaration of `T` is enough to hold,
/// copy and release one; only making one from a `T*` and looking inside need the full class.
template <class T>
class SlcPtr {
public:
    SlcPtr() = default;
    SlcPtr(std::nullptr_t) {}
    /// A holder more for an object that may have some: the count stands in the object itself.
    SlcPtr(T* object) : m_object(object) { Retain(); }
    SlcPtr(const SlcPtr& other) : m_object(other.m_object) { Retain(); }
    SlcPtr(SlcPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~SlcPtr() { Release(); }

    // From a pointer to a derived class.
    template <class U, class = std::enable_if_t<std::is_base_of_v<T, U> && !std::is_same_v<T, U>>>
    SlcPtr(const SlcPtr<U>& other) : m_object(other.DontUseOutsideTheClassPointer())
    {
        Retain();
    }
    template <class U, class = std::enable_if_t<std::is_base_of_v<T, U> && !std::is_same_v<T, U>>>
    SlcPtr(SlcPtr<U>&& other) noexcept : m_object(std::exchange(other.m_object, nullptr))
    {
    }

    /// Equal pointers need no change, oneself included.
    SlcPtr& operator=(const SlcPtr& other)  // NOLINT(bugprone-unhandled-self-assignment)
    {
        if (m_object != other.m_object)
            SlcPtr(other).Swap(*this);
        return *this;
    }
    SlcPtr& operator=(SlcPtr&& other) noexcept
    {
        if (m_object != other.m_object)
            SlcPtr(std::move(other)).Swap(*this);
        return *this;
    }

    // The analyzer does not count: it takes the first release for the last one, and then each look
    // for one at what is freed. A release out of its sight costs a hundredth of a compile. Nor does
    // it know which functions give an object for certain.
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete,clang-analyzer-core.uninitialized.UndefReturn)
    /// Not tested for null.
    T* operator->() const { return static_cast<T*>(m_object); }
    T& operator*() const { return *static_cast<T*>(m_object); }
    // NOLINTEND(clang-analyzer-cplusplus.NewDelete,clang-analyzer-core.uninitialized.UndefReturn)

    [[nodiscard]] bool Null() const { return m_object == nullptr; }
    explicit operator bool() const { return m_object != nullptr; }

    /// Identity of the objects, not equality of what they hold.
    template <class U>
    bool operator==(const SlcPtr<U>& other) const
    {
        return m_object == other.DontUseOutsideTheClassPointer();
    }

    /// An arbitrary but fixed order, for look-up in maps only: it differs from run to run, so
    /// nothing that a user sees may depend on it.
    bool operator<(const SlcPtr& other) const { return m_object < other.m_object; }

    void Swap(SlcPtr& other) noexcept { std::swap(m_object, other.m_object); }

    /// The raw pointer, for the conversions of `SlcPtr` and `CheckCast` only.
    // As above. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete)
    [[nodiscard]] SlcCollectable* DontUseOutsideTheClassPointer() const { return m_object; }

private:
    template <class U>
    friend class SlcPtr;

    // As above.
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete)
    void Retain() const
    {
        if (m_object)
            ++m_object->m_references;
    }
    void Release() const
    {
        if (m_object && --m_object->m_references == 0)
            delete m_object;
    }
    // NOLINTEND(clang-analyzer-cplusplus.NewDelete)

    SlcCollectable* m_object = nullptr;
};

/// The shared object as a `To`. Null gives null; an object of another class throws
/// `std::bad_cast`, which nothing catches: it is a fault of the compiler. A cast to a base class
/// costs nothing, one to the class of the object itself next to nothing.
template <class To, class From>
[[nodiscard]] SlcPtr<To> CheckCast(const SlcPtr<From>& from)
{
    if constexpr (std::is_base_of_v<To, From>) {
        return from;
    } else {
        SlcCollectable* object = from.DontUseOutsideTheClassPointer();
        if (!object)
            return nullptr;
        if (&typeid(*object) == &typeid(To))
            return static_cast<To*>(object);
        return &dynamic_cast<To&>(*object);
    }
}

/// Makes a shared object; the one place where such an object meets `new`.
template <class T, class... Arguments>
[[nodiscard]] SlcPtr<T> MakeShared(Arguments&&... arguments)
{
    return new T(std::forward<Arguments>(arguments)...);
}
