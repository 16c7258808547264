// The values of each instruction, in the order in which the virtual machine takes them: its number,
// mostly the result, the condition of a whole-grid form, then what it reads. The number is found by
// the name that C++ calls the same operation by, so that the two outputs cannot drift apart.
//
// Tested by tests/backends/GenByteCodeTest.cpp, and against the layouts of the reader by
// ByteCodeTableTest.cpp.

#include <algorithm>
#include <limits>

#include "backends/SlcGenByteCode.h"
#include "frontend/SlcCallNodes.h"
#include "icode/SlcICodes.h"
#include "support/reports/SlcSemanticError.h"

namespace {

struct Alias {
    const char* primitive;
    const char* numbered;
};

// Primitives that the library's rows name but that have no number of their own.
constexpr Alias k_aliases[] = {
    {"CALL_PRIM_POINT_FLOAT_4D", "CALL_PRIM_NOISE_POINT_4D"},
};

// The built-ins that only generated C++ can call.
constexpr Alias k_unavailable[] = {
    {"CALL_PRIM_PACK", "pack"},
    {"CALL_PRIM_UNPACK", "unpack"},
};

std::string Numbered(const std::string& primitive)
{
    for (const Alias& row : k_aliases)
        if (primitive == row.primitive)
            return row.numbered;
    return primitive;
}

}  // namespace

bool SlcGenByteCode::IsAvailable(const SlcCallICode& call)
{
    for (const Alias& row : k_unavailable) {
        if (call.m_name->GetName() != row.primitive)
            continue;
        // The body of a function stands in the list once for each call of it.
        if (m_reportedCalls.insert(call.m_node).second)
            m_errors->Error(call.m_node, std::string("'") + row.numbered +
                                             "' is not available in byte-code, use '--dso'");
        return false;
    }
    return true;
}

// Operators

void SlcGenByteCode::Case(SlcPtr<SlcAssignICode> code)
{
    AddInstr(m_opName.GetString(code));
    AddVar(code->m_dest);
    AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcAssignSIMDICode> code)
{
    AddInstr(m_opName.GetString(SlcPtr<SlcAssignICode>(code)) + "_SIMD");
    AddVar(code->m_dest);
    AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcAssignToZeroICode> code)
{
    AddInstr(std::string("ASSIGN_TO_ZERO_").append(SlcTypeWord(code->m_dest->GetType())));
    AddVar(code->m_dest);
}

void SlcGenByteCode::Case(SlcPtr<SlcArithExprICode> code)
{
    AddInstr(m_opName.GetString(code));
    AddVar(code->m_resultId);
    AddVar(code->m_leftExpr);
    AddVar(code->m_rightExpr);
}

void SlcGenByteCode::Case(SlcPtr<SlcBinOpBoolExprICode> code)
{
    AddInstr(m_opName.GetString(code));
    AddVar(code->m_resultId);
    AddVar(code->m_leftExpr);
    AddVar(code->m_rightExpr);
}

void SlcGenByteCode::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    AddInstr(m_opName.GetString(code));
    AddVar(code->m_dest);
    AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcPointICode> code)
{
    AddInstr("INIT_POINT");
    for (const SlcOperand& operand : {code->m_dest, code->m_x, code->m_y, code->m_z})
        AddVar(operand);
}

void SlcGenByteCode::Case(SlcPtr<SlcColorICode> code)
{
    AddInstr("INIT_COLOR");
    for (const SlcOperand& operand : {code->m_dest, code->m_r, code->m_g, code->m_b})
        AddVar(operand);
}

void SlcGenByteCode::Case(SlcPtr<SlcMatrixICode> code)
{
    AddInstr("INIT_MATRIX");
    AddVar(code->m_dest);
    AddVars(code->m_values);
}

// Jumps and brackets

void SlcGenByteCode::Case(SlcPtr<SlcLabelICode> code)
{
    AddLabelRef(code);
}

void SlcGenByteCode::Case(SlcPtr<SlcGotoICode> code)
{
    AddInstr(SqxMark::Goto);
    AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    AddInstr(SqxMark::IfTrueGoto);
    AddVar(code->m_flag);
    AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    AddInstr(SqxMark::IfFalseGoto);
    AddVar(code->m_flag);
    AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcBeginParallelICode> code)
{
    AddInstr(SqxMark::BeginParallel);
    AddLabelRef(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndParallelICode>)
{
    AddInstr(SqxMark::EndParallel);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfTrueICode> code)
{
    AddInstr(SqxMark::IfTrue);
    AddVar(code->m_flag);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfFalseICode> code)
{
    AddInstr(SqxMark::IfFalse);
    AddVar(code->m_flag);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndIfICode> code)
{
    AddInstr(SqxMark::EndIf);
    AddLabelRef(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcBreakICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcGenByteCode::Case(SlcPtr<SlcContinueICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcGenByteCode::ClearFlags(const std::deque<SlcOperand>& flags)
{
    for (const SlcOperand& flag : flags) {
        AddInstr(SqxMark::SetBool);
        AddVar(flag);
    }
}

// Flags

void SlcGenByteCode::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    AddInstr("SET_UNIFORM_BOOL_FLAG");
    AddVar(code->m_dest);
    AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    AddInstr(code->m_outer ? "INVERT_INNER_BOOL_FLAG" : "INVERT_BOOL_FLAG");
    AddVar(code->m_dest);
    AddVar(code->m_source);
    AddVarIfSet(code->m_outer);
}

void SlcGenByteCode::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    AddInstr("OR_BOOL_FLAG");
    AddVar(code->m_dest);
    AddVar(code->m_left);
    AddVar(code->m_right);
}

// Arrays

void SlcGenByteCode::Case(SlcPtr<SlcCheckValidArrayIndexICode> code)
{
    // A line number only serves a message, so that a large one is no reason to refuse the shader.
    constexpr int highestLine = std::numeric_limits<std::int16_t>::max();
    AddInstr(SqxMark::CheckValidArrayIndex);
    AddVar(code->m_arrayName);
    AddVar(code->m_index);
    AddConst(code->m_size, "Array size");
    AddVar(code->m_fileName);
    AddConst(std::clamp(code->m_line, 0, highestLine), "Line number");
}

void SlcGenByteCode::Case(SlcPtr<SlcArrayRefICode> code)
{
    AddInstr(SqxMark::ArrayRef);
    AddVar(code->m_result);
    AddVar(code->m_array);
    AddVar(code->m_index);
}

// Calls

void SlcGenByteCode::Case(SlcPtr<SlcCallICode> code)
{
    if (!IsAvailable(*code))
        return;
    AddInstr(Numbered(code->m_name->GetName()).append(code->m_form.Suffix()));
    if (code->m_list == SlcCallICode::ArgumentList::Counted)
        AddConst(static_cast<int>(code->m_args.size()), "Number of arguments");
    AddVarIfSet(code->m_result);
    AddVarIfSet(code->m_form.condition);
    AddVars(code->m_args);
}

void SlcGenByteCode::Case(SlcPtr<SlcCallDSOICode> code)
{
    AddInstr(SqxMark::CallDSO);
    AddConst(m_dsoFuncs.at(code->m_funcKey + '_' + code->m_methodName), "Shadeop number");
    AddConst(static_cast<int>(code->m_args.size()), "Number of arguments");
    AddVarIfSet(code->m_result);
    AddVars(code->m_args);
}

void SlcGenByteCode::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    AddInstr(code->m_toDSO ? SqxMark::ConvertArrayDSOTo : SqxMark::ConvertArrayDSOFrom);
    AddVar(code->m_dest);
    AddVar(code->m_source);
}

// Spaces

void SlcGenByteCode::AddTransform(const SlcTransformSpaceICode& code,
                                  SlcTransformDirection direction)
{
    AddInstr(SlcTransformName(code, direction));
    AddVar(code.m_dest);
    AddVarIfSet(code.m_form.condition);
    AddVar(code.m_source);
    if (code.m_type->IsColorType())
        AddVar(code.m_space);
    else
        AddConst(GetMatrixNb(code.m_space->GetString()), "Coordinate space");
}

void SlcGenByteCode::Case(SlcPtr<SlcTransformFromSpaceICode> code)
{
    AddTransform(*code, SlcTransformDirection::FromSpace);
}

void SlcGenByteCode::Case(SlcPtr<SlcTransformToSpaceICode> code)
{
    AddTransform(*code, SlcTransformDirection::ToSpace);
}

void SlcGenByteCode::Case(SlcPtr<SlcConcatSpaceMatrixICode> code)
{
    AddInstr("CONCAT_SPACE_MATRIX");
    AddVar(code->m_dest);
    AddVar(code->m_source);
    AddConst(GetMatrixNb(code->m_space->GetText()), "Coordinate space");
}

// Light

void SlcGenByteCode::Case(SlcPtr<SlcIlluminateICode> code)
{
    std::string name = code->m_axis ? "ILLUMINATE" : "ILLUMINATE_NO_CONE";
    AddInstr(name.append(code->m_form.Suffix()));
    AddVar(code->m_flag);
    AddVarIfSet(code->m_form.condition);
    AddVar(code->m_position);
    AddVarIfSet(code->m_axis);
    AddVarIfSet(code->m_angle);
    AddVar(code->m_Ps);
    AddVar(code->m_L);
}

void SlcGenByteCode::Case(SlcPtr<SlcSolarICode> code)
{
    AddInstr(std::string("SOLAR").append(code->m_form.Suffix()));
    AddVar(code->m_flag);
    AddVarIfSet(code->m_form.condition);
    AddVar(code->m_axis);
    AddVar(code->m_angle);
    AddVar(code->m_L);
}

void SlcGenByteCode::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    AddInstr(std::string("ILLUMINANCE").append(code->m_form.Suffix()));
    AddVar(code->m_flag);
    AddVarIfSet(code->m_form.condition);
    AddVar(code->m_position);
    AddVar(code->m_axis);
    AddVar(code->m_angle);
}

void SlcGenByteCode::Case(SlcPtr<SlcBeginIlluminanceICode> code)
{
    AddInstr(SqxMark::BeginIlluminance);
    AddGotoLabel(code->m_endLabel);
    AddLabelRef(code->m_startLabel);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndIlluminanceICode> code)
{
    AddInstr(SqxMark::EndIlluminance);
    AddGotoLabel(code->m_startLabel);
}

void SlcGenByteCode::Case(SlcPtr<SlcEvalLightICode> code)
{
    AddInstr("EVAL_LIGHTS");
    AddVar(code->m_position);
}

void SlcGenByteCode::Case(SlcPtr<SlcEvalLightForPICode>)
{
    AddInstr(SqxMark::EvalLightsForP);
}

void SlcGenByteCode::Case(SlcPtr<SlcResetEvalLightForPICode>)
{
    AddInstr(SqxMark::ResetEvalLightsForP);
}

// Textures

void SlcGenByteCode::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    AddInstr(code->m_condition ? "COMPUTE_ST_POINTS_IF_TRUE" : "COMPUTE_ST_POINTS");
    AddVar(code->m_s);
    AddVar(code->m_t);
    for (const SlcOperand& corner : code->m_corners)
        AddVar(corner);
    AddVarIfSet(code->m_condition);
}

void SlcGenByteCode::Case(SlcPtr<SlcTexturePointsICode> code)
{
    AddInstr(code->m_condition ? "COMPUTE_POINTS_IF_TRUE" : "COMPUTE_POINTS");
    AddVar(code->m_point);
    for (const SlcOperand& corner : code->m_corners)
        AddVar(corner);
    AddVarIfSet(code->m_condition);
}

void SlcGenByteCode::Case(SlcPtr<SlcFilterstepPointsICode> code)
{
    AddInstr(code->m_condition ? "COMPUTE_FILTERSTEP_POINTS_IF_TRUE" : "COMPUTE_FILTERSTEP_POINTS");
    AddVar(code->m_y);
    AddVar(code->m_x);
    AddVarIfSet(code->m_condition);
}
