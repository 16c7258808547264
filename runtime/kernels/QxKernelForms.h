#pragma once

// Loops over points that call a function for each point, and rows of the table of kernels.
//
// The loops are compiled once for each instruction set, and once in `qxcommon` for kernels that no
// set would make faster. `QX_KERNEL_SET` is the namespace, and `QX_KERNEL_CODE` contains the
// attributes of loops: only functions with these attributes are compiled for more than the baseline
// processor, and the inline functions of the run-time headers are inlined into them. If several
// object files contain a copy of an inline function, the linker keeps an arbitrary copy, so no copy
// may need more than the baseline processor.
//
// A row contains the kernels of a primitive, see `QxKernelRow`. Most rows have one of these forms:
//
//     form         argument                                loops
//     Each         a function of one point's operands      for all combinations of uniform and
//                                                          varying operands, one without a mask and
//                                                          one that tests the mask at each point:
//                                                          for functions that are not cheap
//     Cheap        the same; the first operand is the      if the result is varying, two for each
//                  result                                  combination; the one with a mask also
//                                                          computes all points, so that it can be
//                                                          vectorized, and stores those of the mask
//     RowPerPoint  a kernel whose result at a point        in the kernel
//                  depends only on operands at this point
//     Row          any other kernel                        in the kernel
//     ListRow      a kernel whose operands end in a list   in the kernel
//
//     Cheap<float, float, float>(SqxPrimitive::ADD_FLOAT_FLOAT,
//                                [](float& r, const float& a, const float& b) { r = a + b; })
//
// `Each` passes the run, as a `QxMachineState`, to a function `InRun(f)`, and the run and the
// number of the point to a function `AtPoint(f)`.

#include <cstddef>
#include <type_traits>
#include <utility>

#include "kernels/QxCode.h"

/// Precedes a loop over points, as a promise that a result shares storage with an operand only at
/// the same point. So the compiler can vectorize the loop without a check at run time.
#ifdef __clang__
#define QX_LOOP_OF_OPERANDS_APART _Pragma("clang loop vectorize(assume_safety)")
#else
#define QX_LOOP_OF_OPERANDS_APART _Pragma("GCC ivdep")
#endif

namespace QX_KERNEL_SET {

template <class Type>
using Plain = std::remove_cv_t<std::remove_reference_t<Type>>;

/// Returns how values of a type are stored; points, vectors and colors are stored alike.
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

/// The storage of each operand, which the translation checks. The last element is not an operand:
/// it only keeps the array from being empty.
template <class... Types>
constexpr QxStored k_stored[] = {StoredAs<Plain<Types>>()..., QxStored::Any};

/// Returns the value at index `place`: a reference for a reference type, otherwise a const
/// reference. Only an input text is returned by value; it is empty if it was never set.
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
/// only on the operands at this point, and the instruction may run strip by strip.
template <class Function>
inline constexpr bool k_ofOperandsAlone = true;
template <class Function>
inline constexpr bool k_ofOperandsAlone<InRun<Function>> = false;
template <class Function>
inline constexpr bool k_ofOperandsAlone<AtPoint<Function>> = false;

/// Calls a function for a point; passes the run, and the point, before the operands if the function
/// is an `InRun` or `AtPoint`.
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

/// The points that a loop computes: all points, or those of the mask. `Statement` is for the light
/// statements in QxStatementKernels.cpp: it also clears the statement's flag at all other points.
enum class Where { All, Masked, Statement };

/// A loop for any combination of uniform and varying operands: a uniform operand has a step of 0.
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
/// cost of running one point is mostly that of finding the operands.
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

/// Returns a row for a function of operands of these types. The function writes the operands of
/// reference types.
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

/// Returns a row for a kernel that handles any combination of uniform and varying operands of these
/// types, with or without a mask.
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

/// Returns a row for a kernel whose result at a point depends only on the operands at this point,
/// so that the instruction may run strip by strip.
template <class... Types>
constexpr QxKernelRow RowPerPoint(SqxPrimitive primitive, QxKernel kernel)
{
    QxKernelRow row = Row<Types...>(primitive, kernel);
    row.perPoint = true;
    return row;
}

inline constexpr QxStored k_any = QxStored::Any;

/// Returns the row for an instruction whose operands are `Types`, followed by a list of `Rest`; if
/// `Rest` is void, the list has elements of any type.
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

// Cheap functions: a separate loop for each combination of uniform and varying arguments, so that
// it can be vectorized

// Varying and uniform operands have different types, so that the compiler knows which operands of a
// loop are varying, and can vectorize it.
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

// Selects one of two values without a branch, as vector instructions do. A cheap function is
// computed at inactive points too, so it must neither fault nor have side effects.
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

/// The loop for one combination of uniform and varying arguments, `UniformValue` and
/// `VaryingValues`. The result is varying, and the loop reads no steps.
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

/// Reads all arguments before it writes the result, which may share storage with an argument.
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

/// The kernels for all combinations of uniform and varying arguments, in the order of
/// `QxKernelRow::shaped`: for n arguments 2^n combinations, each without and with a mask. Four
/// arguments lead to 32 loops, so functions of more arguments use `Each`.
template <class Shapes, class Function, class Result, class... Types>
struct AllShapes;

template <std::size_t... i, class Function, class Result, class... Types>
struct AllShapes<std::index_sequence<i...>, Function, Result, Types...> {
    static constexpr QxKernel kernels[] = {
        Shaped<Function, i / 2, i % 2 != 0, Result, Types...>::Run...};
};

/// Returns a row for a cheap function, whose first parameter is the result. The function may also
/// be computed for inactive points, where its result is not needed.
template <class Result, class... Types, class Function>
constexpr QxKernelRow Cheap(SqxPrimitive primitive, Function function)
{
    QxKernelRow row = Each<Result&, Types...>(primitive, function);
    using Shapes = std::make_index_sequence<(std::size_t{2} << sizeof...(Types))>;
    row.point = OneCheap<Function, Result, Types...>;
    row.shaped = AllShapes<Shapes, Function, Result, Types...>::kernels;
    return row;
}

// Operands of kernels that loop over points themselves

/// A varying or uniform operand of a kernel, which may pass it to functions of the run-time
/// headers.
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

/// For the run-time headers: returns the contiguous values of a varying operand, or null for a
/// uniform operand.
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
