#include "helpers/CodeText.h"

SlcPtr<SlcListICode> CodeText::List(std::string_view text)
{
    m_list = MakeShared<SlcListICode>();
    m_variables.clear();
    m_list->m_icodes = SlcICodeParser(*this).Parse(text);
    return m_list;
}

SlcOperand CodeText::FindVariable(const std::string& name)
{
    if (const auto known = m_variables.find(name); known != m_variables.end())
        return known->second;
    const char kind = name[0];
    SlcTypeNode* type = SlcTypeNode::AFloat();
    if (kind == 'f' || kind == 'g')
        type = SlcTypeNode::ABoolean();
    else if (kind == 'a' || kind == 'A')
        type = SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat(), 4);
    else if (kind == 'r')
        type = SlcTypeNode::CreateArrayRefType(SlcTypeNode::AFloat());
    SlcStorageSpecNode* storage = SlcStorageSpecNode::ALocal();
    if (kind == 'p')
        storage = SlcStorageSpecNode::AInput();
    else if (kind == 'C')
        storage = SlcStorageSpecNode::AReadWrite();
    SlcDetailNode* detail = SlcDetailNode::AVarying();
    if (kind == 'g' || kind == 'u' || kind == 'A')
        detail = SlcDetailNode::AUniform();
    else if (kind == 't')
        detail = SlcDetailNode::ATempUniform();
    auto operand = MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type, detail, storage);
    m_variables.emplace(name, operand);
    if (storage->IsLocal())
        m_list->AddLocalVar(operand);
    else if (storage->IsReadWrite())
        m_list->AddHiddenVar(operand);
    return operand;
}

SlcPtr<SlcFuncSymbolEntry> CodeText::FindFunction(SqxPrimitive primitive,
                                                  const std::deque<SlcOperand>& arguments)
{
    const bool isRandom = primitive == SqxPrimitive::CALL_PRIM_RANDOM_FLOAT;
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent(std::string(SqxPrimitiveName(primitive)));
    signature.returnType = SlcTypeNode::AFloat();
    signature.argTypes.assign(arguments.size(), SlcTypeNode::AFloat());
    signature.argDetails.assign(arguments.size(), SlcDetailNode::AUnknown());
    signature.argStorages.assign(arguments.size(), SlcStorageSpecNode::AInput());
    signature.foldable = !isRandom;
    signature.orderSensitive = isRandom;
    return MakeShared<SlcFuncSymbolEntry>(std::move(signature));
}
