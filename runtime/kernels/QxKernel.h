#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "QxDerivatives.h"
#include "QxLights.h"
#include "kernels/QxFileHandles.h"
#include "sqx/SqxPrimitive.h"

// The function that runs one instruction over many points, and its arguments.

struct QxCode;

/// How an operand is stored, an element of it: one, three or sixteen floats, a flag of the size of
/// a float, or the address of a text. `Any` is only wanted, by kernels that look themselves.
enum class QxStored : unsigned char { Any, Number, Flag, Triple, Matrix, Text };

/// An operand of an instruction that was made ready to run.
struct QxOperand {
    std::uint32_t variable = 0;  // its place among the base addresses of a run
    std::uint32_t step = 0;      // from point to point, in values: 0 if one value serves all points
    std::uint32_t size = 1;      // elements of an array
    QxStored stored = QxStored::Any;
};

/// Points `first` to `first + count`, without those whose flag in `mask` is not set. The mask
/// starts at point 0; null means all points.
struct QxPoints {
    unsigned int first;
    unsigned int count;
    const QxStopAndBool* mask;

    [[nodiscard]] unsigned int End() const { return first + count; }
    bool operator()(unsigned int point) const { return !mask || QxIsSet(mask[point]); }
    static bool QxIsSet(QxStopAndBool flag) { return static_cast<bool>(flag); }
};

inline bool QxIsEverywhere(const QxPoints& points)
{
    return !points.mask;
}

/// A shadeop of a loaded library, called as QxShadeop.h says. `data`: the result of its init
/// function.
struct QxLoadedShadeop {
    void (*method)(void* data, int argc, void** argv) = nullptr;
    void* data = nullptr;
    std::string name;
};

/// A text that a point hands to the scene. Within parallel brackets, where an instruction handles
/// many points before the next one begins, texts wait until all those points are through.
struct QxNote {
    unsigned int point;
    bool print;  // else a report
    std::string text;
};

/// Counts what an instruction does beyond a few operations at each point, for the limit of steps.
class QxWorkCounter {
public:
    /// So many characters, values or states of expressions. Throws if an evaluation has gone on for
    /// too long; an instruction at many points counts as it goes.
    virtual void CountInner(std::size_t work) = 0;

protected:
    ~QxWorkCounter() = default;
};

/// What points ask the scene at once, and its answers: room that a run keeps from one instruction
/// to the next.
struct QxQuestions {
    QxFileHandles files;
    std::vector<unsigned int> points;
    std::vector<QxTextureQuery> patches;
    std::vector<QxPointsQuery> corners;
    std::vector<QxRayQuery> rays;
    std::vector<QxRGBColor> colors;
    std::vector<float> numbers;
    std::vector<QxVector3> directions;
};

/// What kernels see of a run. The run sets it up before a block, and moves on what changes within
/// it: the current light, and where values start. Addresses are those of the run or of the host,
/// and last while the block runs.
struct QxMachineState {
    void** values = nullptr;  // where those of each variable start; references are re-bound here
    QxGrid grid = {0, 0};
    const QxShadingContext* context = nullptr;
    QxShaderSupport* support = nullptr;
    QxWorkCounter* work = nullptr;
    const QxVector3* P = nullptr;
    const QxVector3* Ng = nullptr;
    QxLightInput* lights = nullptr;
    unsigned int lightCount = 0;
    const QxLightInput* light = nullptr;  // that the innermost light loop has come to
    unsigned int lightNumber = 0;         // as a shared object counts, see `LightMessage`
    bool lightsAreForP = false;           // they were evaluated for the grid's own points, and hold
    bool inLight = false;                 // a light shader runs
    std::span<const QxLoadedShadeop> shadeops;
    bool notesWait = false;
    std::vector<QxNote> notes;
    QxQuestions questions;
    QxDraws draws;

    [[nodiscard]] QxLights Lights() const { return {support, P, lights, lightCount}; }
    /// Passes a text of a point to the scene, or keeps it until the strip is finished.
    void Emit(unsigned int point, bool print, std::string text)
    {
        if (notesWait)
            notes.push_back({point, print, std::move(text)});
        else if (print)
            support->Print(text.c_str());
        else
            support->Report(text.c_str());
    }
};

/// Runs an instruction for points of a grid. Operands are found by `code`, their values by `state`;
/// what is written at points that are not among `points` stays as it is.
using QxKernel = void (*)(QxMachineState& state, const QxCode& code, const QxPoints& points);

/// Runs an instruction for a grid of one point, whose values, uniform or varying, are the first of
/// their arrays. Gives the same bits as the other kernels.
using QxPointKernel = void (*)(QxMachineState& state, const QxOperand* operands);

/// How to run a primitive.
struct QxKernelRow {
    QxKernel all = nullptr;         // every operand uniform or varying
    QxKernel masked = nullptr;      // the same where the mask is set
    QxPointKernel point = nullptr;  // null: `all` serves one point too
    /// Of a cheap function with a varying result: for each choice of varying arguments, of which
    /// the first has bit 0, the kernels for all points and for a mask in turn. Such a function may
    /// be computed for points that need no result.
    const QxKernel* shaped = nullptr;
    /// Of a light statement: where the mask is not set its flag, the first operand, is false.
    QxKernel statement = nullptr;
    const QxStored* operands = nullptr;
    /// Of a list of arguments after these operands; null if there is none.
    const QxStored* rest = nullptr;
    unsigned int operandCount = 0;
    SqxPrimitive primitive{};
    /// A point's results depend on its own operands alone, and nothing else changes: points may be
    /// handled in any order.
    bool perPoint = false;
};

using QxKernelRows = std::span<const QxKernelRow>;

// The kernels of each instruction set.
namespace qxbaseline {
[[nodiscard]] QxKernelRows CardKernels();
[[nodiscard]] QxKernelRows OperatorKernels();
[[nodiscard]] QxKernelRows FunctionKernels();
[[nodiscard]] QxKernelRows FilterKernels();
[[nodiscard]] QxKernelRows NeighbourKernels();
[[nodiscard]] QxKernelRows LightKernels();
[[nodiscard]] QxKernelRows NoiseKernels();
[[nodiscard]] QxKernelRows SplineKernels();
[[nodiscard]] QxKernelRows StatementKernels();
}  // namespace qxbaseline
namespace qxavx2 {
[[nodiscard]] QxKernelRows CardKernels();
[[nodiscard]] QxKernelRows OperatorKernels();
[[nodiscard]] QxKernelRows FunctionKernels();
[[nodiscard]] QxKernelRows FilterKernels();
[[nodiscard]] QxKernelRows NeighbourKernels();
[[nodiscard]] QxKernelRows LightKernels();
[[nodiscard]] QxKernelRows NoiseKernels();
[[nodiscard]] QxKernelRows SplineKernels();
[[nodiscard]] QxKernelRows StatementKernels();
}  // namespace qxavx2

// What no instruction set makes faster.
namespace qxcommon {
[[nodiscard]] QxKernelRows SceneKernels();
[[nodiscard]] QxKernelRows QuestionKernels();
[[nodiscard]] QxKernelRows ListKernels();
[[nodiscard]] QxKernelRows ReferenceKernels();
[[nodiscard]] QxKernelRows ShadeopKernels();
}  // namespace qxcommon
