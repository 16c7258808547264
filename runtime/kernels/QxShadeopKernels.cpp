// Calls of shadeops, one point at a time, with the addresses of their arguments. Since shadeops are
// foreign code, they get copies; only the result and arrays of numbers are copied back. Types and
// lengths were checked when the shader was opened.
//
// Tested by tests/shadeops, which compare with shared objects that call the same library.

#include <algorithm>

#include "QxBuiltInNames.h"

#include "kernels/QxListForms.h"

namespace qxcommon {
namespace {

/// Calls a shadeop point by point. The shadeop gets copies, since all points share uniform values,
/// and all runs share constants; the elements of an array are contiguous in the copy.
class ShadeopCall {
public:
    ShadeopCall(QxMachineState& state, const QxCode& code)
        : m_state(state),
          m_code(code),
          m_shadeop(state.shadeops[static_cast<std::size_t>(code.number)])
    {
        std::size_t places = 0;
        for (std::size_t k = 0; k < code.count; ++k)
            places += PlacesOf(code.operands[k]);
        m_memory.resize(places);
        Place* place = m_memory.data();
        for (std::size_t k = 0; k < code.count; ++k) {
            m_argv.push_back(place);
            place += PlacesOf(code.operands[k]);
        }
    }

    void Run(unsigned int point)
    {
        const QxOperand& result = m_code.operands[0];
        std::fill_n(static_cast<Place*>(m_argv[0]), PlacesOf(result), Place{});
        for (std::size_t k = 1; k < m_code.count; ++k)
            Load(m_code.operands[k], point, static_cast<char*>(m_argv[k]));
        m_handed = m_argv;  // the shadeop may change this list
        m_shadeop.method(m_shadeop.data, static_cast<int>(m_handed.size()), m_handed.data());
        for (std::size_t k = 1; k < m_code.count; ++k)
            if (m_code.operands[k].takenBack)
                Store(m_code.operands[k], point, static_cast<const char*>(m_argv[k]));
        StoreResult(result, ElementOf(result, point, 0));
    }

private:
    using Place = std::uint64_t;  // so that numbers and addresses are aligned

    static std::size_t PlacesOf(const QxOperand& operand)
    {
        return (operand.size * QxBytesOf(operand.stored) + sizeof(Place) - 1) / sizeof(Place);
    }
    [[nodiscard]] void* ElementOf(const QxOperand& operand, unsigned int point,
                                  std::size_t element) const
    {
        const std::size_t points = operand.step == 0 ? 1 : m_state.grid.Size();
        return Address(m_state, operand, element * points + std::size_t{point} * operand.step);
    }
    void Load(const QxOperand& operand, unsigned int point, char* target) const
    {
        const std::size_t bytes = QxBytesOf(operand.stored);
        for (std::size_t j = 0; j < operand.size; ++j, target += bytes) {
            const void* source = ElementOf(operand, point, j);
            static constexpr Text none = "";
            if (operand.stored == QxStored::Text && !*static_cast<const Text*>(source))
                source = &none;
            std::memcpy(target, source, bytes);
        }
    }
    /// Copies an array back.
    void Store(const QxOperand& operand, unsigned int point, const char* source) const
    {
        const std::size_t bytes = QxBytesOf(operand.stored);
        for (std::size_t j = 0; j < operand.size; ++j, source += bytes)
            std::memcpy(ElementOf(operand, point, j), source, bytes);
    }
    void StoreResult(const QxOperand& result, void* target) const
    {
        if (result.stored == QxStored::Text) {
            Text text = nullptr;
            std::memcpy(&text, m_argv[0], sizeof text);
            QxAssignString(*static_cast<Text*>(target), text ? text : "");
        } else {
            std::memcpy(target, m_argv[0], QxBytesOf(result.stored));
        }
    }

    QxMachineState& m_state;
    const QxCode& m_code;
    const QxLoadedShadeop& m_shadeop;
    std::vector<Place> m_memory;  // of the result and the arguments
    std::vector<void*> m_argv;    // their addresses
    std::vector<void*> m_handed;
};

void CallShadeop(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    ShadeopCall call(state, code);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            call.Run(i);
}

constexpr QxKernelRow k_rows[] = {
    Anything(SqxPrimitive::CALL_DSO, CallShadeop),
};

}  // namespace

QxKernelRows ShadeopKernels()
{
    return k_rows;
}

}  // namespace qxcommon
