#include "symbols/SlcShadeopReader.h"

#include <algorithm>
#include <charconv>

namespace {

struct ShadeopTypeWord {
    std::string_view word;
    SlcTypeNode* (*type)();
};

constexpr ShadeopTypeWord k_shadeopTypeWords[] = {
    {"float", &SlcTypeNode::AFloat},   {"color", &SlcTypeNode::AColor},
    {"point", &SlcTypeNode::APoint},   {"vector", &SlcTypeNode::AVector},
    {"normal", &SlcTypeNode::ANormal}, {"string", &SlcTypeNode::AString},
};

bool StartsName(std::string_view text)
{
    if (text.empty())
        return false;
    const char c = text.front();
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

}  // namespace

void SlcShadeopReader::SkipBlanks()
{
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
}

std::string_view SlcShadeopReader::ReadUpTo(std::string_view ends)
{
    const std::string_view word = m_rest.substr(0, m_rest.find_first_of(ends));
    m_rest.remove_prefix(word.size());
    return word;
}

bool SlcShadeopReader::Skip(char wanted)
{
    if (!m_rest.starts_with(wanted))
        return false;
    m_rest.remove_prefix(1);
    return true;
}

SlcTypeNode* SlcShadeopReader::StringToType(std::string_view word)
{
    for (const ShadeopTypeWord& row : k_shadeopTypeWords)
        if (row.word == word)
            return row.type();
    return nullptr;
}

SlcTypeNode* SlcShadeopReader::ReadReturnType()
{
    SkipBlanks();
    return StringToType(ReadUpTo(" "));
}

SlcIdentNode* SlcShadeopReader::ReadMethodName()
{
    SkipBlanks();
    return StartsName(m_rest) ? SlcLexicalNode::CreateIdent(ReadUpTo(" (")) : nullptr;
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
    isGood = isGood && Skip(')');
    SkipBlanks();
    isGood = isGood && m_rest.empty();
    return types;
}

SlcTypeNode* SlcShadeopReader::ReadArgType(bool first, bool& isGood, bool& atEnd)
{
    isGood = false;
    SkipBlanks();
    if (!Skip(first ? '(' : ','))
        return nullptr;
    SkipBlanks();
    SlcTypeNode* type = StringToType(ReadUpTo(" ,[)"));
    if (!type)
        return nullptr;
    SkipBlanks();
    if (Skip('[')) {
        int size = 0;
        if (!ReadArraySize(size))
            return nullptr;
        type = SlcTypeNode::CreateArrayType(type, size);
        SkipBlanks();
    }
    isGood = true;
    atEnd = m_rest.starts_with(')');
    return type;
}

/// The decimal number up to "]", which is read as well. None and 0 stand for an unknown size.
bool SlcShadeopReader::ReadArraySize(int& size)
{
    SkipBlanks();
    const std::string_view digits = ReadUpTo(" ]");
    SkipBlanks();
    if (!Skip(']'))
        return false;
    if (digits.empty())
        return true;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    return error == std::errc() && end == digits.data() + digits.size() && size >= 0;
}
