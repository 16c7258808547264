#pragma once

#include <memory>
#include <vector>

#include "machine/translate/QxMachineCode.h"

/// The memory of a run: where the values of each variable stand. That of locals is the run's own
/// and lasts from grid to grid of one size; the rest belongs to the grid, the instance or the
/// program.
class QxMachineStore {
public:
    /// `code` must outlive it. Nothing is allocated yet.
    explicit QxMachineStore(const QxMachineCode& code);
    /// Frees also the texts that kernels left in locals.
    ~QxMachineStore();
    QxMachineStore(const QxMachineStore&) = delete;
    QxMachineStore& operator=(const QxMachineStore&) = delete;

    /// Makes ready for that many points. All texts are empty, arrays are zero, and no reference is
    /// bound; what else locals hold is left from the run before, see `Clear`. `variables`: of the
    /// instance, whose values are used where they stand, so they must neither move nor change their
    /// length while code runs. Throws `QxHostError` if there is not enough memory, or more than
    /// `memoryLimit` bytes would be needed; it may be called again then.
    void Start(std::size_t points, std::vector<QxVar>& variables, std::size_t memoryLimit);
    /// Binds the predefined variables, behind `Start`. What the host did not set reads as zero.
    /// `eye` is copied; the arrays of `h` must last while code runs.
    void Bind(const QxHiddenVariables& h, const QxVector3& eye);
    /// Sets locals to zero, at all points. None may be a text or a reference.
    void Clear(const std::vector<std::uint32_t>& locals);

    /// That it is made ready for; one before the first run.
    [[nodiscard]] unsigned int Points() const
    {
        return static_cast<unsigned int>(m_points == 0 ? 1 : m_points);
    }
    /// Where the values of each variable start, by its number; kernels change what is re-bound.
    [[nodiscard]] void** Values() { return m_values.data(); }
    /// An array of zeros for each point, for what the host did not set. Made when first wanted, and
    /// valid until the next `Start`.
    [[nodiscard]] void* Zeros();
    /// Where a predefined variable of the grid starts, as `Bind` found it.
    [[nodiscard]] void* Home(std::uint32_t variable) const { return m_homes[variable]; }

private:
    void Allocate(std::size_t points, std::size_t memoryLimit);
    void CheckMemory(std::size_t points, std::size_t memoryLimit) const;
    void FreeTexts();
    void ResetReferences();
    [[nodiscard]] std::size_t BytesOf(const QxStorage& storage, std::size_t points) const;

    struct Memory {
        void operator()(void* block) const;
    };
    /// A predefined variable, and where in `QxHiddenVariables` the host tells its address.
    struct Binding {
        std::uint32_t variable;
        std::uint32_t offset;
    };

    const QxMachineCode& m_code;
    std::size_t m_points = 0;
    std::vector<void*> m_values;            // by variable
    std::vector<void*> m_homes;             // where they start at the begin of a run
    std::unique_ptr<char, Memory> m_block;  // of the locals
    std::vector<std::pair<std::uint32_t, std::size_t>> m_texts;  // variables that own texts, count
    std::vector<std::uint32_t> m_references;                     // and aliases, and what else moves
    std::vector<std::uint32_t> m_arrays;                         // locals
    std::vector<std::uint32_t> m_parameters;
    std::vector<Binding> m_predefined;
    std::vector<QxVector3> m_zeros;
    QxVector3 m_eye = {0, 0, 0};
};
