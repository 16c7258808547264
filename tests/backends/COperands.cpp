#include "COperands.h"

namespace CForm {

SlcOperand Local(const char* name, SlcTypeNode* type, SlcDetailNode* detail)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type, detail,
                                  SlcStorageSpecNode::ALocal());
}

SlcOperand Uniform(const char* name, SlcTypeNode* type)
{
    return Local(name, type, SlcDetailNode::AUniform());
}

SlcOperand Varying(const char* name, SlcTypeNode* type)
{
    return Local(name, type, SlcDetailNode::AVarying());
}

SlcOperand Predefined(const char* accessor, SlcTypeNode* type, SlcDetailNode* detail)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(accessor), type, detail,
                                  SlcStorageSpecNode::AReadWrite());
}

SlcOperand Parameter(const char* name, SlcTypeNode* type, SlcDetailNode* detail)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type, detail,
                                  SlcStorageSpecNode::AInput());
}

SlcTypeNode* ArrayOf(SlcTypeNode* element, int length)
{
    return SlcTypeNode::CreateArrayType(element, length);
}

SlcTypeNode* RefTo(SlcTypeNode* element)
{
    return SlcTypeNode::CreateArrayRefType(element);
}

SlcLabel Label(const char* name)
{
    return MakeShared<SlcLabelICode>(name);
}

SlcStringLiteralNode* Literal(const std::string& text)
{
    return SlcLexicalNode::CreateString('"' + text + '"');
}

SlcOperand Text(const std::string& text)
{
    return SlcLexType::String('"' + text + '"');
}

}  // namespace CForm
