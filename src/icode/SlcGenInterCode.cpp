// The frame of the generator: lists, temporaries, labels and the value stack.

#include "icode/SlcGenInterCode.h"

#include <algorithm>

#include "icode/SlcOperandWalker.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcShaderSymbolTable.h"

int SlcGenInterCode::sm_noTemp = 0;
int SlcGenInterCode::sm_noGotoLabel = 0;

namespace {

/// Temporaries end in an underscore, declared locals in a number. Nothing assigns a temporary
/// while its value is waiting.
bool IsTemporary(const SlcLexType& operand)
{
    return operand.GetStorage()->IsLocal() && operand.IsIdent() && operand.GetName().back() == '_';
}

/// A value that code can change under its reader: a variable, or a reference into an array. Whole
/// arrays are passed by reference only.
bool CanChange(const SlcLexType& operand)
{
    if (operand.IsConst())
        return false;
    const SlcTypeNode* type = operand.GetType();
    return type->IsArrayRefType() || (!type->IsArrayType() && !IsTemporary(operand));
}

/// Notes the operands that an instruction writes, as of the place behind it.
class NoteWrites : public SlcOperandWalker {
public:
    NoteWrites(std::unordered_map<const SlcLexType*, std::size_t>& writes,
               const std::unordered_map<const SlcLexType*, SlcOperand>& arrayOfRef,
               std::size_t place)
        : m_writes(writes),
          m_arrayOfRef(arrayOfRef),
          m_place(place)
    {
    }

private:
    using SlcOperandWalker::Case;
    // To refer to an element is not to write it.
    void Case(SlcPtr<SlcArrayRefICode>) override {}
    void Read(SlcOperand&) override {}
    void Write(SlcOperand& operand) override
    {
        if (IsTemporary(*operand) && !operand->GetType()->IsArrayRefType())
            return;
        m_writes[&*operand] = m_place;
        const auto array = m_arrayOfRef.find(&*operand);
        if (array != m_arrayOfRef.end())
            m_writes[&*array->second] = m_place;
    }

    std::unordered_map<const SlcLexType*, std::size_t>& m_writes;
    const std::unordered_map<const SlcLexType*, SlcOperand>& m_arrayOfRef;
    std::size_t m_place;
};

}  // namespace

SlcGenInterCode::SlcGenInterCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options)
    : m_errors(std::move(errors)),
      m_options(options)
{
}

SlcGenInterCode::~SlcGenInterCode() = default;

void SlcGenInterCode::StartList()
{
    m_noTempRelease = false;
    m_flagCopyNeeded = false;
    m_parallelCondDepth = 0;
    m_boolExprDepth = 0;
    m_list = MakeShared<SlcListICode>();
    m_values.clear();
    m_localNames.clear();
    ForgetWrites();
    m_temps = SlcTempPools();
    m_freeVaryingFlags.clear();
    m_freeUniformFlags.clear();
}

SlcPtr<SlcListICode> SlcGenInterCode::GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType,
                                              bool CiAssigned, bool OiAssigned)
{
    StartList();
    m_withoutGrid = false;
    m_shaderType = shaderType;
    m_CiAssigned = CiAssigned;
    m_OiAssigned = OiAssigned;
    AddICode(MakeShared<SlcBeginShaderICode>());
    tree->ApplyWalker(this);
    AddICode(MakeShared<SlcEndShaderICode>());
    InsertLightEvaluations();
    return m_list;
}

SlcPtr<SlcListICode> SlcGenInterCode::GenInitFormalCode(SlcDefExprNode* definition,
                                                        std::deque<SlcOperand>& values,
                                                        SlcTypeNode* type)
{
    StartList();
    m_withoutGrid = !definition->GetSymbolEntry()->DependsOnContext();
    definition->GetInitializer()->ApplyWalker(this);
    if (m_values.empty())
        m_errors->FatalError(definition, "No lexical node is found for an init expr.");

    const SlcTypeNode* valueType = m_values.back().operand->GetType();
    if (!type->IsArrayType() || valueType->IsSameType(type)) {
        values.push_back(Converted(Pop(), type));
    } else if (valueType->IsArrayType()) {
        const SlcOperand source = PopReference();
        values.push_back(GenTempVar(type, source->GetDetail()));
        GenArrayCopy(values.back(), source);
    } else {
        std::deque<SlcOperand> elements;
        while (!m_values.empty())
            elements.push_front(Pop());
        values.push_back(GenArrayValue(elements, type));
    }
    ReleaseTempVars();
    InsertLateCopies();
    return m_list;
}

SlcOperand SlcGenInterCode::GenArrayValue(const std::deque<SlcOperand>& elements, SlcTypeNode* type)
{
    SlcDetailNode* detail = UniformIfAll(elements);
    const SlcOperand array = GenTempVar(type, detail);
    const SlcOperand ref = MakeElementRef(array, detail);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const SlcOperand index = SlcLexType::Float(static_cast<double>(i));
        AddICode(MakeShared<SlcArrayRefICode>(ref, array, index));
        GenPlainAssignment(ref, elements[i]);
    }
    return array;
}

void SlcGenInterCode::DefaultOutputValues()
{
    using Hiddens = SlcShaderSymbolTable;
    const SlcOperand zero = SlcLexType::Float(0);
    const SlcOperand one = SlcLexType::Float(1);
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const auto color = [](const SlcPtr<SlcVarSymbolEntry>& entry, const SlcOperand& value) {
        return MakeShared<SlcColorICode>(entry->GetIntCodeVar(), value, value, value);
    };
    if (m_shaderType->IsSurface()) {
        AddInBlock(varying, color(Hiddens::sm_Ci, zero));
        AddInBlock(varying, color(Hiddens::sm_Oi, one));
    } else if (m_shaderType->IsLight()) {
        AddBeginBlock(varying);
        AddICode(color(Hiddens::sm_Cl, zero));
        AddICode(MakeShared<SlcVectorICode>(Hiddens::sm_L->GetIntCodeVar(), zero, zero, zero));
        AddEndBlock(varying);
        AddInBlock(varying, color(Hiddens::sm_Ol, one));
    }
}

void SlcGenInterCode::AddICode(SlcPtr<SlcICode> code)
{
    m_list->AddICode(code);
    if (m_values.empty() && m_elementCopies.empty())
        return;  // no value is waiting that a write could change
    NoteWrites(m_lastWrites, m_arrayOfRef, m_list->m_icodes.size()).Visit(code);
}

SlcOperand SlcGenInterCode::MakeTempVar(SlcTypeNode* type, SlcDetailNode* detail)
{
    const std::string name = 'T' + std::to_string(sm_noTemp++) + '_';
    auto temporary = MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type,
                                            DetailHere(detail), SlcStorageSpecNode::ALocal());
    m_list->AddLocalVar(temporary);
    return temporary;
}

SlcOperand SlcGenInterCode::GenTempVar(SlcTypeNode* type, SlcDetailNode* detail)
{
    if (type->IsArrayRefType() || !m_options.m_reuseTempVars)
        return MakeTempVar(type, detail);
    SlcOperand temporary = m_temps.Take(type, DetailHere(detail));
    if (temporary.Null()) {
        temporary = MakeTempVar(type, detail);
        m_temps.AddUsed(temporary);
    }
    return temporary;
}

void SlcGenInterCode::ReleaseTempVars()
{
    if (m_options.m_reuseTempVars && !m_noTempRelease)
        m_temps.ReleaseUsed();
}

SlcOperand SlcGenInterCode::GetResultVar(SlcExprNode* expr, SlcTypeNode* type,
                                         SlcDetailNode* detail)
{
    const auto types = SlcPossibleTypes::Of(expr);
    if (types && types->GetOperandHint()) {
        const SlcOperand& hint = types->GetOperandHint();
        // A uniform target of a varying operation would be written once for each point, and
        // read again between.
        if (hint->GetType()->IsSameType(type) &&
            hint->IsUniform() == DetailHere(detail)->IsUniform())
            return hint;
    }
    return GenTempVar(type, detail);
}

SlcLabel SlcGenInterCode::GenLabel()
{
    return MakeShared<SlcLabelICode>('L' + std::to_string(sm_noGotoLabel++));
}

void SlcGenInterCode::GenLineNumberInfo(SlcSyntaxNode*) {}

SlcTypeNode* SlcGenInterCode::TypeOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetUniqueType();
}

SlcDetailNode* SlcGenInterCode::DetailOf(const SlcExprNode* expr) const
{
    return DetailHere(SlcPossibleTypes::Of(expr)->GetDetail());
}

SlcDetailNode* SlcGenInterCode::DetailHere(SlcDetailNode* detail) const
{
    return m_withoutGrid ? SlcDetailNode::AUniform() : detail;
}

void SlcGenInterCode::Push(SlcOperand value)
{
    m_values.push_back({std::move(value), m_list->m_icodes.size()});
}

SlcOperand SlcGenInterCode::Pop()
{
    const std::size_t mark = m_values.back().mark;
    SlcOperand operand = PopReference();
    return WrittenSince(operand, mark) ? CopyAt(operand, mark) : operand;
}

SlcOperand SlcGenInterCode::PopReference()
{
    SlcOperand operand = std::move(m_values.back().operand);
    m_values.pop_back();
    return operand;
}

SlcOperand SlcGenInterCode::Evaluate(SlcSyntaxNode* expr)
{
    expr->ApplyWalker(this);
    return Pop();
}

bool SlcGenInterCode::WrittenSince(const SlcOperand& operand, std::size_t mark) const
{
    if (m_lastWrites.empty() || !CanChange(*operand))
        return false;
    const auto array = m_arrayOfRef.find(&*operand);
    const SlcOperand& variable = array == m_arrayOfRef.end() ? operand : array->second;
    const auto write = m_lastWrites.find(&*variable);
    return write != m_lastWrites.end() && write->second > mark;
}

/// The copy has its place in front of code that is there by now; it goes in with the others.
SlcOperand SlcGenInterCode::CopyAt(const SlcOperand& operand, std::size_t mark)
{
    SlcTypeNode* type = operand->GetType();
    if (type->IsArrayRefType())
        type = static_cast<SlcArrayRefTypeNode*>(type)->GetElementType();
    // No pooled one: a function expanded behind the mark may have used that already.
    SlcOperand copy = MakeTempVar(type, operand->GetDetail());

    auto& codes = m_list->m_icodes;
    const auto end = static_cast<std::ptrdiff_t>(codes.size());
    AddInBlock(operand->GetDetail(), MakeShared<SlcAssignICode>(copy, operand));
    m_lateCopies.push_back({mark, {codes.begin() + end, codes.end()}});
    codes.erase(codes.begin() + end, codes.end());
    return copy;
}

/// All at once: each in its turn would move what stands behind it again.
void SlcGenInterCode::InsertLateCopies()
{
    if (m_lateCopies.empty())
        return;
    std::stable_sort(m_lateCopies.begin(), m_lateCopies.end(),
                     [](const LateCopy& a, const LateCopy& b) { return a.mark < b.mark; });
    auto& codes = m_list->m_icodes;
    std::size_t place = m_lateCopies.front().mark;
    const auto first = codes.begin() + static_cast<std::ptrdiff_t>(place);
    const std::vector<SlcPtr<SlcICode>> rest(first, codes.end());
    codes.erase(first, codes.end());
    auto next = rest.begin();
    for (const LateCopy& copy : m_lateCopies) {
        for (; place < copy.mark; ++place)
            codes.push_back(*next++);
        codes.insert(codes.end(), copy.codes.begin(), copy.codes.end());
    }
    codes.insert(codes.end(), next, rest.end());
    m_lateCopies.clear();
}

void SlcGenInterCode::ForgetWrites()
{
    InsertLateCopies();
    m_elementCopies.clear();
    // To clear a map costs its buckets, of which one long statement leaves many.
    if (!m_lastWrites.empty())
        m_lastWrites = {};
    if (!m_arrayOfRef.empty())
        m_arrayOfRef = {};
}

SlcOperand SlcGenInterCode::Converted(const SlcOperand& value, SlcTypeNode* type)
{
    if (value->GetType()->IsSameType(type))
        return value;
    const SlcOperand temporary = GenTempVar(type, value->GetDetail());
    AddInBlock(value->GetDetail(), MakeShared<SlcAssignICode>(temporary, value));
    return temporary;
}

void SlcGenInterCode::MatchColors(SlcOperand& left, SlcOperand& right)
{
    if (left->GetType()->IsColorType() && right->GetType()->IsPointType())
        right = Converted(right, SlcTypeNode::AColor());
    else if (left->GetType()->IsPointType() && right->GetType()->IsColorType())
        left = Converted(left, SlcTypeNode::AColor());
}

SlcOperand SlcGenInterCode::OperandOf(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    if (entry->GetIntCodeVar().Null())
        m_errors->FatalError("No C name for variable " + entry->GetName());
    return entry->GetIntCodeVar();
}
