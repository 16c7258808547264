// Translates declarations of shadeops to nodes of the compiler. The parser is shared with the
// machine, which checks calls against the same declarations.
//
// Tested by tests/symbols/SlcShadeopReaderTest.cpp.

#include "symbols/SlcShadeopReader.h"

#include <optional>

namespace {

SlcTypeNode* NodeOf(SqxType type)
{
    switch (type) {
    case SqxType::Float:
        return SlcTypeNode::AFloat();
    case SqxType::Color:
        return SlcTypeNode::AColor();
    case SqxType::Point:
        return SlcTypeNode::APoint();
    case SqxType::Vector:
        return SlcTypeNode::AVector();
    case SqxType::Normal:
        return SlcTypeNode::ANormal();
    case SqxType::String:
        return SlcTypeNode::AString();
    case SqxType::Int:
    case SqxType::Matrix:
    case SqxType::Bool:
        break;
    }
    return nullptr;
}

SlcTypeNode* NodeOf(const std::optional<SqxType>& type)
{
    return type ? NodeOf(*type) : nullptr;
}

}  // namespace

SlcTypeNode* SlcShadeopReader::StringToType(std::string_view word)
{
    return NodeOf(SqxShadeopText::TypeOf(word));
}

SlcTypeNode* SlcShadeopReader::ReadReturnType()
{
    return NodeOf(m_text.ReadReturnType());
}

SlcIdentNode* SlcShadeopReader::ReadMethodName()
{
    const std::string_view name = m_text.ReadName();
    return name.empty() ? nullptr : SlcLexicalNode::CreateIdent(name);
}

std::vector<SlcTypeNode*> SlcShadeopReader::ReadArguments(bool& isGood)
{
    std::vector<SlcTypeNode*> types;
    isGood = true;
    bool atEnd = false;
    while (!atEnd) {
        SlcTypeNode* type = ReadArgType(types.empty(), isGood, atEnd);
        if (!type)
            break;
        types.push_back(type);
    }
    isGood = isGood && m_text.ReadEnd();
    return types;
}

SlcTypeNode* SlcShadeopReader::ReadArgType(bool first, bool& isGood, bool& atEnd)
{
    const std::optional<SqxShadeopType> argument = m_text.ReadArgument(first);
    isGood = argument.has_value();
    if (!isGood)
        return nullptr;
    atEnd = m_text.IsAtEnd();
    SlcTypeNode* type = NodeOf(argument->type);
    return argument->array ? SlcTypeNode::CreateArrayType(type, argument->size) : type;
}
