// Statements for transforms, lights, built-ins, texture footprints and shadeops.
//
// The forms of a primitive, such as the one for the whole grid, differ in their suffix. A condition
// is the first argument of transforms, the last one of ILLUMINANCE and footprints, and follows the
// result of all others. If a call for the whole grid is written for one point (WriteCallAtPoint),
// its condition becomes an `if`. A list of arguments of variable length becomes an array of their
// addresses and its length. Unless the format of a `printf` or `format` is known to match its
// arguments, the variable `theTypes` with one letter per argument precedes the call. A shadeop gets
// an array of the addresses of its result and its arguments:
//
//     d = f(w, 2)      {
//                          int dsoArgc = 3; void *dsoArgv[3];
//                          dsoArgv[0] = &(d); dsoArgv[1] = &(...w...[polyCnt * n]);
//                          float temp2; ASSIGN_FLOAT_FLOAT(temp2, 2); dsoArgv[2] = &temp2;
//                          if (s_theDSOInfo[...].m_methodFunc) { ... }
//                      }
//
// An argument without an address, such as a constant, is first copied into a variable. Declarations
// are in separate braces, since a jump must not enter their scope.
//
// Tested by tests/backends/CStatementsTest.cpp.

#include "backends/SlcCStatements.h"
#include "backends/SlcFormatTypes.h"
#include "backends/SlcLocalFacts.h"
#include "backends/SlcPrimitiveNames.h"
#include "backends/SlcSpaceName.h"
#include "symbols/SlcGeneratedNames.h"

namespace {

bool HasFormatArgument(const SlcCallICode& code)
{
    return code.m_primitive == SqxPrimitive::CALL_PRIM_PRINTF ||
           code.m_primitive == SqxPrimitive::CALL_PRIM_FORMAT;
}

bool IsVaryingArray(const SlcOperand& operand)
{
    return IsArray(operand) && !operand->IsUniform();
}

}  // namespace

// Coordinate systems.

void SlcCStatements::Case(SlcPtr<SlcTransformFromSpaceICode> code)
{
    WriteTransform(*code, SlcTransformDirection::FromSpace);
}

void SlcCStatements::Case(SlcPtr<SlcTransformToSpaceICode> code)
{
    WriteTransform(*code, SlcTransformDirection::ToSpace);
}

void SlcCStatements::WriteTransform(SlcTransformSpaceICode& code, SlcTransformDirection direction)
{
    const bool isColor = code.m_type->IsColorType();
    if (!isColor && !code.m_type->IsPointType()) {
        Default(SlcPtr<SlcICode>(&code));
        return;
    }
    m_out << SqxFormName(SlcTransformPrimitive(code, direction), code.m_form.Form()) << '(';
    if (code.m_form.condition)
        m_out << Grid(code.m_form.condition) << ", ";
    const auto text = [&](const SlcOperand& operand) {
        return code.m_form.simd ? Grid(operand) : Text(operand);
    };
    m_out << text(code.m_dest) << ", " << text(code.m_source);
    if (isColor)
        Line(",", Text(code.m_space), ");");
    else
        Line(", ", SlcMatrixIndexName(code.m_space->GetString()), ");");
}

void SlcCStatements::Case(SlcPtr<SlcConcatSpaceMatrixICode> code)
{
    WriteCall(SqxPrimitive::CONCAT_SPACE_MATRIX, {Text(code->m_dest), Text(code->m_source),
                                                  SlcMatrixIndexName(code->m_space->GetText())});
}

// Lights.

void SlcCStatements::Case(SlcPtr<SlcEvalLightICode> code)
{
    WriteCall(SqxPrimitive::EVAL_LIGHTS, {Grid(code->m_position)});
}

void SlcCStatements::Case(SlcPtr<SlcEvalLightForPICode>)
{
    Line("if (mustEvalLights) {");
    Line(std::string("\t\tEVAL_LIGHTS(") + SlcGeneratedNames::k_P + ");");
    Line("\t\tmustEvalLights = false;");
    Line("\t}");
}

void SlcCStatements::Case(SlcPtr<SlcResetEvalLightForPICode>)
{
    Line("mustEvalLights = true;");
}

void SlcCStatements::Case(SlcPtr<SlcIlluminateICode> code)
{
    const auto text = [&](const SlcOperand& operand) {
        return code->m_form.simd ? Grid(operand) : Text(operand);
    };
    Texts texts{text(code->m_flag)};
    if (code->m_form.condition)
        texts.push_back(Grid(code->m_form.condition));
    texts.push_back(text(code->m_position));
    if (code->m_axis) {
        texts.push_back(text(code->m_axis));
        texts.push_back(text(code->m_angle));
    }
    texts.push_back(text(code->m_Ps));
    texts.push_back(text(code->m_L));
    WriteCall(code->m_axis ? SqxPrimitive::ILLUMINATE : SqxPrimitive::ILLUMINATE_NO_CONE, texts,
              code->m_form.Form());
}

void SlcCStatements::Case(SlcPtr<SlcSolarICode> code)
{
    if (!code->m_form.simd) {
        WriteCall(SqxPrimitive::SOLAR,
                  {Text(code->m_flag), Text(code->m_L), Text(code->m_axis), Text(code->m_angle)});
        return;
    }
    Texts texts{Grid(code->m_flag)};
    if (code->m_form.condition)
        texts.push_back(Grid(code->m_form.condition));
    for (const SlcOperand& operand : {code->m_L, code->m_axis, code->m_angle})
        texts.push_back(Grid(operand));
    WriteCall(SqxPrimitive::SOLAR, texts, code->m_form.Form());
}

void SlcCStatements::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    if (!code->m_form.simd) {
        WriteCall(SqxPrimitive::ILLUMINANCE, {Text(code->m_flag), Text(code->m_position),
                                              Text(code->m_axis), Text(code->m_angle)});
        return;
    }
    Texts texts = GridTexts({code->m_flag, code->m_position, code->m_axis, code->m_angle});
    if (code->m_form.condition)
        texts.push_back(Grid(code->m_form.condition));
    WriteCall(SqxPrimitive::ILLUMINANCE, texts, code->m_form.Form());
}

// Built-ins.

void SlcCStatements::Case(SlcPtr<SlcCallICode> code)
{
    const bool hasResult = !code->m_result.Null();
    if (hasResult && code->m_form.simd) {
        if (m_inPointLoop)
            WriteCallAtPoint(*code);
        else
            WriteGridCall(*code);
        return;
    }
    const std::string result = hasResult ? Text(code->m_result) : "";
    if (code->m_list == SlcCallICode::ArgumentList::Counted) {
        WriteVarArgsCall(*code, result);
        return;
    }
    Texts texts;
    if (hasResult)
        texts.push_back(result);
    for (const SlcOperand& argument : code->m_args)
        texts.push_back(Text(argument));
    WriteCall(code->m_primitive, texts);
}

void SlcCStatements::WriteGridCall(const SlcCallICode& code)
{
    Texts texts{Grid(code.m_result)};
    if (code.m_form.condition)
        texts.push_back(Grid(code.m_form.condition));
    for (const SlcOperand& argument : code.m_args)
        texts.push_back(Grid(argument));
    WriteCall(code.m_primitive, texts, code.m_form.Form());
}

void SlcCStatements::WriteVarArgsCall(const SlcCallICode& code, const std::string& result)
{
    const std::size_t count = code.m_args.size();
    Line("{");
    Line("\tconst void *theArgs[", count, "];");
    if (HasFormatArgument(code) && !SlcFormatMatches(code.m_args))
        Line("\tconst char *theTypes = \"", SlcTypeLetters(code.m_args), "\";");
    Line();
    for (std::size_t k = 0; k < count; ++k) {
        const SlcOperand& argument = code.m_args[k];
        std::string text = Text(argument);
        const bool isFloat = argument->IsFloat();
        if (isFloat || argument->IsString()) {
            // A constant has no address.
            const std::string temporary = "temp" + std::to_string(k);
            Line(isFloat ? "\tfloat " : "\tconst char *", temporary, " = ", text, ";");
            text = temporary;
        }
        Line("\ttheArgs[", k, "] = &(", text, ");");
    }
    m_out << '\t';
    Texts texts{"theArgs", std::to_string(count)};
    if (!result.empty())
        texts.insert(texts.begin(), result);
    WriteCall(code.m_primitive, texts);
    Line("\t}");
}

// Texture footprints.

void SlcCStatements::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    Texts texts = GridTexts({code->m_s, code->m_t});
    for (const SlcOperand& corner : code->m_corners)
        texts.push_back(Grid(corner));
    WriteFootprint(SqxPrimitive::COMPUTE_ST_POINTS, std::move(texts), code->m_condition);
}

void SlcCStatements::Case(SlcPtr<SlcTexturePointsICode> code)
{
    Texts texts{Grid(code->m_point)};
    for (const SlcOperand& corner : code->m_corners)
        texts.push_back(Grid(corner));
    WriteFootprint(SqxPrimitive::COMPUTE_POINTS, std::move(texts), code->m_condition);
}

void SlcCStatements::Case(SlcPtr<SlcFilterstepPointsICode> code)
{
    WriteFootprint(SqxPrimitive::COMPUTE_FILTERSTEP_POINTS, GridTexts({code->m_x, code->m_y}),
                   code->m_condition);
}

/// A footprint always covers the whole grid, so the name of its primitive has no suffix "_SIMD".
void SlcCStatements::WriteFootprint(SqxPrimitive primitive, Texts operands,
                                    const SlcOperand& condition)
{
    if (condition)
        operands.push_back(Grid(condition));
    WriteCall(primitive, operands, condition ? SqxForm::Where : SqxForm::Plain);
}

// Shadeops.

std::string SlcCStatements::ShadeopAssignName(const SlcTypeNode* type, const char* what) const
{
    const std::string name = SlcAssignName(type, type);
    if (name.empty())
        Fatal(std::string("Invalid type for ") + what +
              " value (in SlcGenCCode::Case(SlcPtr<SlcCallDSOICode>)");
    return name;
}

/// A string result is returned through a separate pointer: the text belongs to the library, and the
/// variable gets a copy, which the shader frees.
void SlcCStatements::Case(SlcPtr<SlcCallDSOICode> code)
{
    const std::size_t count = code->m_args.size() + 1;
    const bool isString = code->m_result && code->m_result->GetType()->IsStringType();
    const std::string result = code->m_result ? Text(code->m_result) : "";
    Line("{");
    Line("\t\tint dsoArgc = ", count, ";");
    Line("\t\tvoid *dsoArgv[", count, "];");
    if (isString)
        Line("\t\tconst char *temp0 = 0;");
    if (code->m_result)
        Line("\t\tdsoArgv[0] = &(", isString ? "temp0" : result, ");");
    else
        Line("\t\tdsoArgv[0] = 0;");
    for (std::size_t k = 1; k < count; ++k)
        WriteShadeopArgument(code->m_args[k - 1], k);
    const std::string info =
        "s_theDSOInfo[DSOINFO_" + code->m_funcKey + "_" + code->m_methodName + "]";
    Line("\t\tif (", info, ".m_methodFunc)");
    Line("\t\t{");
    Line("\t\t\t", info, ".m_methodFunc(", info, ".m_initdata,dsoArgc, dsoArgv);");
    if (isString)
        Line("\t\t\tASSIGN_STRING_STRING(", result, ", temp0);");
    Line("\t\t}");
    Line("}");
}

void SlcCStatements::WriteShadeopArgument(const SlcOperand& argument, std::size_t place)
{
    const std::string slot = "\t\tdsoArgv[" + std::to_string(place) + "] = &";
    if (IsVaryingArray(argument)) {
        Line(slot, "(", Grid(argument), "[polyCnt * ", ElementCount(argument), "]);");
        return;
    }
    if (argument->IsIdent() && !argument->IsPIVariable()) {
        Line(slot, "(", Text(argument), ");");
        return;
    }
    const SlcTypeNode* type = argument->GetType();
    const std::string assign = ShadeopAssignName(type, "constant");
    const std::string temporary = "temp" + std::to_string(place);
    if (type->IsStringType()) {
        // Assigning a string would free the previous one, but the temporary never had one.
        Line("\t\t", m_types.GetString(type), temporary, " = ", Text(argument), ";");
    } else {
        Line("\t\t", m_types.GetString(type), " ", temporary, ";");
        m_out << "\t\t";
        WriteCall(assign, {temporary, Text(argument)});
    }
    Line(slot, temporary, ";");
}

/// A shadeop expects the array of one point as consecutive elements, but a varying array contains
/// its first element for all points, then its second.
void SlcCStatements::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    const std::string assign = ShadeopAssignName(ElementType(code->m_dest), "array");
    const int size = ElementCount(code->m_dest);
    const std::string run = "[polyCnt * " + std::to_string(size) + " + j]";
    const std::string byElement = "[j * numMp + polyCnt]";
    Line("for (polyCnt = 0; polyCnt < numMp; ++polyCnt) {");
    Line("\t\tfor (int j = 0; j < ", size, "; ++j) {");
    m_out << "\t\t\t";
    WriteCall(assign, {Grid(code->m_dest) + (code->m_toDSO ? run : byElement),
                       Grid(code->m_source) + (code->m_toDSO ? byElement : run)});
    Line("\t\t}");
    Line("\t}");
}
