#pragma once

#include <type_traits>
#include <typeinfo>
#include <utility>

#include "support/SlcCollectable.h"

/// Shared ownership of a `T` derived from `SlcCollectable`. The whole object is one raw pointer.
///
/// The pointer is stored as a `SlcCollectable*`, so a forward declaration of `T` is enough to hold,
/// copy and release it; the full class is needed only to make one from a `T*`, to convert between
/// classes, and to access the object.
template <class T>
class SlcPtr {
public:
    SlcPtr() = default;
    SlcPtr(std::nullptr_t) {}
    /// The object may already have other holders, since the count is in the object itself.
    SlcPtr(T* object) : m_object(object) { Retain(); }
    SlcPtr(const SlcPtr& other) : m_object(other.m_object) { Retain(); }
    SlcPtr(SlcPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~SlcPtr() { Release(); }

    // Converts from a pointer to a derived class.
    template <class U, class = std::enable_if_t<std::is_base_of_v<T, U> && !std::is_same_v<T, U>>>
    SlcPtr(const SlcPtr<U>& other) : m_object(other.DontUseOutsideTheClassPointer())
    {
        Retain();
    }
    template <class U, class = std::enable_if_t<std::is_base_of_v<T, U> && !std::is_same_v<T, U>>>
    SlcPtr(SlcPtr<U>&& other) noexcept : m_object(std::exchange(other.m_object, nullptr))
    {
    }

    /// Both assignments do nothing if both point to the same object, as in self-assignment.
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

    // The analyzer does not follow the reference count: it takes the first release for the last
    // one, and reports each later access as a use after free. Hiding the release from it would slow
    // compilation by one percent. It also does not know which functions never return null.
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete,clang-analyzer-core.uninitialized.UndefReturn)
    /// Like `operator*`, does not check for null.
    T* operator->() const { return static_cast<T*>(m_object); }
    T& operator*() const { return *static_cast<T*>(m_object); }
    // NOLINTEND(clang-analyzer-cplusplus.NewDelete,clang-analyzer-core.uninitialized.UndefReturn)

    [[nodiscard]] bool Null() const { return m_object == nullptr; }
    explicit operator bool() const { return m_object != nullptr; }

    /// Compares the addresses of the objects, not their contents.
    template <class U>
    bool operator==(const SlcPtr<U>& other) const
    {
        return m_object == other.DontUseOutsideTheClassPointer();
    }

    /// An arbitrary but fixed order, only for look-up in maps: it differs from run to run, so no
    /// visible output may depend on it.
    bool operator<(const SlcPtr& other) const { return m_object < other.m_object; }

    void Swap(SlcPtr& other) noexcept { std::swap(m_object, other.m_object); }

    /// Returns the raw pointer, only for `CheckCast` and for members that take another `SlcPtr`.
    // See `operator->`. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete)
    [[nodiscard]] SlcCollectable* DontUseOutsideTheClassPointer() const { return m_object; }

private:
    template <class U>
    friend class SlcPtr;

    // See `operator->`.
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

/// Casts to a `To`. Null yields null. An object that is not a `To` throws `std::bad_cast`: a fault
/// of the compiler, which only `SlcCheckSemantics` catches, around light statements. A cast to a
/// base class needs no check; one to the object's own class only compares two addresses.
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

/// Makes a shared object. This is the only place that calls `new` for one.
template <class T, class... Arguments>
[[nodiscard]] SlcPtr<T> MakeShared(Arguments&&... arguments)
{
    return new T(std::forward<Arguments>(arguments)...);
}
