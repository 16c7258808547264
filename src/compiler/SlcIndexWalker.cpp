// One walk, which reaches each definition before its uses. A variable or function gets its index
// where it is defined, and its uses find the index by the symbol entry or, for a function, by the
// definition. Names of the language and of libraries get theirs at the first use.
//
// The detail of a local that is declared without one combines the details of all values assigned to
// it, since a loop may return to an earlier place. A varying value, or a uniform one under a
// condition that may be varying, makes the local varying.
//
// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "compiler/SlcIndexWalker.h"

#include <string>
#include <utility>

#include "symbols/SlcPossibleTypes.h"

namespace {

/// Returns the array length after a name, in brackets; empty for a scalar.
std::string LengthOf(const SlcDefExprNode& definition)
{
    if (!definition.IsArray())
        return {};
    const int size = definition.GetArraySize();
    return size == SlcDefExprNode::k_unspecifiedSize ? "[]" : "[" + std::to_string(size) + "]";
}

/// False if all compared values are known to be uniform.
bool IsVarying(const SlcRelationNode* relation)
{
    if (const auto* comparison = dynamic_cast<const SlcCompOpNode*>(relation))
        return SlcDetailOf(comparison->GetLeft()) != QxDetail::Uniform ||
               SlcDetailOf(comparison->GetRight()) != QxDetail::Uniform;
    if (const auto* logical = dynamic_cast<const SlcLogOpNode*>(relation))
        return IsVarying(logical->GetLeft()) || IsVarying(logical->GetRight());
    const auto* negated = dynamic_cast<const SlcNotRelNode*>(relation);
    return !negated || IsVarying(negated->GetRelation());
}

}  // namespace

class SlcIndexWalker::Block {
public:
    Block(SlcIndexWalker& walker, QxBlockKind kind, const SlcTextRange& range, int owner = -1)
        : m_walker(walker),
          m_before(walker.m_block)
    {
        QxIndexedBlock block;
        block.kind = kind;
        block.range = walker.m_places.RangeOf(range);
        block.parent = m_before;
        block.owner = owner;
        block.isClosed = kind == QxBlockKind::Function && walker.m_isStrict;
        block.begin = static_cast<unsigned>(walker.m_places.TokenAt(range.begin));
        block.end = static_cast<unsigned>(walker.m_places.TokenAt(range.end));
        // A block without its closing brace includes the place after the last token of the source.
        if (walker.m_places.EndsAfterText(range))
            ++block.end;
        walker.m_block = static_cast<int>(walker.m_index.blocks.size());
        walker.m_index.blocks.push_back(std::move(block));
    }
    ~Block() { m_walker.m_block = m_before; }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

private:
    SlcIndexWalker& m_walker;
    int m_before;
};

SlcIndexWalker::SlcIndexWalker(QxSourceIndex& index, SlcIndexNames& names,
                               const SlcIndexPlaces& places, bool isStrict)
    : m_index(index),
      m_names(names),
      m_places(places),
      m_isStrict(isStrict)
{
}

void SlcIndexWalker::operator()(SlcDefinitionsNode* tree)
{
    tree->ApplyWalker(this);
    SetDetails();
}

void SlcIndexWalker::SetDetails()
{
    for (QxIndexedUse& use : m_index.uses) {
        const QxIndexedName& name = m_index.names[static_cast<std::size_t>(use.name)];
        const bool isOpenLocal = name.kind == QxNameKind::Local && !name.declaresDetail;
        if (isOpenLocal && name.inferred != QxDetail::None)
            use.detail = name.inferred;
    }
}

void SlcIndexWalker::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

QxIndexedName SlcIndexWalker::Defined(QxNameKind kind, const std::string& name,
                                      const SlcTextRange& range) const
{
    QxIndexedName defined;
    defined.kind = kind;
    defined.name = name;
    defined.range = m_places.RangeOf(range);
    defined.owner = m_owner;
    const std::size_t token = m_places.Find(range, name);
    if (token != SlcIndexPlaces::k_none)
        defined.place = m_places.PlaceOf(token);
    return defined;
}

int SlcIndexWalker::AddDefinition(QxIndexedName name, const SlcTextRange& range)
{
    const std::string text = name.name;
    const QxDetail detail = name.detail;
    const std::string type = name.type;
    const int number = m_names.Add(std::move(name));
    AddUse(number, QxUseRole::Definition, range, text, nullptr);
    if (!m_index.uses.empty() && m_index.uses.back().name == number) {
        m_index.uses.back().detail = detail;
        m_index.uses.back().type = type;
    }
    return number;
}

void SlcIndexWalker::AddUse(int name, QxUseRole role, std::size_t token, const SlcExprNode* value)
{
    if (name < 0 || token == SlcIndexPlaces::k_none)
        return;
    QxIndexedUse use;
    use.name = name;
    use.role = role;
    use.place = m_places.PlaceOf(token);
    const SlcPreprocessorTrace::Token& traced = m_places.Token(token);
    use.isInMacro = traced.isBody;
    if (traced.isBody)
        use.macro = SlcIndexPlaces::Public(traced.use);
    if (value) {
        use.detail = SlcDetailOf(value);
        use.type = SlcTypeOf(value);
    }
    m_index.uses.push_back(std::move(use));
}

void SlcIndexWalker::AddUse(int name, QxUseRole role, const SlcTextRange& range,
                            const std::string& text, const SlcExprNode* value)
{
    if (!range.IsEmpty())
        AddUse(name, role, m_places.Find(range, text), value);
}

void SlcIndexWalker::MakeVisible(int name, std::uint32_t offset)
{
    m_index.blocks[static_cast<std::size_t>(m_block)].names.push_back(
        {name, static_cast<unsigned>(m_places.TokenAt(offset))});
}

void SlcIndexWalker::RecordValue(int name, QxDetail detail)
{
    if (name < 0)
        return;
    QxIndexedName& variable = m_index.names[static_cast<std::size_t>(name)];
    if (variable.kind != QxNameKind::Local)
        return;
    if (m_varyingConditions > 0 && detail == QxDetail::Uniform)
        detail = QxDetail::Varying;
    if (!variable.declaresDetail)
        variable.inferred = SlcSum(variable.inferred, detail);
}

QxDetail SlcIndexWalker::DetailHere(int name, const SlcExprNode* use) const
{
    if (name < 0)
        return SlcDetailOf(use);
    const QxIndexedName& variable = m_index.names[static_cast<std::size_t>(name)];
    const bool isOpenLocal = variable.kind == QxNameKind::Local && !variable.declaresDetail;
    return isOpenLocal && variable.inferred != QxDetail::None ? variable.inferred
                                                              : SlcDetailOf(use);
}

QxDetail SlcIndexWalker::WalkValue(SlcExprNode* value)
{
    const QxDetail outer = std::exchange(m_seen, QxDetail::None);
    value->ApplyWalker(this);
    QxDetail detail = SlcDetailOf(value);
    // Where a local is read, the checks leave the detail open, but here it may be known.
    if (detail == QxDetail::Open && m_seen != QxDetail::None)
        detail = m_seen;
    m_seen = SlcSum(outer, detail);
    return detail;
}

void SlcIndexWalker::WalkBody(SlcStmtsNode* body, const SlcTextRange& definition)
{
    const Block block(*this, QxBlockKind::Block, m_places.BodyOf(definition));
    body->WalkIn(this);
}

void SlcIndexWalker::FinishDeclaration(int number)
{
    QxIndexedName& name = m_index.names[static_cast<std::size_t>(number)];
    name.declaration = name.type + " " + name.name + "(";
    for (const QxIndexedFormal& formal : name.formals)
        name.declaration.append(&formal == &name.formals.front() ? "" : "; ").append(formal.text);
    name.declaration += ")";
}

void SlcIndexWalker::Case(SlcShaderDefNode* node)
{
    QxIndexedName shader = Defined(QxNameKind::Shader, node->GetIdent()->GetName(), node->Range());
    shader.type = node->GetShaderType()->ToString();
    // A shader may have the same name as its kind.
    const auto part = m_places.FindPart(node->Range(), shader.name, shader.type.size());
    if (part.token != SlcIndexPlaces::k_none)
        shader.place = m_places.PlaceOf(part);
    if (m_index.shaderKind.empty())
        m_index.shaderKind = shader.type;
    const QxSourcePlace place = shader.place;
    const int number = m_names.Add(std::move(shader));
    AddUse(number, QxUseRole::Definition, part.token, nullptr);
    if (part.token != SlcIndexPlaces::k_none)
        m_index.uses.back().place = place;
    MakeVisible(number, node->Range().end);
    const int outer = std::exchange(m_owner, number);
    const Block block(*this, QxBlockKind::Shader, node->Range(), number);
    m_readsFormals = true;
    node->GetFormals()->WalkIn(this);
    m_readsFormals = false;
    WalkBody(node->GetBody(), node->Range());
    FinishDeclaration(number);
    m_owner = outer;
}

void SlcIndexWalker::Case(SlcFuncDefNode* node)
{
    const std::string& text = node->GetIdent()->GetName();
    QxIndexedName function = Defined(QxNameKind::Function, text, node->Range());
    function.type = node->GetReturnType() ? node->GetReturnType()->ToString() : "float";
    const int number = AddDefinition(std::move(function), node->Range());
    m_names.SetFunction(node, number);
    const int outer = std::exchange(m_owner, number);
    const int conditions = std::exchange(m_varyingConditions, 0);
    const bool wasInFunction = std::exchange(m_isInFunction, true);
    {
        const Block block(*this, QxBlockKind::Function, node->Range(), number);
        m_readsFormals = true;
        node->GetFormals()->WalkIn(this);
        m_readsFormals = false;
        WalkBody(node->GetBody(), node->Range());
    }
    m_isInFunction = wasInFunction;
    m_varyingConditions = conditions;
    m_owner = outer;
    FinishDeclaration(number);
    // Visible only after its body, since a function cannot call itself.
    MakeVisible(number, node->Range().end);
}

void SlcIndexWalker::Case(SlcVarDefsNode* node)
{
    for (const auto& definition : node->GetDefExprs()->GetDefExprs())
        DefineVariable(*node, definition.get());
}

QxIndexedName SlcIndexWalker::VariableOf(const SlcVarDefsNode& declaration,
                                         const SlcDefExprNode& definition) const
{
    const SlcTypeSpecNode& spec = *declaration.GetTypeSpec();
    const SlcPtr<SlcVarSymbolEntry>& entry = definition.GetSymbolEntry();
    QxIndexedName variable = Defined(m_readsFormals ? QxNameKind::Parameter : QxNameKind::Local,
                                     definition.GetIdent()->GetName(), definition.Range());
    variable.type = entry && !entry->GetType()->IsErrorType()
                        ? entry->GetType()->ToString()
                        : spec.GetType()->ToString() + LengthOf(definition);
    variable.storage = SlcPublicStorage(spec.GetStorage());
    variable.detail = SlcPublicDetail(entry ? entry->GetDetail() : spec.GetDetail());
    if (variable.detail == QxDetail::Open && !m_isInFunction)
        variable.detail = QxDetail::Varying;
    const std::size_t end = m_places.TokenAt(definition.Range().begin);
    for (std::size_t i = m_places.TokenAt(declaration.Range().begin); i < end; ++i)
        variable.declaresDetail = variable.declaresDetail || m_places.Token(i).text == "uniform" ||
                                  m_places.Token(i).text == "varying";
    if (m_readsFormals || variable.declaresDetail)
        variable.inferred = variable.detail;
    if (const SlcExprNode* const initializer = definition.GetInitializer())
        variable.defaultValue = m_places.TextOf(initializer->Range());
    std::string& text = variable.declaration;
    if (variable.storage == QxStorage::Output || variable.storage == QxStorage::Extern)
        text += variable.storage == QxStorage::Output ? "output " : "extern ";
    if (variable.declaresDetail)
        text += spec.GetDetail()->ToString() + " ";
    text += spec.GetType()->ToString() + " " + variable.name + LengthOf(definition);
    if (!variable.defaultValue.empty())
        text += " = " + variable.defaultValue;
    return variable;
}

void SlcIndexWalker::DefineVariable(const SlcVarDefsNode& declaration, SlcDefExprNode* definition)
{
    SlcExprNode* const initializer = definition->GetInitializer();
    const QxDetail given = initializer ? WalkValue(initializer) : QxDetail::None;
    const SlcPtr<SlcVarSymbolEntry>& entry = definition->GetSymbolEntry();
    const std::string& text = definition->GetIdent()->GetName();
    if (entry && entry->GetOuter()) {
        const int outer = m_names.OfVariable(entry);
        AddUse(outer, QxUseRole::Read, definition->Range(), text, nullptr);
        if (outer >= 0)
            return MakeVisible(outer, definition->Range().end);
    }
    QxIndexedName variable = VariableOf(declaration, *definition);
    if (m_readsFormals && m_owner >= 0) {
        QxIndexedFormal formal = {variable.name, variable.type, variable.detail, variable.storage,
                                  variable.declaration};
        m_index.names[static_cast<std::size_t>(m_owner)].formals.push_back(std::move(formal));
    }
    const int number = AddDefinition(std::move(variable), definition->Range());
    if (entry)
        m_names.SetVariable(&*entry, number);
    MakeVisible(number, definition->Range().end);
    if (initializer)
        RecordValue(number, given);
}

void SlcIndexWalker::Case(SlcStmtsNode* node)
{
    if (node->Range().IsEmpty())
        return node->WalkIn(this);
    const Block block(*this, QxBlockKind::Block, node->Range());
    node->WalkIn(this);
}

void SlcIndexWalker::Case(SlcIlluminanceStmtNode* node)
{
    // Only the body sees the variables of the light, but including the head does no harm here.
    const Block block(*this, QxBlockKind::LightLoop, node->Range());
    node->WalkIn(this);
}

void SlcIndexWalker::WalkConditionally(SlcRelationNode* condition, SlcSyntaxNode* first,
                                       SlcSyntaxNode* second)
{
    condition->ApplyWalker(this);
    const bool isVarying = IsVarying(condition);
    m_varyingConditions += isVarying ? 1 : 0;
    first->ApplyWalker(this);
    if (second)
        second->ApplyWalker(this);
    m_varyingConditions -= isVarying ? 1 : 0;
}

void SlcIndexWalker::Case(SlcIfThenStmtNode* node)
{
    WalkConditionally(node->GetCondition(), node->GetThen(), nullptr);
}

void SlcIndexWalker::Case(SlcIfThenElseStmtNode* node)
{
    WalkConditionally(node->GetCondition(), node->GetThen(), node->GetElse());
}

void SlcIndexWalker::Case(SlcWhileStmtNode* node)
{
    WalkConditionally(node->GetCondition(), node->GetBody(), nullptr);
}

void SlcIndexWalker::Case(SlcForStmtNode* node)
{
    node->GetInit()->ApplyWalker(this);
    WalkConditionally(node->GetCondition(), node->GetStep(), node->GetBody());
}
