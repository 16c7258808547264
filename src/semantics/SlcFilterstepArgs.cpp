// filterstep(edge, x [, end of x's interval], "name", value, ...): cards cannot express the
// arguments after x, since a float may precede the pairs.
//
// Tested by tests/semantics/SlcResolveUniqueTypeTest.cpp.

#include "semantics/SlcFilterstepArgs.h"

#include <string>

#include "semantics/SlcTypedExpr.h"
#include "support/reports/SlcNearError.h"

using namespace SlcTypedExpr;

std::optional<std::vector<SlcTypeNode*>>
SlcFilterstepArgs::CheckFilterstepArgs(const SlcCallArgs& args)
{
    std::size_t firstName = 2;
    std::vector<SlcTypeNode*> types;
    if (args.size() > firstName && HasType(args[firstName], SlcTypeNode::AFloat())) {
        types.push_back(SlcTypeNode::AFloat());
        ++firstName;
    }
    for (std::size_t i = firstName; i < args.size(); i += 2) {
        SlcExprNode* name = args[i];
        if (!HasType(name, SlcTypeNode::AString())) {
            m_errors->Error(name, "Argument " + std::to_string(i + 1) +
                                      " to filterstep(...) must be a string.");
            return std::nullopt;
        }
        if (i + 1 == args.size()) {
            m_errors->Error(name, "No value provided for parameter " + SlcNearError()(name) +
                                      " in filterstep(...).");
            return std::nullopt;
        }
        SlcTypeNode* type = TypeOfValue(name, args[i + 1]);
        if (!type)
            return std::nullopt;
        types.push_back(SlcTypeNode::AString());
        types.push_back(type);
    }
    return types;
}

SlcTypeNode* SlcFilterstepArgs::TypeOfValue(SlcExprNode* name, SlcExprNode* value)
{
    const auto* constant = dynamic_cast<SlcConstExprNode*>(name);
    const std::string text = constant ? constant->GetStringConst()->GetText() : std::string();
    const bool isFilter = text == "\"filter\"";
    if (!isFilter && text != "\"width\"") {
        if (constant)
            m_errors->Warning(name, "Unknown parameter " + text + " to filterstep(...), ignored.",
                              1);
        return FirstType(value);
    }
    SlcTypeNode* type = isFilter ? SlcTypeNode::AString() : SlcTypeNode::AFloat();
    if (HasType(value, type))
        return type;
    m_errors->Error(value, "The value associated to the " + text + " parameter must be a " +
                               type->ToString() + " (in the call of 'filterstep').");
    return nullptr;
}
