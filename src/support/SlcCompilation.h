#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// Everything that one compile keeps beside its tree and its code: counters, reports, pools of
/// names and constants, the state of scanner and parser. All of it goes with the object, so that a
/// process compiles any number of sources, and each as if it were the first.
///
/// A thread is in one compilation at a time, the one that it has entered last. The functions that
/// seem global, such as `NbErrors`, answer for that one. A thread that has entered none is in one
/// of its own, to its end.
class SlcCompilation {
public:
    SlcCompilation() = default;
    ~SlcCompilation();
    SlcCompilation(const SlcCompilation&) = delete;
    SlcCompilation& operator=(const SlcCompilation&) = delete;

    /// That of the calling thread.
    [[nodiscard]] static SlcCompilation& Current();

    /// While it lives, the thread is in the compilation.
    class Entered {
    public:
        explicit Entered(SlcCompilation& compilation);
        ~Entered();
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;

    private:
        SlcCompilation* m_before;
    };

    /// The one `T` of the compilation, made when it is first asked for. Each folder keeps what it
    /// needs in classes of its own, which nothing else names.
    template <class T>
    [[nodiscard]] T& Part()
    {
        static const std::size_t k_number = NewNumber();
        if (k_number >= m_parts.size() || !m_parts[k_number])
            Put(k_number, std::make_unique<Holder<T>>());
        return static_cast<Holder<T>&>(*m_parts[k_number]).value;
    }

private:
    struct AnyHolder {
        virtual ~AnyHolder() = default;
    };
    template <class T>
    struct Holder : AnyHolder {
        T value{};
    };

    [[nodiscard]] static std::size_t NewNumber();
    void Put(std::size_t number, std::unique_ptr<AnyHolder> part);

    std::vector<std::unique_ptr<AnyHolder>> m_parts;  // by number
    std::vector<std::size_t> m_order;                 // in which they were made
};

/// `SlcCompilation::Current().Part<T>()`.
template <class T>
[[nodiscard]] T& SlcPartOfCompilation()
{
    return SlcCompilation::Current().Part<T>();
}
