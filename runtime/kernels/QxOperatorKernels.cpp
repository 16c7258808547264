// Rows of the table of kernels for operators, except the rows that are generated from cards. Only
// negations, `INIT_` instructions and string assignment call macros of generated C++.
//
// Most operators cost less than the loop around them. So most rows (Cheap) have a separate loop for
// each combination of uniform and varying arguments, with and without a mask, which the compiler
// can vectorize. Rows for matrices and strings (Each) have one loop for all combinations.
// `SET_UNIFORM_BOOL_FLAG` has its own kernel.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp, which compares with shared objects.

#include <algorithm>

#include "QxBuiltInNames.h"
#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;
using Matrix = QxMatrix44;
using Flag = QxStopAndBool;
using Text = const char*;

// The number of flags that are combined before the loop tests whether one was true.
constexpr unsigned int k_flagsAtOnce = 128;

/// Sets the uniform flag, operand 0, to whether operand 1 is true at any of the points, which may
/// be the points of one strip. Ignores the mask.
QX_KERNEL_CODE void IsTrueSomewhere(QxMachineState& state, const QxCode& code,
                                    const QxPoints& points)
{
    const auto source = Operand<Flag>(state, code, 1);
    const unsigned int first = source.step == 0 ? 0 : points.first;
    const unsigned int end = source.step == 0 ? 1 : points.End();
    unsigned int any = 0;
    for (unsigned int i = first; i < end && any == 0; i += k_flagsAtOnce)
        for (unsigned int j = i; j < std::min(i + k_flagsAtOnce, end); ++j)
            any |= source.values[j].value;
    *static_cast<Flag*>(state.values[code.operands[0].variable]) = any != 0;
}

constexpr QxKernelRow SomewhereRow(SqxPrimitive primitive)
{
    QxKernelRow row = Cheap<Flag, Flag>(primitive, [](Flag& r, Flag a) { r = a; });
    row.all = IsTrueSomewhere;
    row.masked = nullptr;
    row.shaped = nullptr;
    row.perPoint = false;
    return row;
}

Flag Both(Flag left, Flag right)
{
    Flag result;
    result.value = left.value & right.value;
    return result;
}

Flag Either(Flag left, Flag right)
{
    Flag result;
    result.value = left.value | right.value;
    return result;
}

Flag Not(Flag flag)
{
    Flag result;
    result.value = flag.value ^ 1U;
    return result;
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    Each<Text&, Text>(SqxPrimitive::ASSIGN_STRING_STRING, InRun([](QxMachineState& state, Text& r, Text a) {
        ASSIGN_STRING_STRING(r, a);
        state.work->CountInner(std::strlen(r));  // if `a` was the old text of `r`, it is freed
    })),
    Cheap<float>(SqxPrimitive::ASSIGN_TO_ZERO_FLOAT, [](float& r) { r = float(); }),
    Cheap<Color>(SqxPrimitive::ASSIGN_TO_ZERO_COLOR, [](Color& r) { r = Color(); }),
    Cheap<Vector>(SqxPrimitive::ASSIGN_TO_ZERO_POINT, [](Vector& r) { r = Vector(); }),
    Each<Matrix&>(SqxPrimitive::ASSIGN_TO_ZERO_MATRIX, [](Matrix& r) { r = Matrix(); }),
    Cheap<float, float>(SqxPrimitive::INVERT_FLOAT, [](float& r, const float& a) { INVERT_FLOAT_FLOAT(r, a); }),
    Cheap<Color, Color>(SqxPrimitive::INVERT_COLOR, [](Color& r, const Color& a) { INVERT_COLOR_COLOR(r, a); }),
    Cheap<Vector, Vector>(SqxPrimitive::INVERT_POINT, [](Vector& r, const Vector& a) { INVERT_POINT_POINT(r, a); }),
    Cheap<Vector, float, float, float>(SqxPrimitive::INIT_POINT, [](Vector& r, float x, float y, float z) { INIT_POINT(r, x, y, z); }),
    Cheap<Color, float, float, float>(SqxPrimitive::INIT_COLOR, [](Color& r, float x, float y, float z) { INIT_COLOR(r, x, y, z); }),
    Each<Matrix&, float, float, float, float, float, float, float, float, float, float, float,
         float, float, float, float, float>(
        SqxPrimitive::INIT_MATRIX, [](Matrix& r, auto... values) { INIT_MATRIX(r, values...); }),

    SomewhereRow(SqxPrimitive::SET_UNIFORM_BOOL_FLAG),
    Cheap<Flag>(SqxPrimitive::SET_BOOL, [](Flag& r) { r = false; }),
    Cheap<Flag, Flag>(SqxPrimitive::INVERT_BOOL_FLAG, [](Flag& r, Flag a) { r = Not(a); }),
    Cheap<Flag, Flag, Flag>(SqxPrimitive::INVERT_INNER_BOOL_FLAG, [](Flag& r, Flag a, Flag outer) { r = Both(outer, Not(a)); }),
    Cheap<Flag, Flag, Flag>(SqxPrimitive::OR_BOOL_FLAG, [](Flag& r, Flag a, Flag b) { r = Either(a, b); }),

    // The results of fusing products with sums and differences, see QxFuse.cpp.
    Cheap<float, float, float, float>(SqxPrimitive::MACHINE_PRODUCT_PLUS, [](float& r, float a, float b, float c) { r = a * b + c; }),
    Cheap<float, float, float, float>(SqxPrimitive::MACHINE_PRODUCT_MINUS, [](float& r, float a, float b, float c) { r = a * b - c; }),
    Cheap<float, float, float, float>(SqxPrimitive::MACHINE_MINUS_PRODUCT, [](float& r, float c, float a, float b) { r = c - a * b; }),
    Cheap<float, float, float, float, float>(SqxPrimitive::MACHINE_SUM_OF_PRODUCTS, [](float& r, float a, float b, float c, float d) { r = a * b + c * d; }),
    Cheap<float, float, float, float, float>(SqxPrimitive::MACHINE_DIFFERENCE_OF_PRODUCTS, [](float& r, float a, float b, float c, float d) { r = a * b - c * d; }),

    // The replacements of conditional brackets that only set flags, see QxTranslator.cpp.
    Cheap<Flag, Flag>(SqxPrimitive::MACHINE_AND, [](Flag& r, Flag a) { r = Both(r, a); }),
    Cheap<Flag, Flag>(SqxPrimitive::MACHINE_AND_NOT, [](Flag& r, Flag a) { r = Both(r, Not(a)); }),
    Cheap<Flag, Flag>(SqxPrimitive::MACHINE_OR, [](Flag& r, Flag a) { r = Either(r, a); }),
    Cheap<Flag, Flag>(SqxPrimitive::MACHINE_OR_NOT, [](Flag& r, Flag a) { r = Either(r, Not(a)); }),

    // The results of fusing comparisons with operations on flags, see QxFuseFlags.cpp.
    Cheap<Flag, float, float, Flag>(SqxPrimitive::MACHINE_LESS_AND, [](Flag& r, float a, float b, Flag f) { r = Both(f, Flag(a < b)); }),
    Cheap<Flag, float, float, Flag>(SqxPrimitive::MACHINE_NOT_LESS_AND, [](Flag& r, float a, float b, Flag f) { r = Both(f, Not(Flag(a < b))); }),
    Cheap<Flag, float, float, Flag>(SqxPrimitive::MACHINE_LESS_EQUAL_AND, [](Flag& r, float a, float b, Flag f) { r = Both(f, Flag(a <= b)); }),
    Cheap<Flag, float, float, Flag>(SqxPrimitive::MACHINE_NOT_LESS_EQUAL_AND, [](Flag& r, float a, float b, Flag f) { r = Both(f, Not(Flag(a <= b))); }),
};
// clang-format on

}  // namespace

QxKernelRows OperatorKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
