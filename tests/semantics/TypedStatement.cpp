#include "semantics/TypedStatement.h"

#include <sstream>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

constexpr const char* k_declarations =
    "float f1 = 1, f2 = 2; color c1 = 1, c2 = 2; point p1 = 1, p2 = 2; vector v1 = 1, v2 = 2; "
    "normal n1 = 1, n2 = 2; matrix m1 = 1, m2 = 2; string s1 = \"a\", s2 = \"b\"; "
    "float fa[3] = {1, 2, 3}; color ca[3] = {1, 2, 3};";

/// Prints an expression with the type of each expression in it. A number is "#". The condition of
/// `?:` and the name of a texture are left out.
class TypeText : public SlcCodeWalker {
public:
    [[nodiscard]] std::string Of(SlcExprNode* expr)
    {
        m_text.clear();
        expr->ApplyWalker(this);
        const std::string text =
            m_text + ":" + SlcPossibleTypes::Of(expr)->GetUniqueType()->ToString();
        return text;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcConstExprNode* constant) override
    {
        m_text = constant->IsFloat() ? "#" : constant->GetStringConst()->GetText();
    }
    void Case(SlcIdentExprNode* variable) override { m_text = variable->GetIdent()->GetName(); }
    void Case(SlcArrayRefExprNode* element) override
    {
        m_text = element->GetIdent()->GetName() + "[" + TypeText().Of(element->GetIndex()) + "]";
    }
    void Case(SlcBinOpExprNode* operation) override
    {
        m_text = "(" + TypeText().Of(operation->GetLeft()) + " " +
                 std::string(operation->ToString()) + " " + TypeText().Of(operation->GetRight()) +
                 ")";
    }
    void Case(SlcUMinusExprNode* minus) override
    {
        m_text = "-" + TypeText().Of(minus->GetOperand());
    }
    void Case(SlcCastExprNode* cast) override
    {
        m_text = "<" + cast->GetType()->ToString() + ">" + TypeText().Of(cast->GetOperand());
    }
    void Case(SlcCondExprNode* choice) override
    {
        m_text =
            "(? " + TypeText().Of(choice->GetThen()) + " " + TypeText().Of(choice->GetElse()) + ")";
    }
    void Case(SlcPointExprNode* triple) override { m_text = List(triple->GetCoordinates()); }
    void Case(SlcMatrixExprNode* matrix) override { m_text = List(matrix->GetValues()); }
    void Case(SlcArrayExprNode* array) override { m_text = List(array->GetExprs()); }
    void Case(SlcAssignExprNode* assignment) override
    {
        m_text = "(" + assignment->GetLValue()->ToString() + " " +
                 std::string(assignment->ToString()) + " " + TypeText().Of(assignment->GetValue()) +
                 ")";
    }
    void Case(SlcProcCallExprNode* call) override
    {
        m_text = call->GetIdent()->GetName() + (call->GetSymbolEntry() ? "" : "?") +
                 List(call->GetArguments()->GetArgs());
    }
    void Case(SlcTextureExprNode* texture) override
    {
        m_text = texture->GetKind()->ToString() + List(texture->GetArguments()->GetArgs());
    }
    void Default(SlcSyntaxNode*) override { m_text = "?"; }

    template <class Exprs>
    static std::string List(const Exprs& exprs)
    {
        std::string text;
        for (const auto& expr : exprs)
            text += (text.empty() ? "" : ", ") + TypeText().Of(expr.get());
        return "(" + text + ")";
    }

    std::string m_text;
};

}  // namespace

TypedStatement::TypedStatement(const std::string& statement, const std::string& kind,
                               const std::string& functions)
    : m_shader(functions + "\n" + kind + " test() {" + k_declarations + "\n" + statement + "}")
{
}

std::string TypedStatement::Reports() const
{
    std::istringstream lines(m_shader.Reports());
    std::string reports;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t text = line.find(' ');
        reports += (reports.empty() ? "" : "; ") + line.substr(text + 1);
    }
    return reports;
}

SlcExprNode* TypedStatement::Value() const
{
    auto* shader = dynamic_cast<SlcShaderDefNode*>(m_shader.Definition("test"));
    SlcStmtNode* statement = shader->GetBody()->GetStatements().back().get();
    if (auto* assignment = dynamic_cast<SlcAssignStmtNode*>(statement))
        return assignment->GetAssignment()->GetValue();
    return dynamic_cast<SlcProcCallStmtNode&>(*statement).GetCall();
}

std::string TypedStatement::ValueTypes() const
{
    std::string text;
    for (const SlcTypeNode* type : SlcPossibleTypes::Of(Value())->GetTypes())
        text += (text.empty() ? "" : " ") + type->ToString();
    return text;
}

std::string TypedStatement::ValueText() const
{
    return TypeText().Of(Value());
}
