#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "QxDerivatives.h"
#include "QxLights.h"
#include "kernels/QxFileHandles.h"
#include "sqx/SqxPrimitive.h"

// Kernels: functions that run one instruction, for many points or for a single one. This file
// declares their arguments, and the rows of the table that lists them.

struct QxCode;

/// How an element of an operand is stored: as one, three or sixteen floats, as a flag of the size
/// of a float, or as the address of a text. `Any` is the requirement of kernels that accept any
/// storage, and the storage of the variable for discarded results.
enum class QxStored : unsigned char { Any, Number, Flag, Triple, Matrix, Text };

/// The number of enumerators of `QxStored`.
constexpr std::size_t k_qxStoredKinds = static_cast<std::size_t>(QxStored::Text) + 1;

/// Returns the size of one value in bytes; `Any` has room for the largest.
[[nodiscard]] constexpr std::size_t QxBytesOf(QxStored stored)
{
    switch (stored) {
    case QxStored::Any:
    case QxStored::Matrix:
        return 16 * sizeof(float);
    case QxStored::Number:
    case QxStored::Flag:
        return sizeof(float);
    case QxStored::Triple:
        return 3 * sizeof(float);
    case QxStored::Text:
        return sizeof(const char*);
    }
    return 0;
}

/// An operand of a translated instruction.
struct QxOperand {
    std::uint32_t variable = 0;  // index in `QxMachineState::values`
    std::uint32_t step = 0;      // 1 if each point has a value; 0 if all points share one
    std::uint32_t size = 1;      // elements of an array; 1 if not an array
    QxStored stored = QxStored::Any;
    bool takenBack = false;  // an array, also of length 1, to which a shadeop may write numbers
};

/// The points from `first` up to, but not including, `End()` whose flag in `mask` is set, or all of
/// them if `mask` is null. The index of a flag is the number of its point; flags of points outside
/// the range must not be read.
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

/// A shadeop of a library, called as QxShadeop.h describes; `data` is passed to the method. The
/// first call loads the library, see `QxShadeops`.
struct QxLoadedShadeop {
    void (*method)(void* data, int argc, void** argv) = nullptr;
    void* data = nullptr;
    std::string name;
};

/// A text that a point sends to the scene. In parallel brackets an instruction runs for all points
/// of a strip before the next instruction does, so texts are delayed until the strip is finished,
/// and then sorted by point.
struct QxNote {
    unsigned int point;
    bool print;  // the text is from `printf`; otherwise it reports an error
    std::string text;
};

/// Counts the work of instructions on texts and lists, which may have any length. Too much work
/// ends the run, see `QxMachineRun::SetStepLimit`.
class QxWorkCounter {
public:
    /// Adds a number of characters, values or states of regular expressions. Throws `QxHostError`
    /// if the limit is exceeded, and `QxHostStopped` if the host stops the run.
    virtual void CountInner(std::size_t work) = 0;

protected:
    ~QxWorkCounter() = default;
};

/// The queries of one instruction to the scene, for all its active points, the answers, and the
/// handles of the files that have been queried. A run reuses this memory for all instructions; the
/// kernel of `COMPUTE_FILTERSTEP_POINTS` uses `numbers` for its intermediate values.
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

/// The part of a run that kernels access. The run sets it up before it runs code. While a block
/// runs, the run updates the current light, `notesWait` and the addresses that it re-binds, and
/// sends and clears `notes`; kernels re-bind aliases, add to `notes`, and change `lightsAreForP`
/// and the members for queries and random numbers. Values belong to the run, the host or the
/// program, and their addresses are valid while a block runs.
struct QxMachineState {
    void** values = nullptr;  // by variable; some are re-bound, see QxMachineStore.cpp
    QxGrid grid = {0, 0};
    const QxShadingContext* context = nullptr;
    QxShaderSupport* support = nullptr;
    QxWorkCounter* work = nullptr;
    const QxVector3* P = nullptr;
    QxLightInput* lights = nullptr;
    unsigned int lightCount = 0;
    const QxLightInput* light = nullptr;  // current light of the innermost loop; null if none
    unsigned int lightNumber = 0;         // numbered as in a shared object, see `LightMessage`
    bool lightsAreForP = false;           // `EVAL_LIGHTS_FOR_P` need not run the lights again
    std::span<const QxLoadedShadeop> shadeops;
    bool notesWait = false;
    std::vector<QxNote> notes;
    QxQuestions questions;
    QxDraws draws;

    [[nodiscard]] QxLights Lights() const { return {support, P, lights, lightCount}; }
    /// Sends a text of a point to the scene, or stores it until the strip is finished.
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

/// Runs an instruction for some points of a grid. `code` identifies the operands, and `state`
/// contains their values. Results at points that are not in `points` are unchanged, unless nothing
/// needs them; `QxKernelRow::statement` clears a flag there.
using QxKernel = void (*)(QxMachineState& state, const QxCode& code, const QxPoints& points);

/// Runs an instruction for a grid of one point, whose values, uniform or varying, are the first
/// elements of their arrays. The results have the same bits as those of the other kernels.
using QxPointKernel = void (*)(QxMachineState& state, const QxOperand* operands);

/// The kernels of a primitive, and the storage that its operands must have.
struct QxKernelRow {
    QxKernel all = nullptr;         // for any combination of uniform and varying operands
    QxKernel masked = nullptr;      // for the points of a mask; null: `all` serves both
    QxPointKernel point = nullptr;  // null: `all` serves one point too
    /// Null except for cheap functions, which may also be computed for inactive points. Used if the
    /// result, operand 0, is varying. Has two kernels for each combination c of uniform and varying
    /// arguments: for all points at index 2 c, for a mask at 2 c + 1. Bit k of c is set if argument
    /// k, which is operand k + 1, is varying.
    const QxKernel* shaped = nullptr;
    /// For a light statement: like `masked`, but also clears the flag, operand 0, outside the mask.
    QxKernel statement = nullptr;
    const QxStored* operands = nullptr;
    /// The storage of each argument of a list after these operands; null if there is no list.
    const QxStored* rest = nullptr;
    unsigned int operandCount = 0;
    SqxPrimitive primitive{};
    /// The results at a point depend only on its own operands and, with `readsLights`, on its own
    /// lights. There are no other effects, so points may be computed in any order.
    bool perPoint = false;
    /// The results also depend on the values of lights, which `EVAL_LIGHTS` and `EVAL_LIGHTS_FOR_P`
    /// compute.
    bool readsLights = false;
};

using QxKernelRows = std::span<const QxKernelRow>;

// The kernels that are compiled for each instruction set.
namespace qxbaseline {
[[nodiscard]] QxKernelRows CardKernels();
[[nodiscard]] QxKernelRows ColorKernels();
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
[[nodiscard]] QxKernelRows ColorKernels();
[[nodiscard]] QxKernelRows OperatorKernels();
[[nodiscard]] QxKernelRows FunctionKernels();
[[nodiscard]] QxKernelRows FilterKernels();
[[nodiscard]] QxKernelRows NeighbourKernels();
[[nodiscard]] QxKernelRows LightKernels();
[[nodiscard]] QxKernelRows NoiseKernels();
[[nodiscard]] QxKernelRows SplineKernels();
[[nodiscard]] QxKernelRows StatementKernels();
}  // namespace qxavx2

// The kernels that would not be faster with a larger instruction set.
namespace qxcommon {
[[nodiscard]] QxKernelRows SceneKernels();
[[nodiscard]] QxKernelRows QuestionKernels();
[[nodiscard]] QxKernelRows ListKernels();
[[nodiscard]] QxKernelRows ReferenceKernels();
[[nodiscard]] QxKernelRows ShadeopKernels();
}  // namespace qxcommon
