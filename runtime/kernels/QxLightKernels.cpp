// Functions for the light that surfaces reflect: `ambient`, and `diffuse`, `specular` and `phong`,
// which QxLitStrips.h computes for blocks of points.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;

void LoadAnswer(QxDiffuseStrip& answer, const QxMachineState& state, const QxCode& code,
                const Block& block)
{
    Load(answer.normals, Operand<Vector>(state, code, 1), block);
}

/// Loads the operands of a highlight.
template <class Answer>
void LoadAnswer(Answer& answer, const QxMachineState& state, const QxCode& code, const Block& block)
{
    Load(answer.normals, Operand<Vector>(state, code, 1), block);
    Load(answer.toEye, Operand<Vector>(state, code, 2), block);
    Load(answer.exponents, Operand<float>(state, code, 3), block);
}

template <class Answer>
QX_KERNEL_CODE void Lit(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto light = [&](const Block& block) {
        Answer answer;
        LoadAnswer(answer, state, code, block);
        answer.Prepare(block.count);
        Triples sums;
        QxSumLights(sums, state.lights, state.lightCount, answer, block);
        Store(Operand<Color>(state, code, 0), sums, block);
    };
    ForBlocks(points, [&](const Block& block) {
        // With a constant count, vectorized loops have no remainder.
        if (block.count == k_block)
            light({block.first, k_block, block.mask});
        else
            light(block);
    });
}

// A scene may compute the ambient light of a whole grid at once.

void AmbientOverGrid(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto result = Operand<Color>(state, code, 0);
    if (result.step == 1 && points.first == 0 && points.count == state.grid.Size())
        QxAmbientOverGrid(points.count, state.Lights(), result.values);
    else
        for (unsigned int i = points.first; i < points.End(); ++i)
            QxAt(result, i) = QxAmbientCall(state.Lights())(i);
}

constexpr QxKernelRow AmbientRow()
{
    QxKernelRow row = Each<Color&>(SqxPrimitive::CALL_PRIM_AMBIENT,
                                   AtPoint([](QxMachineState& state, unsigned int point, Color& r) {
                                       r = QxAmbientCall(state.Lights())(point);
                                   }));
    row.all = AmbientOverGrid;
    row.point = nullptr;  // a single point is a whole grid, too
    return row;
}

/// Returns a row whose kernels compute points in blocks. For a grid of one point, the row calls the
/// function of the run-time headers for one point, since a block would be slower.
template <class Answer, class Call, class... Types>
constexpr QxKernelRow LitRow(SqxPrimitive primitive)
{
    QxKernelRow row = Each<Color&, Types...>(
        primitive,
        AtPoint([](QxMachineState& state, unsigned int point, Color& r, const Types&... arguments) {
            r = Call(state.Lights())(point, arguments...);
        }));
    row.all = row.masked = Lit<Answer>;
    row.perPoint = row.readsLights = true;
    return row;
}

constexpr QxKernelRow k_rows[] = {
    AmbientRow(),
    LitRow<QxDiffuseStrip, QxDiffuseCall, Vector>(SqxPrimitive::CALL_PRIM_DIFFUSE),
    LitRow<QxSpecularStrip, QxSpecularCall, Vector, Vector, float>(
        SqxPrimitive::CALL_PRIM_SPECULAR),
    LitRow<QxSpecularStrip, QxSpecularCall, Vector, Vector, float>(
        SqxPrimitive::CALL_PRIM_SPECULARSTD),
    LitRow<QxPhongStrip, QxPhongCall, Vector, Vector, float>(SqxPrimitive::CALL_PRIM_PHONG),
};

}  // namespace

QxKernelRows LightKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
