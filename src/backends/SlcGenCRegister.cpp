// The entry points through which a shader describes itself, and the one that frees the results. A
// renderer calls QxRegister, then QxInterrogate, and QxDestroy last. The tables, except the list of
// spaces, are static, so a second call of QxInterrogate returns the same ones.
//
//     QxRegister       the parameters, each by its token, name and declaration
//     QxInterrogate    the kind of shader; parameters, spaces, predefined variables and sizes,
//                      which the renderer needs before it makes an instance; opens the libraries
//                      of shadeops
//     QxDestroy        frees what the other two have made, and closes the libraries
//
// Tested by tests/backends/CFileTest.cpp and tests/host.

#include <cctype>

#include "backends/SlcGenCCode.h"
#include "backends/SlcGeneratedText.h"
#include "backends/SlcLocalFacts.h"
#include "backends/SlcSpaceName.h"
#include "frontend/SlcShaderTypeNode.h"
#include "symbols/SlcSymbolEntry.h"

using Generated = SlcGeneratedText;

namespace {

struct DeclarationWord {
    bool (SlcTypeNode::*test)() const;
    const char* word;
};

// For the renderer's tokens, the point family is one type.
constexpr DeclarationWord k_declarationWords[] = {
    {&SlcTypeNode::IsFloatType, "float"},   {&SlcTypeNode::IsPointType, "point"},
    {&SlcTypeNode::IsColorType, "color"},   {&SlcTypeNode::IsStringType, "string"},
    {&SlcTypeNode::IsMatrixType, "matrix"},
};

std::string UpperCase(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

const char* TrueOrFalse(bool value)
{
    return value ? "true" : "false";
}

}  // namespace

std::string SlcGenCCode::Declaration(const SlcOperand& parameter) const
{
    std::string text = parameter->IsUniform() ? "uniform " : "varying ";
    const SlcTypeNode* type = ElementType(parameter);
    const char* word = nullptr;
    for (const DeclarationWord& row : k_declarationWords)
        if (!word && (type->*row.test)())
            word = row.word;
    if (!word)
        m_statements.Fatal("Invalid type in SlcGenCCode::GenRegisterFunc");
    text += word;
    if (IsArray(parameter))
        text += "[" + std::to_string(ElementCount(parameter)) + "]";
    return text;
}

void SlcGenCCode::GenRegisterFunc()
{
    const std::size_t count = m_form->m_parameters.size();
    for (std::size_t i = 0; i < count; ++i)
        Line("#define ", Generated::sm_visibleIndexPrefix, Parameter(i)->GetName(), " ", i);
    Line();
    Line(Generated::sm_slcPrefixFunc, Generated::sm_registerFuncName,
         "(QxTokenRegistry *i_registry)");
    Line("{");
    Line("\tQxToken *registryToken;");
    Line();
    const std::string table = Generated::sm_shaderParamsDescrName;
    if (count > 0) {
        Line("\tif (", table, " == 0) {");
        Line("\t\t", table, " = QxCreateShaderParamsDescr(", count, ");");
        Line("\t}");
        Line();
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& name = Parameter(i)->GetName();
        Line("\tregistryToken = QxFindToken( i_registry, \"", name, "\" );");
        Line("\t", table, "[", i, "].Init( ");
        Line("\t\tregistryToken, \"", name, "\", \"", Declaration(Parameter(i)), "\" );");
        Line();
    }
    Line("}");
    Line();
}

void SlcGenCCode::GenInterrogate()
{
    Line("static ", Generated::sm_slcVarsName, " *s_visibleVars = 0;");
    Line();
    Line(Generated::sm_slcPrefixFunc, Generated::sm_slcInterrogateFuncName, "(",
         Generated::sm_slcSearchPathTypeName, " *i_searchPaths, ",
         Generated::sm_slcSpaceRegistryTypeName, " *i_spaceRegistry, ",
         Generated::sm_slcTypePointSpaceList, " ***o_spaceList, ", Generated::sm_slcShaderTypeName,
         " *o_shaderType, ", Generated::sm_slcVarsName,
         " **o_visibleVars, unsigned char **o_isSpaceObject, unsigned char **o_isVisibleOutput, "
         "QxToken ***o_hiddenVars, QxShaderInterface::QxDataSize **o_dataSizes)");
    Line("{");
    Line("\tstatic int alreadyCalled = 0;");
    Line("\t*o_spaceList = QxCreateSpaceList(", m_form->m_spaces.size(), ");");
    for (const SlcStringLiteralNode* space : m_form->m_spaces)
        Line("\t(*o_spaceList)[", SlcMatrixIndexName(space->GetText()),
             "] = FindSpace(i_spaceRegistry, ", SlcEquCValue::Quote(space->GetText()), ");");
    GenVisibleVarsFacts();
    GenHiddenVars();
    GenDataSizes();
    Line("\t*o_shaderType = ", m_shaderTypes.GetString(m_form->m_shaderType), ";");
    Line("\t*o_visibleVars = s_visibleVars;");
    Line("\t*o_isSpaceObject = isSpaceObject;");
    Line("\t*o_isVisibleOutput = isVisibleOutput;");
    Line("\t*o_hiddenVars = hiddenVars;");
    Line("\t*o_dataSizes = &dataSizes;");
    Line("\tif (i_searchPaths)");
    Line("\t{");
    Line("\t\tQxInitDSO(i_searchPaths);");
    Line("\t}");
    Line("\talreadyCalled = 1;");
    Line("}");
}

void SlcGenCCode::GenVisibleVarsFacts()
{
    const std::size_t count = m_form->m_parameters.size();
    if (count > 0) {
        Line("\tif (!alreadyCalled)");
        Line("\t\ts_visibleVars = QxCreateVarsInit(", Generated::sm_shaderParamsDescrName, ", ",
             count, ");");
    }
    std::vector<std::string> needObjectSpace;
    std::vector<std::string> areOutput;
    for (std::size_t i = 0; i < count; ++i) {
        needObjectSpace.emplace_back(TrueOrFalse(m_form->m_parameters[i].needsObjectSpace));
        areOutput.emplace_back(TrueOrFalse(Parameter(i)->GetStorage()->IsOutput()));
    }
    GenTable("unsigned char ", "isSpaceObject", needObjectSpace);
    GenTable("unsigned char ", "isVisibleOutput", areOutput);
}

void SlcGenCCode::GenHiddenVars()
{
    std::vector<std::string> tokens;
    for (const auto& variable : m_form->m_hiddenVars)
        tokens.push_back("(QxToken*)RI_" + UpperCase(variable->GetName()));
    GenTable("QxToken *", "hiddenVars", tokens);
}

void SlcGenCCode::GenTable(const char* type, const char* name,
                           const std::vector<std::string>& values)
{
    if (values.empty()) {
        Line("\tstatic ", type, "*", name, " = 0;");
        return;
    }
    Line("\tstatic ", type, name, "[] = {");
    for (std::size_t i = 0; i < values.size(); ++i)
        Line("\t\t", values[i], i + 1 < values.size() ? "," : "");
    Line("\t};");
}

void SlcGenCCode::GenDataSizes()
{
    Line("\tstatic QxShaderInterface::QxDataSize dataSizes = {");
    Line("\t\t", m_form->m_parameters.size(), ",");
    Line("\t\t", m_form->m_hiddenVars.size(), ",");
    Line("\t\tsizeof(", Generated::sm_localUniformStructName, "),");
    Line("\t\tsizeof(", Generated::sm_localVaryingStructName, "),");
    Line("\t\t", m_form->m_spaces.size());
    Line("\t};");
}

void SlcGenCCode::GenDestroy()
{
    const std::string table = Generated::sm_shaderParamsDescrName;
    Line(Generated::sm_slcPrefixFunc, Generated::sm_slcDestroyFuncName, "(",
         Generated::sm_slcTypePointSpaceList, " ***o_spaceList)");
    Line("{");
    Line("\tQxFreeVarsInit(s_visibleVars);");
    Line("\ts_visibleVars = 0x0;");
    Line("\tQxFreeShaderParamsDescr(", table, ");");
    Line("\t", table, " = 0x0;");
    Line("\tQxDeleteSpaceList(*o_spaceList);");
    Line("\t*o_spaceList = 0x0;");
    Line("\tQxCleanupDSO();");
    Line("}");
}
