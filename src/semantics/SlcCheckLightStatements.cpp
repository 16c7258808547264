// Checks statements for lights: where they are allowed, their arguments, and the scopes of their
// bodies.
//
// `illuminance` loops over lights and declares L, Cl and Ol in its body; it is allowed in surfaces
// and volumes, `illuminate` and `solar` in lights. A constant of type LightStatement describes what
// is different for each of the three, so that each rule is written once. A function may contain all
// three: the type of shader is checked where shader code calls the function.
//
// Tested by tests/semantics/SlcCheckLightStatementsTest.cpp.

#include <string>
#include <typeinfo>

#include "frontend/SlcNodes.h"
#include "semantics/SlcCheckSemantics.h"
#include "semantics/SlcStatementInfo.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcShaderSymbolTable.h"

struct SlcCheckSemantics::LightStatement {
    enum class Side { Lit, Lighting };  // surfaces and volumes, or lights

    const char* name;
    Side side;
    const char* illegal;
    const char* nested;
    const char* notFound;   // internal error: a name that was not found
    const char* afterName;  // follows `notFound` and the name; null if the name is not shown
    const char* noVariable;
};

namespace {

constexpr const char* k_nestedIlluminance = "'Illuminance' statements cannot be nested";
constexpr const char* k_nestedLight = "'Solar' and 'illuminate' statements cannot be nested";

}  // namespace

const SlcCheckSemantics::LightStatement SlcCheckSemantics::sm_illuminance = {
    "illuminance",
    LightStatement::Side::Lit,
    "'Illuminance' statement cannot be used here",
    k_nestedIlluminance,
    "Illuminance catch: ",
    " not found.",
    "Symbol entry not a variable (illuminance)"};

const SlcCheckSemantics::LightStatement SlcCheckSemantics::sm_illuminate = {
    "illuminate",
    LightStatement::Side::Lighting,
    "'Illuminate' statement cannot be used in this shader",
    k_nestedLight,
    "Illuminate illegal here (?). Must be checked before...",
    nullptr,
    "Symbol entry not a variable (illuminate)"};

const SlcCheckSemantics::LightStatement SlcCheckSemantics::sm_solar = {
    "solar",
    LightStatement::Side::Lighting,
    "'Solar' statement cannot be used in this shader",
    k_nestedLight,
    "Solar illegal here (?). Must be checked before...",
    nullptr,
    "Symbol entry not a variable (solar)"};

bool SlcCheckSemantics::IsLegalHere(const LightStatement& statement) const
{
    // The type of shader is checked where the function is called.
    if (m_inFunction)
        return true;
    if (statement.side == LightStatement::Side::Lighting)
        return m_shaderType->IsLight();
    return m_shaderType->SeesLights();
}

void SlcCheckSemantics::CheckLightArgument(SlcExprNode* argument, const LightStatement& statement,
                                           LightArgument role)
{
    if (!argument)
        return;
    const bool takesPoint = role != LightArgument::Angle;
    FindTypes(argument);
    const auto types = SlcPossibleTypes::Of(argument);
    // Of a triple, which could also be a color, select the point.
    SlcTypeNode* suited = types->IsInTypes(SlcTypeNode::APoint(), false);
    if (suited && !takesPoint && types->IsInTypes(SlcTypeNode::AFloat(), false))
        suited = nullptr;
    types->SetUniqueType(suited ? suited : WantedTypeOf(argument));
    FinishChecks(argument);
    if (types->GetTypes().empty())
        return;  // reported
    const SlcTypeNode* type = types->GetUniqueType();
    if (type->IsFloatType() || (takesPoint && type->IsPointType()) || type->IsErrorType())
        return;
    static constexpr const char* k_roles[] = {"position", "axis", "angle"};
    m_errors->Error(argument, std::string("Type mismatch for '") + k_roles[static_cast<int>(role)] +
                                  "' expression in '" + statement.name + "' statement");
}

template <class Node>
void SlcCheckSemantics::CheckLightStatement(Node* node, const LightStatement& statement,
                                            SlcExprNode* position)
{
    if (!IsLegalHere(statement))
        m_errors->Error(node, statement.illegal);
    if (m_lightNesting > 0)
        m_errors->Error(node, statement.nested);
    CheckLightArgument(position, statement, LightArgument::Position);
    CheckLightArgument(node->GetAxis(), statement, LightArgument::Axis);
    CheckLightArgument(node->GetAngle(), statement, LightArgument::Angle);

    const SlcPtr<SlcSymbolTable> outer = m_scopes.current;
    if (statement.side == LightStatement::Side::Lit) {
        const bool first = m_shaderType->SeesLights();
        m_scopes.current = MakeShared<SlcIlluminanceSymbolTable>(outer, first);
        m_hasIlluminance = true;
    } else {
        m_hasIlluminate = true;
        CountLight(node);
    }
    node->SetAnnotation(MakeShared<SlcStatementInfo>(m_scopes.current));
    ++m_lightNesting;
    WalkLoopBody(node, nullptr);
    --m_lightNesting;
    m_scopes.current = outer;
}

/// A failed look-up that reaches this function is an internal error: the passes report the failed
/// look-ups that a source can cause.
template <class Node>
void SlcCheckSemantics::GuardLightStatement(Node* node, const LightStatement& statement,
                                            SlcExprNode* position)
{
    try {
        CheckLightStatement(node, statement, position);
    } catch (const SlcSymbolNotFound& notFound) {
        m_errors->FatalError(node, statement.afterName
                                       ? statement.notFound + notFound.ident->GetName() +
                                             statement.afterName
                                       : std::string(statement.notFound));
    } catch (const std::bad_cast&) {
        m_errors->FatalError(node, statement.noVariable);
    }
}

void SlcCheckSemantics::CountLight(const SlcSyntaxNode* node)
{
    if (m_lights++ > 0)
        m_errors->Warning(node,
                          "Only this light remains, not that of the 'illuminate' or 'solar' "
                          "statement before it",
                          2);
}

void SlcCheckSemantics::Case(SlcIlluminanceStmtNode* node)
{
    GuardLightStatement(node, sm_illuminance, node->GetSurfacePosition());
}

void SlcCheckSemantics::Case(SlcIlluminateStmtNode* node)
{
    GuardLightStatement(node, sm_illuminate, node->GetLightPosition());
}

void SlcCheckSemantics::Case(SlcSolarStmtNode* node)
{
    GuardLightStatement(node, sm_solar, nullptr);
}
