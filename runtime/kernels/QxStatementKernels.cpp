// Light statements. Each sets a flag. A conditional statement for the whole grid also clears the
// flag outside its mask, since instructions that read the flag do not know the mask. The cone of a
// uniform angle is prepared once, since its cosine is the most expensive part; `solar` ignores its
// angle.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Flag = QxStopAndBool;

/// Sets the flag of each point that `where` selects to `statement(point)`. `Where::Statement` also
/// clears the other flags.
template <Where where, class Statement>
inline void SetFlags(const GridOperand<Flag>& flags, const QxPoints& points,
                     const Statement& statement)
{
    for (unsigned int i = points.first; i < points.End(); ++i) {
        if (where == Where::All || points.QxIsSet(points.mask[i]))
            QxAt(flags, i) = statement(i);
        else if (where == Where::Statement)
            QxAt(flags, i) = false;
    }
}

/// The cones for the angles in an operand.
class Cones {
public:
    explicit Cones(const GridOperand<float>& angles)
        : m_angles(angles),
          m_shared(angles.step == 0 ? *angles.values : 0)
    {
    }
    [[nodiscard]] QxCone At(unsigned int point) const
    {
        return m_angles.step == 0 ? m_shared : QxCone(QxAt(m_angles, point));
    }

private:
    GridOperand<float> m_angles;
    QxCone m_shared;
};

struct Illuminate {
    static constexpr const QxStored* operands =
        k_stored<Flag, Vector, Vector, float, Vector, Vector>;
    static constexpr unsigned int count = 6;

    template <Where where>
    QX_KERNEL_CODE static void Run(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
    {
        const auto position = Operand<Vector>(state, code, 1);
        const auto axis = Operand<Vector>(state, code, 2);
        const Cones cones(Operand<float>(state, code, 3));
        const auto Ps = Operand<Vector>(state, code, 4);
        const auto L = Operand<Vector>(state, code, 5);
        SetFlags<where>(Operand<Flag>(state, code, 0), points, [&](unsigned int i) {
            QxAt(L, i) = QxAt(Ps, i) - QxAt(position, i);
            return cones.At(i).Has(QxAt(L, i), QxAt(axis, i));
        });
    }
};

struct IlluminateNoCone {
    static constexpr const QxStored* operands = k_stored<Flag, Vector, Vector, Vector>;
    static constexpr unsigned int count = 4;

    template <Where where>
    QX_KERNEL_CODE static void Run(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
    {
        const auto position = Operand<Vector>(state, code, 1);
        const auto Ps = Operand<Vector>(state, code, 2);
        const auto L = Operand<Vector>(state, code, 3);
        SetFlags<where>(Operand<Flag>(state, code, 0), points, [&](unsigned int i) {
            return QxIlluminateNoConeCall()(QxAt(position, i), Vector(QxAt(Ps, i)), QxAt(L, i));
        });
    }
};

struct Solar {
    static constexpr const QxStored* operands = k_stored<Flag, Vector, float, Vector>;
    static constexpr unsigned int count = 4;

    template <Where where>
    QX_KERNEL_CODE static void Run(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
    {
        const auto axis = Operand<Vector>(state, code, 1);
        const auto angle = Operand<float>(state, code, 2);
        const auto L = Operand<Vector>(state, code, 3);
        SetFlags<where>(Operand<Flag>(state, code, 0), points, [&](unsigned int i) {
            return QxSolarCall()(QxAt(L, i), QxAt(axis, i), QxAt(angle, i));
        });
    }
};

/// Tests whether the current light is within the cone around the axis; false outside loops over
/// lights.
struct Illuminance {
    static constexpr const QxStored* operands = k_stored<Flag, Vector, Vector, float>;
    static constexpr unsigned int count = 4;

    template <Where where>
    QX_KERNEL_CODE static void Run(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
    {
        const auto axis = Operand<Vector>(state, code, 2);
        const Cones cones(Operand<float>(state, code, 3));
        SetFlags<where>(Operand<Flag>(state, code, 0), points, [&](unsigned int i) {
            return state.light && cones.At(i).Has(state.light->L[i], QxAt(axis, i));
        });
    }
};

template <class Statement>
constexpr QxKernelRow StatementRow(SqxPrimitive primitive)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = Statement::template Run<Where::All>;
    row.masked = Statement::template Run<Where::Masked>;
    row.statement = Statement::template Run<Where::Statement>;
    row.operands = Statement::operands;
    row.operandCount = Statement::count;
    return row;
}

constexpr QxKernelRow k_rows[] = {
    StatementRow<Illuminate>(SqxPrimitive::ILLUMINATE),
    StatementRow<IlluminateNoCone>(SqxPrimitive::ILLUMINATE_NO_CONE),
    StatementRow<Solar>(SqxPrimitive::SOLAR),
    StatementRow<Illuminance>(SqxPrimitive::ILLUMINANCE),
};

}  // namespace

QxKernelRows StatementKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
