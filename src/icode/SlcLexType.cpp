// Making a constant does not search for an equal one: the byte-code writer merges equal constants
// at the end.
//
// `PI` has two representations: a variable of the run time, whose address generated C++ may take,
// and a number, with which folding computes and which byte-code contains.

#include "icode/SlcLexType.h"

#include "support/SlcCompilation.h"
#include "symbols/SlcGeneratedNames.h"

const std::string& SlcLexType::GetName() const
{
    static const std::string none;
    return IsIdent() ? static_cast<const SlcIdentNode*>(m_lexical)->GetName() : none;
}

double SlcLexType::GetFloat() const
{
    return static_cast<const SlcFloatConstNode*>(m_lexical)->GetValue();
}

const std::string& SlcLexType::GetString() const
{
    return static_cast<const SlcStringLiteralNode*>(m_lexical)->GetText();
}

int SlcLexType::GetInt() const
{
    return static_cast<const SlcIntConstNode*>(m_lexical)->GetValue();
}

bool SlcLexType::GetBool() const
{
    return static_cast<const SlcBoolConstNode*>(m_lexical)->GetValue();
}

namespace {

SlcOperand MakeConst(SlcLexicalNode* constant, SlcTypeNode* type)
{
    return MakeShared<SlcLexType>(constant, type, SlcDetailNode::AUniform(),
                                  SlcStorageSpecNode::ALocal());
}

}  // namespace

SlcOperand SlcLexType::Float(double value)
{
    return MakeConst(SlcLexicalNode::CreateFloat(value), SlcTypeNode::AFloat());
}

SlcOperand SlcLexType::String(std::string_view text)
{
    return MakeConst(SlcLexicalNode::CreateString(text), SlcTypeNode::AString());
}

SlcOperand SlcLexType::Int(int value, bool added)
{
    return MakeConst(SlcLexicalNode::CreateInt(value, added), SlcTypeNode::AInteger());
}

SlcOperand SlcLexType::Bool(bool value)
{
    return MakeConst(SlcLexicalNode::CreateBool(value), SlcTypeNode::ABoolean());
}

namespace {

struct PIOperands {
    SlcOperand value = SlcLexType::Float(3.1415926536);
    SlcOperand variable = MakeShared<SlcLexType>(
        SlcLexicalNode::CreateIdent(SlcGeneratedNames::k_pi), SlcTypeNode::AFloat(),
        SlcDetailNode::AUniform(), SlcStorageSpecNode::AInput());
};

}  // namespace

const SlcOperand& SlcLexType::GetPI()
{
    return SlcPartOfCompilation<PIOperands>().value;
}

const SlcOperand& SlcLexType::GetPIVariable()
{
    return SlcPartOfCompilation<PIOperands>().variable;
}
