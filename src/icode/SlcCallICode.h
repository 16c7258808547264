#pragma once

#include <deque>
#include <string>

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"
#include "sqx/SqxPrimitive.h"
#include "symbols/SlcFuncSymbolEntry.h"

class SlcProcCallExprNode;

/// A call of a primitive of the run time: `sin(x)`, `printf("a")`, `texture("a")`. The card of the
/// built-in declares which arguments are outputs.
class SlcCallICode : public SlcICodeOf<SlcCallICode, SlcICode> {
public:
    /// Whether the number of arguments is passed with them.
    enum class ArgumentList { Fixed, Counted };

    /// `funcEntry` may be null, as for texture accesses: then no argument is an output, and the
    /// call may be reordered with other calls.
    SlcCallICode(SqxPrimitive primitive, std::deque<SlcOperand> args, SlcOperand result,
                 ArgumentList list, SlcGridForm form, SlcPtr<SlcFuncSymbolEntry> funcEntry)
        : m_primitive(primitive),
          m_args(std::move(args)),
          m_result(std::move(result)),
          m_list(list),
          m_orderSensitive(funcEntry && funcEntry->IsOrderSensitive()),
          m_form(std::move(form)),
          m_funcEntry(std::move(funcEntry))
    {
    }

    SqxPrimitive m_primitive;
    std::deque<SlcOperand> m_args;  // arguments of output formals are also written
    SlcOperand m_result;            // null for a procedure
    ArgumentList m_list;
    bool m_orderSensitive;  // must not be reordered with other calls
    SlcGridForm m_form;
    SlcPtr<SlcFuncSymbolEntry> m_funcEntry;  // null for texture accesses
    /// Position for reports; null if the instruction does not come from a call in the source.
    const SlcProcCallExprNode* m_node = nullptr;
};

/// A call of a shadeop: a function in a library that is opened at run time. The function may write
/// the arrays among its arguments.
class SlcCallDSOICode : public SlcICodeOf<SlcCallDSOICode, SlcICode> {
public:
    /// `result` is null for a void function. Varying arrays must be converted with
    /// `SlcConvertArrayDSOICode` before the call, and back after it if the function may write them.
    SlcCallDSOICode(SlcOperand result, std::deque<SlcOperand> args, std::string funcKey,
                    std::string methodName)
        : m_result(std::move(result)),
          m_args(std::move(args)),
          m_funcKey(std::move(funcKey)),
          m_methodName(std::move(methodName))
    {
    }

    SlcOperand m_result;
    std::deque<SlcOperand> m_args;
    std::string m_funcKey;     // identifies the library
    std::string m_methodName;  // plain name, shared by the overloads
};

/// Converts a varying array to the layout that shadeops expect (`toDSO`), or back. Both operands
/// are varying arrays of the same type. For n elements and p points, element e of point k is at
/// index e * p + k in the compiler's layout, and at k * n + e in that of shadeops.
class SlcConvertArrayDSOICode : public SlcICodeOf<SlcConvertArrayDSOICode, SlcICode> {
public:
    SlcConvertArrayDSOICode(SlcOperand dest, SlcOperand source, bool toDSO)
        : m_dest(std::move(dest)),
          m_source(std::move(source)),
          m_toDSO(toDSO)
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
    bool m_toDSO;
};
