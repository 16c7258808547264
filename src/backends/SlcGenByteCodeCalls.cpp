// Instructions for calls of built-ins and shadeops, transforms from and to spaces, lights and
// texture footprints.
//
//     if (f) c = clamp(p, q, r);      CALL_PRIM_CLAMP_3D_SIMD_IF_TRUE c f p q r
//
// The name of an instruction ends in the suffix of its form. The condition, if the form has one,
// follows the result, but is last in a footprint.
//
// Tested by tests/backends/GenByteCodeTest.cpp, and against the layouts of the reader by
// ByteCodeTableTest.cpp.

#include "backends/SlcGenByteCode.h"
#include "frontend/SlcCallNodes.h"
#include "icode/SlcICodes.h"
#include "sqx/SqxCard.h"
#include "support/reports/SlcSemanticError.h"

namespace {

/// Returns the primitive whose number is used for `primitive`, which may have none itself.
SqxPrimitive Numbered(SqxPrimitive primitive)
{
    return primitive == SqxPrimitive::CALL_PRIM_POINT_FLOAT_4D
               ? SqxPrimitive::CALL_PRIM_NOISE_POINT_4D
               : primitive;
}

/// A footprint always covers the whole grid, so its name has no suffix "_SIMD".
SqxForm FootprintForm(const SlcOperand& condition)
{
    return condition ? SqxForm::Where : SqxForm::Plain;
}

}  // namespace

bool SlcGenByteCode::IsAvailable(const SlcCallICode& call)
{
    if (SqxCardOf(Numbered(call.m_primitive)).HasNumber())
        return true;
    ++m_faults;
    // Report a call in the body of a function only once, although the list contains the body once
    // for each call of the function.
    if (m_reportedCalls.insert(call.m_node).second)
        m_errors->Error(call.m_node, "'" + std::string(SqxCardOf(call.m_primitive).Name()) +
                                         "' is not available in byte-code, use '--dso'");
    return false;
}

// Calls

void SlcGenByteCode::Case(SlcPtr<SlcCallICode> code)
{
    if (!IsAvailable(*code))
        return;
    m_code.AddInstr(Numbered(code->m_primitive), code->m_form.Form());
    if (code->m_list == SlcCallICode::ArgumentList::Counted)
        m_code.AddConst(static_cast<int>(code->m_args.size()), "Number of arguments");
    m_code.AddVarIfSet(code->m_result);
    m_code.AddVarIfSet(code->m_form.condition);
    m_code.AddVars(code->m_args);
}

void SlcGenByteCode::Case(SlcPtr<SlcCallDSOICode> code)
{
    m_code.AddInstr(SqxPrimitive::CALL_DSO);
    m_code.AddConst(m_dsoFuncs.at(code->m_funcKey + '_' + code->m_methodName), "Shadeop number");
    m_code.AddConst(static_cast<int>(code->m_args.size()), "Number of arguments");
    m_code.AddVarIfSet(code->m_result);
    m_code.AddVars(code->m_args);
}

void SlcGenByteCode::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    m_code.AddInstr(code->m_toDSO ? SqxPrimitive::CONVERT_ARRAY_DSO_TO
                                  : SqxPrimitive::CONVERT_ARRAY_DSO_FROM);
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
}

// Spaces

void SlcGenByteCode::AddTransform(const SlcTransformSpaceICode& code,
                                  SlcTransformDirection direction)
{
    m_code.AddInstr(SlcTransformPrimitive(code, direction), code.m_form.Form());
    m_code.AddVar(code.m_dest);
    m_code.AddVarIfSet(code.m_form.condition);
    m_code.AddVar(code.m_source);
    if (code.m_type->IsColorType())
        m_code.AddVar(code.m_space);
    else
        m_code.AddConst(GetMatrixNb(code.m_space->GetString()), "Coordinate space");
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
    m_code.AddInstr(SqxPrimitive::CONCAT_SPACE_MATRIX);
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
    m_code.AddConst(GetMatrixNb(code->m_space->GetText()), "Coordinate space");
}

// Light

void SlcGenByteCode::Case(SlcPtr<SlcIlluminateICode> code)
{
    m_code.AddInstr(code->m_axis ? SqxPrimitive::ILLUMINATE : SqxPrimitive::ILLUMINATE_NO_CONE,
                    code->m_form.Form());
    m_code.AddVar(code->m_flag);
    m_code.AddVarIfSet(code->m_form.condition);
    m_code.AddVar(code->m_position);
    m_code.AddVarIfSet(code->m_axis);
    m_code.AddVarIfSet(code->m_angle);
    m_code.AddVar(code->m_Ps);
    m_code.AddVar(code->m_L);
}

void SlcGenByteCode::Case(SlcPtr<SlcSolarICode> code)
{
    m_code.AddInstr(SqxPrimitive::SOLAR, code->m_form.Form());
    m_code.AddVar(code->m_flag);
    m_code.AddVarIfSet(code->m_form.condition);
    m_code.AddVar(code->m_axis);
    m_code.AddVar(code->m_angle);
    m_code.AddVar(code->m_L);
}

void SlcGenByteCode::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    m_code.AddInstr(SqxPrimitive::ILLUMINANCE, code->m_form.Form());
    m_code.AddVar(code->m_flag);
    m_code.AddVarIfSet(code->m_form.condition);
    m_code.AddVar(code->m_position);
    m_code.AddVar(code->m_axis);
    m_code.AddVar(code->m_angle);
}

void SlcGenByteCode::Case(SlcPtr<SlcBeginIlluminanceICode> code)
{
    m_code.AddInstr(SqxPrimitive::BEGIN_ILLUMINANCE);
    m_code.AddGotoLabel(code->m_endLabel);
    m_code.AddLabelRef(code->m_startLabel);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndIlluminanceICode> code)
{
    m_code.AddInstr(SqxPrimitive::END_ILLUMINANCE);
    m_code.AddGotoLabel(code->m_startLabel);
}

void SlcGenByteCode::Case(SlcPtr<SlcEvalLightICode> code)
{
    m_code.AddInstr(SqxPrimitive::EVAL_LIGHTS);
    m_code.AddVar(code->m_position);
}

void SlcGenByteCode::Case(SlcPtr<SlcEvalLightForPICode>)
{
    m_code.AddInstr(SqxPrimitive::EVAL_LIGHTS_FOR_P);
}

void SlcGenByteCode::Case(SlcPtr<SlcResetEvalLightForPICode>)
{
    m_code.AddInstr(SqxPrimitive::RESET_EVAL_LIGHTS_FOR_P);
}

// Textures

void SlcGenByteCode::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    m_code.AddInstr(SqxPrimitive::COMPUTE_ST_POINTS, FootprintForm(code->m_condition));
    m_code.AddVar(code->m_s);
    m_code.AddVar(code->m_t);
    for (const SlcOperand& corner : code->m_corners)
        m_code.AddVar(corner);
    m_code.AddVarIfSet(code->m_condition);
}

void SlcGenByteCode::Case(SlcPtr<SlcTexturePointsICode> code)
{
    m_code.AddInstr(SqxPrimitive::COMPUTE_POINTS, FootprintForm(code->m_condition));
    m_code.AddVar(code->m_point);
    for (const SlcOperand& corner : code->m_corners)
        m_code.AddVar(corner);
    m_code.AddVarIfSet(code->m_condition);
}

void SlcGenByteCode::Case(SlcPtr<SlcFilterstepPointsICode> code)
{
    m_code.AddInstr(SqxPrimitive::COMPUTE_FILTERSTEP_POINTS, FootprintForm(code->m_condition));
    m_code.AddVar(code->m_y);
    m_code.AddVar(code->m_x);
    m_code.AddVarIfSet(code->m_condition);
}
