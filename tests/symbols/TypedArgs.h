#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcSymbolTable.h"

using T = SlcTypeNode;

/// The arguments of a call, each with its set of possible types, as after `SlcCalculateTypesSets`.
class TypedArgs {
public:
    using Types = std::vector<SlcTypeNode*>;

    TypedArgs() = default;
    /// Adds one variable for each set.
    explicit TypedArgs(const std::vector<Types>& sets)
    {
        for (const Types& types : sets)
            Add(types);
    }

    /// Adds a variable.
    TypedArgs& Add(const Types& types)
    {
        return Append(
            std::make_unique<SlcIdentExprNode>(SlcPosition(), SlcLexicalNode::CreateIdent("x")),
            types);
    }
    /// Adds a string literal, whose only type is string; `text` has no quotes.
    TypedArgs& AddText(const std::string& text)
    {
        return Append(std::make_unique<SlcConstExprNode>(
                          SlcPosition(), SlcLexicalNode::CreateString("\"" + text + "\"")),
                      {T::AString()});
    }
    /// Makes the first of each argument's types its unique type.
    TypedArgs& Choose()
    {
        for (const auto& argument : m_arguments.GetArgs()) {
            const auto types = SlcPossibleTypes::Of(argument.get());
            types->SetUniqueType(types->GetTypes().front());
        }
        return *this;
    }

    [[nodiscard]] SlcProcArgsNode* Node() { return &m_arguments; }
    [[nodiscard]] SlcCallArgs List() const { return SlcArgsOf(&m_arguments); }

private:
    TypedArgs& Append(std::unique_ptr<SlcExprNode> argument, const Types& types)
    {
        argument->SetAnnotation(MakeShared<SlcPossibleTypes>(types));
        m_arguments.AddArg(std::move(argument));
        return *this;
    }

    SlcProcArgsNode m_arguments;
};

inline SlcIdentNode* Ident(const std::string& name)
{
    return SlcLexicalNode::CreateIdent(name);
}

/// Returns the signature of a function whose formals are all inputs of unknown detail.
inline SlcFuncSignature SignatureOf(const std::string& name, SlcTypeNode* returnType,
                                    const std::vector<SlcTypeNode*>& formals)
{
    SlcFuncSignature signature;
    signature.ident = Ident(name);
    signature.returnType = returnType;
    for (SlcTypeNode* formal : formals) {
        signature.argTypes.push_back(formal);
        signature.argDetails.push_back(SlcDetailNode::AUnknown());
        signature.argStorages.push_back(SlcStorageSpecNode::AInput());
    }
    return signature;
}

/// Returns what `action` writes to standard error, where all reports go.
template <class Action>
std::string ReportsOf(Action action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// Returns the names of the types, joined by blanks.
template <class Types>
[[nodiscard]] std::string TextOf(const Types& types)
{
    std::string text;
    for (const SlcTypeNode* type : types)
        text += (text.empty() ? "" : " ") + type->ToString();
    return text;
}
