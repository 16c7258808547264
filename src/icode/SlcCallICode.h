#pragma once

#include <deque>
#include <string>

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"
#include "symbols/SlcFuncSymbolEntry.h"

class SlcProcCallExprNode;

/// A call of a primitive of the run time: `sin(x)`, `printf("a")`, `texture("a")`. Which arguments
/// are written says the row of the built-in, by their places.
class SlcCallICode : public SlcICodeOf<SlcCallICode, SlcICode> {
public:
    /// Whether the count of arguments is written with them.
    enum class ArgumentList { Fixed, Counted };

    /// `funcEntry` may be null, as for texture accesses: then no argument is written, and the order
    /// among calls is free.
    SlcCallICode(SlcIdentNode* name, std::deque<SlcOperand> args, SlcOperand result,
                 ArgumentList list, SlcGridForm form, SlcPtr<SlcFuncSymbolEntry> funcEntry)
        : m_name(name),
          m_args(std::move(args)),
          m_result(std::move(result)),
          m_list(list),
          m_orderSensitive(funcEntry && funcEntry->IsOrderSensitive()),
          m_form(std::move(form)),
          m_funcEntry(std::move(funcEntry))
    {
    }

    SlcIdentNode* m_name;           // the primitive's name, without suffixes
    std::deque<SlcOperand> m_args;  // those of output formals are written as well
    SlcOperand m_result;            // null for a procedure
    ArgumentList m_list;
    bool m_orderSensitive;  // must keep its order among calls
    SlcGridForm m_form;
    SlcPtr<SlcFuncSymbolEntry> m_funcEntry;  // null for texture accesses
    /// Places reports; null where no call of the source stands behind the instruction.
    const SlcProcCallExprNode* m_node = nullptr;
};

/// A call of a shadeop: a function of a library that is looked up by `m_funcKey` and opened when
/// the shader runs. It may write what it is given, as far as its formals are outputs.
class SlcCallDSOICode : public SlcICodeOf<SlcCallDSOICode, SlcICode> {
public:
    /// `result` may be null. No argument is a varying array as it is: `SlcConvertArrayDSOICode`
    /// comes first.
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

/// Brings a varying array into the form that shadeops take (`toDSO`), or back. Both operands are
/// varying arrays of one type. For n elements and p points, element e of point k lies at e * p + k
/// for the compiler's instructions, and at k * n + e for shadeops.
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
