// Writes the sections of a byte-code file, from top to bottom. Each variable and constant gets the
// next number where it is declared, and instructions refer to it by that number:
//
//     predefined, parameters, locals (uniform, varying), constants     0, 1, 2, ...
//     then, for each of the two groups of initializers: locals and constants     the next numbers
//
// Initializers are grouped by when they run: once for each instance, or for each grid.
//
// docs/byte-code.md describes the file. Tested by tests/backends/GenByteCodeTest.cpp, and by
// SqxReaderTest.cpp, which reads back what is written.

#include "backends/SlcGenByteCode.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "backends/SlcCollectConst.h"
#include "backends/SlcEquCValue.h"
#include "frontend/SlcShaderTypeNode.h"
#include "icode/SlcICodeName.h"
#include "sqx/SqxFileHead.h"
#include "support/SlcFloatText.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcInterfaceQxLib.h"
#include "symbols/SlcSymbolEntry.h"

namespace {

// The number of spaces that every file implies; they are the first ones in `m_spaces`.
constexpr std::size_t k_impliedSpaces = 2;

struct ShaderTypeCode {
    bool (SlcShaderTypeNode::*test)() const;
    int code;
};

constexpr ShaderTypeCode k_shaderTypes[] = {
    {&SlcShaderTypeNode::IsSurface, 0}, {&SlcShaderTypeNode::IsDisplacement, 1},
    {&SlcShaderTypeNode::IsVolume, 2},  {&SlcShaderTypeNode::IsLight, 3},
    {&SlcShaderTypeNode::IsImager, 4},
};

/// Returns the element's type for an array or a reference to an element, otherwise the type itself.
const SlcTypeNode* ElementOf(const SlcTypeNode* type)
{
    if (type->IsArrayRefType())
        return static_cast<const SlcArrayRefTypeNode*>(type)->GetElementType();
    if (type->IsArrayType())
        return static_cast<const SlcArrayTypeNode*>(type)->GetElementType();
    return type;
}

/// Writes a number and returns the end of its text. Nearly all have up to three digits, for which
/// std::to_chars takes twice as long.
char* PutNumber(char* at, char* end, std::int16_t value)
{
    if (value < 0 || value > 999)
        return std::to_chars(at, end, value).ptr;
    if (value > 99)
        *at++ = static_cast<char>('0' + value / 100);
    if (value > 9)
        *at++ = static_cast<char>('0' + value / 10 % 10);
    *at++ = static_cast<char>('0' + value % 10);
    return at;
}

int SizeOf(const SlcTypeNode* type)
{
    const bool isArray = !type->IsArrayRefType() && type->IsArrayType();
    return isArray ? static_cast<const SlcArrayTypeNode*>(type)->GetLength() : 1;
}

}  // namespace

SlcGenByteCode::SlcGenByteCode(SlcPtr<SlcSemanticError> errors, SlcText& out)
    : m_errors(std::move(errors)),
      m_out(out)
{
}

void SlcGenByteCode::GenByteCode(SlcInterForm& form)
{
    Begin(form);
    GenDeclarations(form, form.m_mainList);
    GenInitShaderParams(form);
    GenFacts(form);
    GenTheByteCode(*form.m_mainList);
}

bool SlcGenByteCode::GenDescription(SlcInterForm& form, const std::set<std::size_t>& leftOut)
{
    const SlcSemanticError::Quiet quiet(*m_errors);
    m_leftOut = leftOut;
    const auto noCode = MakeShared<SlcListICode>();
    Begin(form);
    GenDeclarations(form, noCode);
    GenInitShaderParams(form);
    GenFacts(form);
    GenTheByteCode(*noCode);
    return m_faults == 0 && m_unwritten.empty();
}

void SlcGenByteCode::Begin(const SlcInterForm& form)
{
    m_shader = form.m_shader;
    InitMatricesInfo(form);
    InitDSOInfo(form);
}

void SlcGenByteCode::GenDeclarations(SlcInterForm& form, const SlcPtr<SlcListICode>& list)
{
    GenHeader(form);
    m_out << '\n';
    GenVarDeclarations(form, list);
    m_out << '\n';
    GenMatrices(form);
    m_out << '\n';
}

void SlcGenByteCode::GenFacts(const SlcInterForm& form)
{
    m_out << '\n';
    GenInitNeededObjectSpace(form);
    m_out << '\n';
    GenIsVarOutput(form);
    m_out << '\n';
    GenDSOInfo(form);
    m_out << '\n';
    GenRayTracing(form);
    GenPModified(form);
}

void SlcGenByteCode::GenHeader(const SlcInterForm& form)
{
    for (const std::string_view line : k_sqxFileHead)
        m_out << line << '\n';
    for (const ShaderTypeCode& row : k_shaderTypes) {
        if ((form.m_shaderType->*row.test)()) {
            m_out << row.code << '\n';
            return;
        }
    }
    m_errors->FatalError("In SlcGenByteCode::GenHeader, invalid shader type");
}

void SlcGenByteCode::GenVarDeclarations(SlcInterForm& form, SlcPtr<SlcListICode> list)
{
    m_nextVarNb = 0;
    std::deque<SlcOperand> constants;
    SlcCollectConst().Collect(list, constants);
    const auto& locals = list->m_usedLocalVars;
    m_out << form.m_hiddenVars.size() + form.m_parameters.size() + locals.size() + constants.size()
          << '\n';

    m_out << form.m_hiddenVars.size() << '\n';
    for (const auto& variable : form.m_hiddenVars) {
        m_out << variable->GetName() << '\n';
        Number(variable->GetIntCodeVar());
    }
    m_out << form.m_parameters.size() << '\n';
    for (const SlcParameterInfo& parameter : form.m_parameters)
        GenParameter(*parameter.entry, parameter.space);
    GenLocals({locals.begin(), locals.end()});
    GenConstants(constants);
}

void SlcGenByteCode::GenParameter(SlcVarSymbolEntry& parameter, const SlcStringLiteralNode* space)
{
    const SlcDetailNode* detail = parameter.GetDetail();
    const SlcTypeNode* type = parameter.GetType();
    m_out << '"' << parameter.GetName() << "\" \""
          << SlcInterfaceQxLib::SlcConstructDetailTypeStr(detail, type) << "\" " << space->GetText()
          << ' ' << SlcInterfaceQxLib::SlcDetailNodeToQxClass(detail) << ' '
          << SlcInterfaceQxLib::SlcTypeNodeToQxType(ElementOf(type)) << ' ' << SizeOf(type) << '\n';
    Number(parameter.GetIntCodeVar());
}

void SlcGenByteCode::GenLocals(const std::vector<SlcOperand>& locals)
{
    for (const bool uniform : {true, false}) {
        // Collect the lines in one text, since writing each number to the stream takes far longer.
        std::string lines;
        std::size_t count = 0;
        for (const SlcOperand& local : locals) {
            if (local->IsUniform() != uniform)
                continue;
            AddVarTypeInfo(local, lines);
            ++count;
        }
        m_out << count << '\n' << lines;
    }
}

void SlcGenByteCode::AddVarTypeInfo(const SlcOperand& variable, std::string& lines)
{
    const SlcTypeNode* type = variable->GetType();
    lines += std::to_string(SlcInterfaceQxLib::SlcTypeNodeToQxType(ElementOf(type)));
    lines.append(1, ' ').append(std::to_string(SizeOf(type)));
    lines += type->IsArrayRefType() ? " 1\n" : " 0\n";
    Number(variable);
}

void SlcGenByteCode::GenConstants(const std::deque<SlcOperand>& constants)
{
    m_out << constants.size() << '\n';
    for (const SlcOperand& constant : constants)
        GenConstInfo(constant);
}

void SlcGenByteCode::GenConstInfo(const SlcOperand& constant)
{
    m_out << SlcInterfaceQxLib::SlcTypeNodeToQxType(constant->GetType()) << ' ';
    if (constant->IsFloat()) {
        const std::string text = SlcFloatText(constant->GetFloat());
        m_out << text;
        // The reader converts the number to a float, which would be infinite.
        if (std::abs(constant->GetFloat()) > std::numeric_limits<float>::max()) {
            ++m_faults;
            m_errors->Error(m_shader, "Constant " + text + " does not fit into single precision");
        }
    } else if (constant->IsString()) {
        m_out << constant->GetString();
    } else if (constant->IsInt()) {
        m_out << constant->GetInt();
    } else if (constant->IsBool()) {
        m_out << (constant->GetBool() ? 1 : 0);
    } else {
        m_errors->FatalError("Invalid constant type (in SlcGenByteCode::GenConstInfo)");
    }
    m_out << '\n';
    Number(constant);
}

void SlcGenByteCode::GenMatrices(const SlcInterForm& form)
{
    m_out << form.m_spaces.size() - k_impliedSpaces << '\n';
    for (std::size_t i = k_impliedSpaces; i < form.m_spaces.size(); ++i)
        m_out << form.m_spaces[i]->GetText() << '\n';
}

void SlcGenByteCode::InitMatricesInfo(const SlcInterForm& form)
{
    for (const SlcStringLiteralNode* space : form.m_spaces)
        m_matrices.emplace(space->GetText(), static_cast<int>(m_matrices.size()));
}

int SlcGenByteCode::GetMatrixNb(const std::string& space) const
{
    const auto found = m_matrices.find(space);
    return found == m_matrices.end() ? -1 : found->second;
}

void SlcGenByteCode::GenInitShaderParams(SlcInterForm& form)
{
    GenInitGroup(form, false);
    GenInitGroup(form, true);
}

void SlcGenByteCode::GenInitGroup(SlcInterForm& form, bool dependsOnContext)
{
    std::vector<std::size_t> members;
    std::deque<SlcPtr<SlcListICode>> lists;
    std::deque<std::deque<SlcOperand>> values;
    std::vector<SlcOperand> locals;
    for (std::size_t i = 0; i < form.m_parameters.size(); ++i) {
        const SlcParameterInfo& parameter = form.m_parameters[i];
        if (parameter.initDependsOnContext != dependsOnContext || m_leftOut.contains(i))
            continue;
        members.push_back(i);
        // The lists of a group share their constants, and their locals are declared together.
        lists.push_back(parameter.initList);
        values.push_back(parameter.initValues);
        const auto& used = parameter.initList->m_usedLocalVars;
        locals.insert(locals.end(), used.begin(), used.end());
    }
    std::deque<SlcOperand> constants;
    SlcCollectConst().CollectInit(lists, values, constants);

    m_out << members.size() << '\n' << constants.size() + locals.size() << '\n';
    GenLocals(locals);
    GenConstants(constants);
    for (std::size_t i = 0; i < members.size(); ++i) {
        const std::size_t faults = m_faults;
        m_out << members[i] << '\n';
        GenTheByteCode(*lists[i]);
        m_out << values[i].front()->m_index << '\n';
        if (m_faults > faults || values[i].front()->m_index < 0)
            m_unwritten.insert(members[i]);
    }
}

void SlcGenByteCode::GenInitNeededObjectSpace(const SlcInterForm& form)
{
    for (const SlcParameterInfo& parameter : form.m_parameters)
        m_out << (parameter.needsObjectSpace ? 1 : 0) << '\n';
}

void SlcGenByteCode::GenIsVarOutput(const SlcInterForm& form)
{
    for (const SlcParameterInfo& parameter : form.m_parameters)
        m_out << (parameter.entry->GetStorage()->IsOutput() ? 1 : 0) << '\n';
}

/// Runs before any block is written, since initializers, too, may call shadeops.
void SlcGenByteCode::InitDSOInfo(const SlcInterForm& form)
{
    for (const std::string& name : form.m_dsoNames)
        m_dsoLibs.emplace(name, static_cast<int>(m_dsoLibs.size()));
    for (const auto& function : form.m_dsoFunctions)
        m_dsoFuncs.emplace(function->GetKey() + '_' + function->GetMethodName()->GetName(),
                           static_cast<int>(m_dsoFuncs.size()));
}

void SlcGenByteCode::GenDSOInfo(const SlcInterForm& form)
{
    m_out << form.m_dsoNames.size() << '\n';
    for (const std::string& name : form.m_dsoNames)
        m_out << SlcEquCValue::Literal(name) << '\n';
    m_out << form.m_dsoFunctions.size() << '\n';
    for (const auto& function : form.m_dsoFunctions)
        m_out << m_dsoLibs.at(function->GetLibraryFileName()) << ' '
              << SlcEquCValue::Literal(function->GetInit()->GetName()) << ' '
              << SlcEquCValue::Literal(function->GetMethodName()->GetName()) << ' '
              << SlcEquCValue::Literal(function->GetCleanup()->GetName()) << '\n';
}

void SlcGenByteCode::GenRayTracing(const SlcInterForm& form)
{
    m_out << (form.m_usesRaytracing ? 1 : 0) << '\n';
}

void SlcGenByteCode::GenPModified(const SlcInterForm& form)
{
    m_out << (form.m_PModified ? 1 : 0) << '\n';
}

void SlcGenByteCode::GenTheByteCode(const SlcListICode& list)
{
    m_code.Reset();
    m_comment = nullptr;
    for (const auto& code : list.m_icodes)
        code->ApplyWalker(this);
    if (const std::string label = m_code.ResolveUnknownLabels(); !label.empty())
        m_errors->FatalError("Wrong label (in SlcGenByteCode::ResolveUnknownLabels): " + label);

    m_out << m_code.Values().size() << '\n';
    constexpr std::size_t k_longest = 7;  // characters of a number and its line end
    std::string text(m_code.Values().size() * k_longest, '\0');
    char* at = text.data();
    for (const std::int16_t value : m_code.Values()) {
        at = PutNumber(at, at + k_longest, value);
        *at++ = '\n';
    }
    m_out << std::string_view(text.data(), at);
}

void SlcGenByteCode::Report(std::string_view text)
{
    ++m_faults;
    if (m_comment)
        m_errors->ErrorICode(m_comment, text);
    else
        m_errors->Error(m_shader, text);
}
