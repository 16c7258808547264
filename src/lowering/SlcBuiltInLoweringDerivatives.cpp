// Lowers the built-ins that are computed from neighbouring points. Their primitives have only
// whole-grid forms.
//
//     c = Du(x)           CALL_PRIM_DU_FLOAT_SIMD c x du           with a uniform x: c = 0
//
// Under a varying condition the call gets a warning, since inactive neighbours are not used for the
// difference if a flag limits the call. Each of the five functions is one row of a table: how many
// arguments are differentiated, whether `du` and `dv` are added as arguments, and the texts of the
// reports.
//
// Tested by tests/lowering/SlcBuiltInLoweringTest.cpp.

#include <algorithm>
#include <iterator>

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcBuiltInLowering.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

struct Derivative {
    const char* word;    // in the source
    std::size_t values;  // number of differentiated arguments; if one is uniform, the result is 0
    bool addsDu;         // `du`, and then `dv`, are added as arguments
    bool addsDv;
    const char* function;  // names the function in reports of missing variables
    const char* zero;
    const char* underCondition;
};

// clang-format off
//   word              values  du     dv     function
constexpr Derivative k_derivatives[] = {
    {"Du",             1,      true,  false, "CreateBuiltInDu",
     "Du() will always return 0 since its parameter is uniform.",
     "Calling Du() inside a varying conditional can lead to unexpected results."},
    {"Dv",             1,      false, true,  "CreateBuiltInDv",
     "Dv() will always return 0 since its parameter is uniform.",
     "Calling Dv() inside a varying conditional can lead to unexpected results."},
    {"Deriv",          2,      false, false, "CreateBuiltInDeriv",
     "Deriv() will always return 0, since at least one of its parameters is uniform.",
     "Calling Deriv() inside a varying conditional can lead to unexpected results."},
    {"area",           1,      false, false, "CreateBuiltInArea",
     "area() will always return 0 since its parameter is uniform.",
     "Calling area() inside a varying conditional can lead to unexpected results."},
    {"calculatenormal", 1,     true,  true,  "CreateBuiltInCalculateNormal",
     "calculatenormal() will always return 0 since its parameter is uniform.",
     "Calling calculatenormal() inside a varying conditional can lead to unexpected results."},
};
// clang-format on

const Derivative& DerivativeNamed(const std::string& word)
{
    return *std::find_if(std::begin(k_derivatives), std::end(k_derivatives),
                         [&](const Derivative& row) { return row.word == word; });
}

}  // namespace

SlcOperand SlcBuiltInLowering::CreateBuiltInDerivative(BuiltInCall& call)
{
    using Predefined = SlcShaderSymbolTable;
    const std::string& word = call.node->GetIdent()->GetName();
    const Derivative& row = DerivativeNamed(word);
    const auto lastValue = call.args.begin() + static_cast<std::ptrdiff_t>(row.values);
    if (std::any_of(call.args.begin(), lastValue,
                    [](const auto& arg) { return arg->IsUniform(); })) {
        m_errors->Warning(call.node, row.zero, 1);
        return GenZero(call);
    }
    // The type of the temporary under a condition. An area is a float, whatever its argument is.
    SlcTypeNode* type =
        word == "area" ? SlcTypeNode::AFloat() : SlcElements::ValueType(call.args[0]);
    if (row.addsDu)
        call.args.push_back(PredefinedOperand(Predefined::EntryNamed("du"), call, row.function));
    if (row.addsDv)
        call.args.push_back(PredefinedOperand(Predefined::EntryNamed("dv"), call, row.function));
    return GenDerivative(call, type, row.underCondition);
}

SlcOperand SlcBuiltInLowering::GenZero(const BuiltInCall& call)
{
    SlcTypeNode* type = SlcCallArguments::TypeOfCall(call.node);
    const SlcOperand zero = SlcLexType::Float(0);
    if (type->IsFloatType())
        return zero;
    SlcDetailNode* uniform = SlcDetailNode::AUniform();
    const SlcOperand result = m_list.GetResultVar(call.node, type, uniform);
    if (type->IsColorType())
        m_conditions.AddInBlock(uniform, MakeShared<SlcColorICode>(result, zero, zero, zero));
    else
        m_conditions.AddInBlock(uniform, MakeShared<SlcPointICode>(result, zero, zero, zero));
    return result;
}

SlcOperand SlcBuiltInLowering::PredefinedOperand(const SlcPtr<SlcVarSymbolEntry>& entry,
                                                 const BuiltInCall& call, const char* function)
{
    if (entry.Null() || entry->GetIntCodeVar().Null())
        m_errors->FatalError(call.node, "Cannot find '" + call.node->GetIdent()->GetName() +
                                            "' in symbol table (" + function + ")");
    return entry->GetIntCodeVar();
}

/// Under a varying condition the result goes to a temporary of `typeInCondition`, so that the
/// target keeps its value at points outside the condition.
SlcOperand SlcBuiltInLowering::GenDerivative(const BuiltInCall& call, SlcTypeNode* typeInCondition,
                                             const char* warning)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    if (!m_conditions.IsInParallelIf()) {
        const SlcOperand result =
            m_list.GetResultVar(call.node, SlcCallArguments::TypeOfCall(call.node), varying);
        AddGridCall(call, result, SlcGridForm::Whole());
        return result;
    }
    m_errors->Warning(call.node, warning, 2);
    const SlcOperand result = m_list.GenTempVar(typeInCondition, varying);
    // Without a flag that can limit the call, the call runs for all points. That is harmless, since
    // reads of the temporary are guarded.
    AddGridCall(call, result, SlcGridForm::At(m_conditions.SimdCondition()));
    return result;
}
