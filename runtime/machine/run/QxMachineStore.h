#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "machine/translate/QxMachineCode.h"

/// Returns the address of element 0 of an array whose element `first` is at `place`. This address
/// may be outside of the memory, so it is computed as an integer: pointers must not leave their
/// array.
template <class Value>
[[nodiscard]] inline Value* QxBaseOf(Value* place, std::size_t first)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<Value*>(reinterpret_cast<std::uintptr_t>(place) -
                                    first * sizeof(Value));
}

/// The memory of a run: the address of the values of each variable. This object owns the memory of
/// locals, which is kept between grids of the same size, and the memory of the eye and of
/// predefined variables that the host did not set; the rest belongs to the grid, the instance or
/// the program.
class QxMachineStore {
public:
    /// `code` must outlive this object. Allocates no memory for values yet.
    explicit QxMachineStore(const QxMachineCode& code);
    /// Also frees the texts that kernels left in locals.
    ~QxMachineStore();
    QxMachineStore(const QxMachineStore&) = delete;
    QxMachineStore& operator=(const QxMachineStore&) = delete;

    /// Prepares for the given number of points. Local texts are empty, local arrays are zero, and
    /// references are unbound; other locals may have values of the previous run, see `Clear`.
    /// `variables` are those of the instance; their values are used in place, so they must not move
    /// or change their length while code runs. Throws `QxHostError` if there is not enough memory,
    /// or if more than `memoryLimit` bytes are needed; it may be called again afterwards.
    void Start(std::size_t points, std::vector<QxVar>& variables, std::size_t memoryLimit);
    /// Binds the predefined variables; call it after `Start`. Variables that the host did not set
    /// are zero at first. `eye` is copied; the arrays of `h` must live while code runs. Throws
    /// `QxHostError` if the arrays of zeros would exceed the memory limit, and `std::bad_alloc` if
    /// there is not enough memory.
    void Bind(const QxHiddenVariables& h, const QxVector3& eye);
    /// Binds the predefined variables for code without varying operands: all except the eye are
    /// zero at first.
    void BindWithoutGrid(const QxVector3& eye);
    /// Sets locals to zero at all points. They must not be texts or references.
    void Clear(const std::vector<std::uint32_t>& locals);

    /// Binds the operands of `brackets`, which are locals with room for one strip, to the strip
    /// that begins at point `first`.
    void BindStrip(const QxCode& brackets, unsigned int first);

    /// Returns the number of points that this object is prepared for; 1 if it is not prepared.
    [[nodiscard]] unsigned int Points() const
    {
        return static_cast<unsigned int>(m_points == 0 ? 1 : m_points);
    }
    /// The address of the values of each variable, by number; the run and its kernels re-bind some.
    [[nodiscard]] void** Values() { return m_values.data(); }
    /// Returns an array with a zero triple for each point, for variables that the host did not set
    /// and no instruction writes. Made on first use, and valid until `Start` is called for another
    /// number of points. Throws like `Bind`.
    [[nodiscard]] void* Zeros() { return Zeros(k_onlyRead); }
    /// The address of a predefined variable of the grid, as set by `Bind`.
    [[nodiscard]] void* Home(std::uint32_t variable) const { return m_homes[variable]; }

private:
    void Allocate(std::size_t points);
    void CheckMemory(std::size_t points, std::uint64_t bytes) const;
    [[nodiscard]] void* Zeros(std::size_t array);
    void FreeTexts();
    void ResetReferences();

    static constexpr std::size_t k_onlyRead = 0;

    struct Memory {
        void operator()(void* block) const;
    };
    /// A predefined variable, and the offset of its address in `QxHiddenVariables`; the size of
    /// that class for the eye.
    struct Binding {
        std::uint32_t variable;
        std::uint32_t offset;
    };

    const QxMachineCode& m_code;
    std::size_t m_memoryLimit = 0;
    std::uint64_t m_bytes = 0;  // of the block
    std::size_t m_points = 0;
    std::vector<void*> m_values;            // by variable
    std::vector<void*> m_homes;             // their addresses before code re-binds them
    std::unique_ptr<char, Memory> m_block;  // of the locals
    std::vector<std::pair<std::uint32_t, std::size_t>> m_texts;  // variables that own texts, with
                                                                 // their count
    std::vector<std::uint32_t> m_references;                     // references and aliases, which
                                                                 // kernels re-bind
    std::vector<std::uint32_t> m_arrays;                         // local ones, except of texts
    std::vector<std::uint32_t> m_parameters;
    std::vector<Binding> m_predefined;
    std::vector<std::vector<QxVector3>> m_zeros;  // in place of variables that the host did not
                                                  // set: the first for those that are only read
    std::vector<QxVector3> m_single;              // by index in `m_predefined`, without a grid
    QxVector3 m_eye = {0, 0, 0};
};
