#pragma once

// Loops over points that call functions of one point.
//
// They are compiled once for each instruction set. `QX_KERNEL_SET` is the namespace of the set, and
// `QX_KERNEL_CODE` contains the attributes of its loops: only these loops are compiled for more
// than the baseline processor, and the inline functions of the run-time headers are inlined into
// them. If several object files contain such a function, the linker keeps an arbitrary copy, so no
// copy may need more than the baseline processor.
//
// The rows of a table of kernels are created by the form that fits the primitive:
//
//     form         argument                                loops
//     Each         a function of one point's operands      one for all combinations of uniform and
//                                                          varying operands, which tests the mask
//                                                          at each point: for expensive functions
//     Cheap        the same; the first operand is the      one for each combination, which computes
//                  result                                  all points and stores those of the mask,
//                                                          so that it can be vectorized
//     RowPerPoint  a kernel that examines its operands     in the kernel, see QxBlocks.h
//     Row          the same, if it reads several points    in the kernel
//
//     Cheap<float, float, float>(SqxPrimitive::ADD_FLOAT_FLOAT,
//                                [](float& r, const float& a, const float& b) { r = a + b; })
//
// In `Each`, `InRun(f)` passes the run to a function, and `AtPoint(f)` the run and the point.

#include <cstddef>
#include <type_traits>
#include <utility>

#include "kernels/QxCode.h"

/// Precedes a loop over points in which operands overlap at most at the same point, so that the
/// compiler can vectorize it without a check at run time.
#ifdef __clang__
#define QX_LOOP_OF_OPERANDS_APART _Pragma("clang loop vectorize(assume_safety)")
#else
#define QX_LOOP_OF_OPERANDS_APART _Pragma("GCC ivdep")
#endif

namespace QX_KERNEL_SET {

template <class Type>
using Plain = std::remove_cv_t<std::remove_reference_t<Type>>;

/// How values of a type are stored; points, vectors and colors are stored alike.
template <class Value>
constexpr QxStored StoredAs()
{
    if constexpr (std::is_same_v<Value, float>)
        return QxStored::Number;
    else if constexpr (std::is_same_v<Value, QxStopAndBool>)
        return QxStored::Flag;
    else if constexpr (std::is_same_v<Value, QxMatrix44>)
        return QxStored::Matrix;
    else if constexpr (std::is_same_v<Value, const char*>)
        return QxStored::Text;
    else
        return QxStored::Triple;
}

/// The storage of each operand, which the translation checks.
template <class... Types>
constexpr QxStored k_stored[] = {StoredAs<Plain<Types>>()..., QxStored::Any};

/// Returns a reference to the value for an output, otherwise its value; a text that was never set
/// is empty.
template <class Type>
inline decltype(auto) Fetch(void* base, std::size_t place)
{
    auto& value = static_cast<Plain<Type>*>(base)[place];
    if constexpr (std::is_lvalue_reference_v<Type>)
        return (value);
    else if constexpr (std::is_same_v<Type, const char*>)
        return value ? value : "";
    else
        return static_cast<const Plain<Type>&>(value);
}

/// A function whose first parameter is the run.
template <class Function>
struct InRun : Function {
    explicit constexpr InRun(Function) {}
    constexpr InRun() = default;
};

/// A function whose first parameters are the run and the point.
template <class Function>
struct AtPoint : Function {
    explicit constexpr AtPoint(Function) {}
    constexpr AtPoint() = default;
};

/// True if the function takes neither the run nor the point. Then its result at a point depends
/// only on the operands at this point, and such instructions may run strip by strip.
template <class Function>
inline constexpr bool k_ofOperandsAlone = true;
template <class Function>
inline constexpr bool k_ofOperandsAlone<InRun<Function>> = false;
template <class Function>
inline constexpr bool k_ofOperandsAlone<AtPoint<Function>> = false;

/// Calls a function for a point, with the run and the point before the operands if it takes them.
template <class Function>
struct Applied {
    template <class... Values>
    static void To(QxMachineState&, unsigned int, Values&&... values)
    {
        Function()(std::forward<Values>(values)...);
    }
};

template <class Function>
struct Applied<InRun<Function>> {
    template <class... Values>
    static void To(QxMachineState& state, unsigned int, Values&&... values)
    {
        Function()(state, std::forward<Values>(values)...);
    }
};

template <class Function>
struct Applied<AtPoint<Function>> {
    template <class... Values>
    static void To(QxMachineState& state, unsigned int point, Values&&... values)
    {
        Function()(state, point, std::forward<Values>(values)...);
    }
};

// Loops for operands that are uniform or varying

/// The points that a loop computes: all, those of the mask, or those of the mask while the flag is
/// cleared at all other points, as for a light statement.
enum class Where { All, Masked, Statement };

/// A loop for all combinations: a uniform operand has a step of 0.
template <class Function, Where where, class... Types, std::size_t... k>
QX_KERNEL_CODE void RunAny(QxMachineState& state, const QxCode& code, const QxPoints& points,
                           std::index_sequence<k...>)
{
    void* const bases[] = {state.values[code.operands[k].variable]..., nullptr};
    const std::size_t steps[] = {code.operands[k].step..., 0};
    for (unsigned int i = points.first; i < points.End(); ++i) {
        if constexpr (where != Where::All) {
            if (!points.QxIsSet(points.mask[i]))
                continue;
        }
        Applied<Function>::To(state, i, Fetch<Types>(bases[k], i * steps[k])...);
    }
}

template <class Function, Where where, class... Types>
void Any(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    RunAny<Function, where, Types...>(state, code, points, std::index_sequence_for<Types...>());
}

/// Computes the single point of a grid, without a loop and without steps from point to point. The
/// cost of such a run is mostly that of finding the operands.
template <class Function, class... Types, std::size_t... k>
inline void RunOne(QxMachineState& state, const QxOperand* operands, std::index_sequence<k...>)
{
    Applied<Function>::To(state, 0, Fetch<Types>(state.values[operands[k].variable], 0)...);
}

template <class Function, class... Types>
void One(QxMachineState& state, const QxOperand* operands)
{
    RunOne<Function, Types...>(state, operands, std::index_sequence_for<Types...>());
}

/// Returns a row for a function of operands of these types; references are written.
template <class... Types, class Function>
constexpr QxKernelRow Each(SqxPrimitive primitive, Function)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = Any<Function, Where::All, Types...>;
    row.masked = Any<Function, Where::Masked, Types...>;
    row.point = One<Function, Types...>;
    row.operands = k_stored<Types...>;
    row.operandCount = sizeof...(Types);
    row.perPoint = k_ofOperandsAlone<Function>;
    return row;
}

/// Returns a row for a kernel that handles any operands, with or without a mask.
template <class... Types>
constexpr QxKernelRow Row(SqxPrimitive primitive, QxKernel kernel)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = row.masked = kernel;
    row.operands = k_stored<Types...>;
    row.operandCount = sizeof...(Types);
    return row;
}

/// The same for a kernel that computes each point separately.
template <class... Types>
constexpr QxKernelRow RowPerPoint(SqxPrimitive primitive, QxKernel kernel)
{
    QxKernelRow row = Row<Types...>(primitive, kernel);
    row.perPoint = true;
    return row;
}

inline constexpr QxStored k_any = QxStored::Any;

/// Returns the row for an instruction whose operands are `Types`, followed by a list of `Rest`; if
/// `Rest` is void, the list has elements of any kind.
template <class Rest, class... Types>
constexpr QxKernelRow ListRow(SqxPrimitive primitive, QxKernel kernel)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = row.masked = kernel;
    row.operands = k_stored<Types...>;
    row.operandCount = sizeof...(Types);
    row.rest = std::is_void_v<Rest> ? &k_any : k_stored<Rest>;
    return row;
}

// Cheap functions: a separate loop for each combination of varying arguments, so that it can be
// vectorized

// An operand as a type, so that the compiler knows which operands of a loop are varying and can
// vectorize the loop.
template <class Value>
struct VaryingValues {
    const Value* values;
    const Value& operator[](unsigned int point) const { return values[point]; }
};

template <class Value>
struct UniformValue {
    Value value;
    const Value& operator[](unsigned int) const { return value; }
};

template <class Value, bool varying>
inline auto Values(void* base)
{
    const auto* values = static_cast<const Value*>(base);
    if constexpr (varying)
        return VaryingValues<Value>{values};
    else
        return UniformValue<Value>{*values};
}

// Selects one of two values without a branch, as vector instructions do. Both were computed, so a
// cheap function must not fault or have effects for any operands.
inline float Select(QxStopAndBool flag, float yes, float no)
{
    return flag ? yes : no;
}

inline QxStopAndBool Select(QxStopAndBool flag, QxStopAndBool yes, QxStopAndBool no)
{
    QxStopAndBool result;
    result.value = flag ? yes.value : no.value;
    return result;
}

template <class Triple>
inline Triple Select(QxStopAndBool flag, const Triple& yes, const Triple& no)
{
    return QxMakeTriple<Triple>(flag ? yes[0] : no[0], flag ? yes[1] : no[1],
                                flag ? yes[2] : no[2]);
}

/// The loop for one combination of varying arguments. Varying and uniform arguments have different
/// types, so the loop does not read steps.
template <class Function, bool masked, class Result, class... Arguments>
QX_KERNEL_CODE inline void Loop(Result* result, const QxPoints& points,
                                const Arguments&... arguments)
{
    const unsigned int end = points.End();
    const QxStopAndBool* const mask = points.mask;
    QX_LOOP_OF_OPERANDS_APART
    for (unsigned int i = points.first; i < end; ++i) {
        Result value = result[i];
        Function()(value, arguments[i]...);
        if constexpr (masked)
            result[i] = Select(mask[i], value, result[i]);
        else
            result[i] = value;
    }
}

/// The kernel for a combination: bit k of `shape` is set if argument k is varying.
template <class Function, unsigned int shape, bool masked, class Result, class... Types>
struct Shaped {
    static void Run(QxMachineState& state, const QxCode& code, const QxPoints& points)
    {
        With(state, code, points, std::index_sequence_for<Types...>());
    }
    template <std::size_t... k>
    QX_KERNEL_CODE static void With(QxMachineState& state, const QxCode& code,
                                    const QxPoints& points, std::index_sequence<k...>)
    {
        Loop<Function, masked>(
            static_cast<Result*>(state.values[code.operands[0].variable]), points,
            Values<Types, ((shape >> k) & 1) != 0>(state.values[code.operands[k + 1].variable])...);
    }
};

/// Reads the arguments before it writes the result, since both may share storage.
template <class Function, class Result, class... Types, std::size_t... k>
inline void RunOneCheap(QxMachineState& state, const QxOperand* operands, std::index_sequence<k...>)
{
    Result& result = *static_cast<Result*>(state.values[operands[0].variable]);
    Result value = result;
    Function()(value, *static_cast<const Types*>(state.values[operands[k + 1].variable])...);
    result = value;
}

template <class Function, class Result, class... Types>
void OneCheap(QxMachineState& state, const QxOperand* operands)
{
    RunOneCheap<Function, Result, Types...>(state, operands, std::index_sequence_for<Types...>());
}

/// All combinations of varying arguments, as in `QxKernelRow::shaped`: 2^n of them, each for all
/// points and for a mask. Four arguments lead to 32 loops, so functions of more arguments use
/// `Each`.
template <class Shapes, class Function, class Result, class... Types>
struct AllShapes;

template <std::size_t... i, class Function, class Result, class... Types>
struct AllShapes<std::index_sequence<i...>, Function, Result, Types...> {
    static constexpr QxKernel kernels[] = {
        Shaped<Function, i / 2, i % 2 != 0, Result, Types...>::Run...};
};

/// Returns a row for a cheap function, which writes its first operand: at all points of a strip, or
/// at those of a mask. It may also be computed for inactive points.
template <class Result, class... Types, class Function>
constexpr QxKernelRow Cheap(SqxPrimitive primitive, Function function)
{
    QxKernelRow row = Each<Result&, Types...>(primitive, function);
    using Shapes = std::make_index_sequence<(std::size_t{2} << sizeof...(Types))>;
    row.point = OneCheap<Function, Result, Types...>;
    row.shaped = AllShapes<Shapes, Function, Result, Types...>::kernels;
    return row;
}

// Operands of functions for the whole grid

/// A varying or uniform operand of a function that loops over the grid itself.
template <class Value>
struct GridOperand {
    Value* values;
    std::size_t step;
};

template <class Value>
inline Value& QxAt(const GridOperand<Value>& operand, unsigned int point)
{
    return operand.values[point * operand.step];
}

/// For the run-time headers: returns the contiguous values of a varying operand, otherwise null.
template <class Value>
inline const Value* QxBeside(const Value*, const GridOperand<Value>& operand)
{
    return operand.step != 0 ? operand.values : nullptr;
}

template <class Value>
inline GridOperand<Value> Operand(const QxMachineState& state, const QxCode& code, std::size_t k)
{
    return {static_cast<Value*>(state.values[code.operands[k].variable]), code.operands[k].step};
}

}  // namespace QX_KERNEL_SET
