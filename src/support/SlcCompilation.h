#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

/// The state of one compilation, except its tree and its code: counters, reports, pools of names
/// and constants, the state of scanner and parser. All of it is destroyed with the object, so a
/// process can compile any number of sources independently.
///
/// Each thread has one current compilation, the last that it entered and has not left. Functions
/// that seem global, such as `NbErrors`, refer to it. A thread that is in no compilation has a
/// default one, which lives as long as the thread.
class SlcCompilation {
public:
    SlcCompilation() = default;
    ~SlcCompilation();
    SlcCompilation(const SlcCompilation&) = delete;
    SlcCompilation& operator=(const SlcCompilation&) = delete;

    /// Returns the current compilation of the calling thread.
    [[nodiscard]] static SlcCompilation& Current()
    {
        return t_entered ? *t_entered : OwnOfThread();
    }

    /// Makes a compilation the thread's current one for the life of this object.
    class Entered {
    public:
        explicit Entered(SlcCompilation& compilation);
        ~Entered();
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;

    private:
        SlcCompilation* m_before;
    };

    /// Returns the compilation's only `T`, which is made on first use. Most parts are classes that
    /// only one `.cpp` file knows.
    ///
    /// Called several times per token, so the look-up is inlined, but the creation is not.
    template <class T>
    [[nodiscard]] T& Part()
    {
        const std::size_t own = s_number<T>.load(std::memory_order_relaxed);
        if (own < m_parts.size() && m_parts[own]) [[likely]]
            return static_cast<Holder<T>&>(*m_parts[own]).value;
        return static_cast<Holder<T>&>(Make(s_number<T>, MakeHolder<T>)).value;
    }

private:
    struct AnyHolder {
        virtual ~AnyHolder() = default;
    };
    template <class T>
    struct Holder : AnyHolder {
        T value{};
    };

    template <class T>
    [[nodiscard]] static std::unique_ptr<AnyHolder> MakeHolder()
    {
        return std::make_unique<Holder<T>>();
    }

    /// Makes the default compilation of the thread its current one, and returns it.
    [[nodiscard]] static SlcCompilation& OwnOfThread();
    /// Returns the number of a kind of part; assigns one if it is still 0.
    [[nodiscard]] static std::size_t NumberOf(std::atomic<std::size_t>& number);
    /// Adds the part that `make` returns.
    [[nodiscard]] AnyHolder& Make(std::atomic<std::size_t>& number,
                                  std::unique_ptr<AnyHolder> (*make)());

    static constinit thread_local SlcCompilation* t_entered;
    /// The number of a kind of part, the same in all compilations; 0 until it is first used.
    template <class T>
    static constinit inline std::atomic<std::size_t> s_number = 0;

    std::vector<std::unique_ptr<AnyHolder>> m_parts;  // by number; number 0 is not used
    std::vector<std::size_t> m_order;                 // numbers of the parts, first made first
};

/// Returns the part `T` of the current compilation.
template <class T>
[[nodiscard]] T& SlcPartOfCompilation()
{
    return SlcCompilation::Current().Part<T>();
}
