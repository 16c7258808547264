// The operations of assignments, constructors, arithmetic and comparisons.

#include <functional>

#include "machine/SqxCall.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;
using Color = QxRGBColor;
using Matrix = QxMatrix44;

// `As` converts a float to a triple of equal components or to a diagonal matrix, and returns a
// value of the type `To` unchanged.

template <class To>
To As(const To& value)
{
    return value;
}

template <class To>
To As(float value) requires(!std::is_same_v<To, float>)
{
    if constexpr (std::is_same_v<To, Matrix>)
        return Matrix::Scaling(value);
    else
        return QxMakeTriple<To>(value, value, value);
}

template <class To, class From>
void Assign(const SqxCall& call)
{
    call.Set(0, As<To>(call.Get<From>(1)));
}

void AssignFlag(const SqxCall& call)
{
    call.Set(0, call.Part<float>(1));  // the flag may never have been set
}

template <class To, class From>
void Recast(const SqxCall& call)
{
    const From value = call.Get<From>(1);
    call.Set(0, QxMakeTriple<To>(value[0], value[1], value[2]));
}

template <class Value>
void AssignZero(const SqxCall& call)
{
    if constexpr (std::is_same_v<Value, float>)
        call.Set(0, 0.0F);
    else
        call.Set(0, As<Value>(0.0F));
}

template <class Value>
void Construct(const SqxCall& call)
{
    call.Set(0, QxMakeTriple<Value>(call.Get<float>(1), call.Get<float>(2), call.Get<float>(3)));
}

void ConstructMatrix(const SqxCall& call)
{
    Matrix matrix;
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = call.Get<float>(static_cast<std::size_t>(i) + 1);
    call.Set(0, matrix);
}

template <class Left, class Right, class Operator>
void Binary(const SqxCall& call)
{
    call.Set(0, Operator()(call.Get<Left>(1), call.Get<Right>(2)));
}

template <class Value>
void Negate(const SqxCall& call)
{
    call.Set(0, -call.Get<Value>(1));
}

template <class Value, class Left, class Right>
void Dot(const SqxCall& call)
{
    call.Set(0, QxDot(As<Value>(call.Get<Left>(1)), As<Value>(call.Get<Right>(2))));
}

template <class Left, class Right>
void Cross(const SqxCall& call)
{
    call.Set(0, QxCross(As<Vector>(call.Get<Left>(1)), As<Vector>(call.Get<Right>(2))));
}

/// Converts both sides to the wider of the two types.
template <class Value, class Left, class Right, class Relation>
void Compare(const SqxCall& call)
{
    call.Set(0, Relation()(As<Value>(call.Get<Left>(1)), As<Value>(call.Get<Right>(2))));
}

using Plus = std::plus<>;
using Minus = std::minus<>;
using Times = std::multiplies<>;
using Over = std::divides<>;
using Equal = std::equal_to<>;
using Unequal = std::not_equal_to<>;

// clang-format off
constexpr SqxOperationRow k_operators[] = {
    {ASSIGN_FLOAT_FLOAT,             Assign<float, float>},
    {ASSIGN_COLOR_COLOR,             Assign<Color, Color>},
    {ASSIGN_POINT_POINT,             Assign<Vector, Vector>},
    {ASSIGN_MATRIX_MATRIX,           Assign<Matrix, Matrix>},
    {ASSIGN_STRING_STRING,           Assign<std::string, std::string>},
    {ASSIGN_BOOL_BOOL,               AssignFlag},
    {ASSIGN_COLOR_FLOAT,             Assign<Color, float>},
    {ASSIGN_POINT_FLOAT,             Assign<Vector, float>},
    {ASSIGN_MATRIX_FLOAT,            Assign<Matrix, float>},
    {ASSIGN_COLOR_POINT,             Recast<Color, Vector>},
    {ASSIGN_POINT_COLOR,             Recast<Vector, Color>},
    {ASSIGN_TO_ZERO_FLOAT,           AssignZero<float>},
    {ASSIGN_TO_ZERO_COLOR,           AssignZero<Color>},
    {ASSIGN_TO_ZERO_POINT,           AssignZero<Vector>},
    {ASSIGN_TO_ZERO_MATRIX,          AssignZero<Matrix>},
    {INIT_POINT,                     Construct<Vector>},
    {INIT_COLOR,                     Construct<Color>},
    {INIT_MATRIX,                    ConstructMatrix},
    {ADD_FLOAT_FLOAT,                Binary<float, float, Plus>},
    {ADD_FLOAT_COLOR,                Binary<float, Color, Plus>},
    {ADD_FLOAT_POINT,                Binary<float, Vector, Plus>},
    {ADD_COLOR_FLOAT,                Binary<Color, float, Plus>},
    {ADD_COLOR_COLOR,                Binary<Color, Color, Plus>},
    {ADD_POINT_FLOAT,                Binary<Vector, float, Plus>},
    {ADD_POINT_POINT,                Binary<Vector, Vector, Plus>},
    {SUB_FLOAT_FLOAT,                Binary<float, float, Minus>},
    {SUB_FLOAT_COLOR,                Binary<float, Color, Minus>},
    {SUB_FLOAT_POINT,                Binary<float, Vector, Minus>},
    {SUB_COLOR_FLOAT,                Binary<Color, float, Minus>},
    {SUB_COLOR_COLOR,                Binary<Color, Color, Minus>},
    {SUB_POINT_FLOAT,                Binary<Vector, float, Minus>},
    {SUB_POINT_POINT,                Binary<Vector, Vector, Minus>},
    {MULT_FLOAT_FLOAT,               Binary<float, float, Times>},
    {MULT_FLOAT_COLOR,               Binary<float, Color, Times>},
    {MULT_FLOAT_POINT,               Binary<float, Vector, Times>},
    {MULT_FLOAT_MATRIX,              Binary<float, Matrix, Times>},
    {MULT_COLOR_FLOAT,               Binary<Color, float, Times>},
    {MULT_COLOR_COLOR,               Binary<Color, Color, Times>},
    {MULT_POINT_FLOAT,               Binary<Vector, float, Times>},
    {MULT_POINT_POINT,               Binary<Vector, Vector, Times>},
    {MULT_MATRIX_FLOAT,              Binary<Matrix, float, Times>},
    {MULT_MATRIX_MATRIX,             Binary<Matrix, Matrix, Times>},
    {DIV_FLOAT_FLOAT,                Binary<float, float, Over>},
    {DIV_FLOAT_COLOR,                Binary<float, Color, Over>},
    {DIV_FLOAT_POINT,                Binary<float, Vector, Over>},
    {DIV_FLOAT_MATRIX,               Binary<float, Matrix, Over>},
    {DIV_COLOR_FLOAT,                Binary<Color, float, Over>},
    {DIV_COLOR_COLOR,                Binary<Color, Color, Over>},
    {DIV_POINT_FLOAT,                Binary<Vector, float, Over>},
    {DIV_POINT_POINT,                Binary<Vector, Vector, Over>},
    {DIV_MATRIX_FLOAT,               Binary<Matrix, float, Over>},
    {DIV_MATRIX_MATRIX,              Binary<Matrix, Matrix, Over>},
    {INVERT_FLOAT,                   Negate<float>},
    {INVERT_COLOR,                   Negate<Color>},
    {INVERT_POINT,                   Negate<Vector>},
    {DOT_PROD_COLOR_COLOR,           Dot<Color, Color, Color>},
    {DOT_PROD_FLOAT_COLOR,           Dot<Color, float, Color>},
    {DOT_PROD_COLOR_FLOAT,           Dot<Color, Color, float>},
    {DOT_PROD_POINT_POINT,           Dot<Vector, Vector, Vector>},
    {DOT_PROD_FLOAT_POINT,           Dot<Vector, float, Vector>},
    {DOT_PROD_POINT_FLOAT,           Dot<Vector, Vector, float>},
    {CROSS_PROD_POINT_POINT,         Cross<Vector, Vector>},
    {CROSS_PROD_FLOAT_POINT,         Cross<float, Vector>},
    {CROSS_PROD_POINT_FLOAT,         Cross<Vector, float>},
    {BOOL_LESS_THEN_FLOAT_FLOAT,     Compare<float, float, float, std::less<>>},
    {BOOL_LESS_EQUAL_FLOAT_FLOAT,    Compare<float, float, float, std::less_equal<>>},
    {BOOL_GREATER_THEN_FLOAT_FLOAT,  Compare<float, float, float, std::greater<>>},
    {BOOL_GREATER_EQUAL_FLOAT_FLOAT, Compare<float, float, float, std::greater_equal<>>},
    {BOOL_EQUAL_FLOAT_FLOAT,         Compare<float, float, float, Equal>},
    {BOOL_EQUAL_STRING_STRING,       Compare<std::string, std::string, std::string, Equal>},
    {BOOL_EQUAL_COLOR_COLOR,         Compare<Color, Color, Color, Equal>},
    {BOOL_EQUAL_POINT_POINT,         Compare<Vector, Vector, Vector, Equal>},
    {BOOL_EQUAL_FLOAT_POINT,         Compare<Vector, float, Vector, Equal>},
    {BOOL_EQUAL_POINT_FLOAT,         Compare<Vector, Vector, float, Equal>},
    {BOOL_EQUAL_FLOAT_COLOR,         Compare<Color, float, Color, Equal>},
    {BOOL_EQUAL_COLOR_FLOAT,         Compare<Color, Color, float, Equal>},
    {BOOL_EQUAL_MATRIX_MATRIX,       Compare<Matrix, Matrix, Matrix, Equal>},
    {BOOL_EQUAL_FLOAT_MATRIX,        Compare<Matrix, float, Matrix, Equal>},
    {BOOL_EQUAL_MATRIX_FLOAT,        Compare<Matrix, Matrix, float, Equal>},
    {BOOL_NOT_EQUAL_FLOAT_FLOAT,     Compare<float, float, float, Unequal>},
    {BOOL_NOT_EQUAL_STRING_STRING,   Compare<std::string, std::string, std::string, Unequal>},
    {BOOL_NOT_EQUAL_COLOR_COLOR,     Compare<Color, Color, Color, Unequal>},
    {BOOL_NOT_EQUAL_POINT_POINT,     Compare<Vector, Vector, Vector, Unequal>},
    {BOOL_NOT_EQUAL_FLOAT_POINT,     Compare<Vector, float, Vector, Unequal>},
    {BOOL_NOT_EQUAL_POINT_FLOAT,     Compare<Vector, Vector, float, Unequal>},
    {BOOL_NOT_EQUAL_FLOAT_COLOR,     Compare<Color, float, Color, Unequal>},
    {BOOL_NOT_EQUAL_COLOR_FLOAT,     Compare<Color, Color, float, Unequal>},
    {BOOL_NOT_EQUAL_MATRIX_MATRIX,   Compare<Matrix, Matrix, Matrix, Unequal>},
    {BOOL_NOT_EQUAL_FLOAT_MATRIX,    Compare<Matrix, float, Matrix, Unequal>},
    {BOOL_NOT_EQUAL_MATRIX_FLOAT,    Compare<Matrix, Matrix, float, Unequal>},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxOperatorTable()
{
    return k_operators;
}
