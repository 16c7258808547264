// Folds calls with the functions of the run time themselves, under the names by which generated C++
// calls them, so that a folded call has the bits of one that runs.
//
// Tested by tests/runtime/FoldedCallsTest.cpp, tests/optimizer/OptimizerTest.cpp,
// TEST(SlcConvertConstOp, ...), and by all levels against each other in tests/random.

#include "optimizer/SlcFoldBuiltIn.h"

#include <algorithm>
#include <iterator>

#include "QxBuiltInNames.h"

namespace {

using Arguments = std::span<const float>;

struct Row {
    SqxPrimitive primitive;
    std::size_t arguments;
    float (*value)(Arguments);
};

// The row of a primitive with one, two or three numbers as arguments.
#define SLC_FOLD1(NAME)                                                                            \
    {                                                                                              \
        SqxPrimitive::NAME, 1, [](Arguments a) {                                                   \
            float result;                                                                          \
            NAME(result, a[0]);                                                                    \
            return result;                                                                         \
        }                                                                                          \
    }
#define SLC_FOLD2(NAME)                                                                            \
    {                                                                                              \
        SqxPrimitive::NAME, 2, [](Arguments a) {                                                   \
            float result;                                                                          \
            NAME(result, a[0], a[1]);                                                              \
            return result;                                                                         \
        }                                                                                          \
    }
#define SLC_FOLD3(NAME)                                                                            \
    {                                                                                              \
        SqxPrimitive::NAME, 3, [](Arguments a) {                                                   \
            float result;                                                                          \
            NAME(result, a[0], a[1], a[2]);                                                        \
            return result;                                                                         \
        }                                                                                          \
    }

constexpr Row k_rows[] = {
    SLC_FOLD1(CALL_PRIM_RADIANS),
    SLC_FOLD1(CALL_PRIM_DEGREES),
    SLC_FOLD1(CALL_PRIM_SIN),
    // Outside -1..1 the sine of no angle: no number, so that the call stays in the code.
    {SqxPrimitive::CALL_PRIM_ASIN, 1, [](Arguments a) { return qxmath::Asin(a[0]); }},
    SLC_FOLD1(CALL_PRIM_COS),
    SLC_FOLD1(CALL_PRIM_ACOS),
    SLC_FOLD1(CALL_PRIM_TAN),
    SLC_FOLD1(CALL_PRIM_ATAN),
    SLC_FOLD2(CALL_PRIM_ATAN2),
    SLC_FOLD2(CALL_PRIM_POW),
    SLC_FOLD1(CALL_PRIM_EXP),
    SLC_FOLD1(CALL_PRIM_SQRT),
    SLC_FOLD1(CALL_PRIM_LOG),
    SLC_FOLD2(CALL_PRIM_LOG2),
    SLC_FOLD2(CALL_PRIM_MOD),
    SLC_FOLD1(CALL_PRIM_ABS),
    SLC_FOLD1(CALL_PRIM_SIGN),
    SLC_FOLD2(CALL_PRIM_MIN2_FLOAT),
    SLC_FOLD2(CALL_PRIM_MAX2_FLOAT),
    SLC_FOLD3(CALL_PRIM_CLAMP_1D),
    SLC_FOLD1(CALL_PRIM_FLOOR),
    SLC_FOLD1(CALL_PRIM_CEIL),
    SLC_FOLD1(CALL_PRIM_ROUND),
    SLC_FOLD2(CALL_PRIM_STEP),
    SLC_FOLD1(CALL_PRIM_INVERSESQRT),
};

}  // namespace

std::optional<float> SlcFoldBuiltIn(SqxPrimitive primitive, std::span<const float> arguments)
{
    const auto row = std::find_if(std::begin(k_rows), std::end(k_rows),
                                  [&](const Row& r) { return r.primitive == primitive; });
    if (row == std::end(k_rows) || arguments.size() != row->arguments)
        return std::nullopt;
    return row->value(arguments);
}
