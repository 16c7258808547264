#pragma once

#include <string>

#include "icode/SlcAssignICode.h"
#include "lowering/LowerTestHelp.h"
#include "lowering/SlcLoweringContext.h"
#include "support/reports/SlcSemanticError.h"

/// A lowering without a tree, whose list a test builds by hand.
class LoweringParts {
public:
    explicit LoweringParts(const SlcOptionsControl& options = PlainOptions()) : m_options(options)
    {
        context.Start(SlcListBuilder::Runs::OnGrid);
    }

    /// Returns a local variable.
    [[nodiscard]] static SlcOperand Variable(const char* name,
                                             SlcTypeNode* type = SlcTypeNode::AFloat(),
                                             SlcDetailNode* detail = SlcDetailNode::AVarying())
    {
        return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type, detail,
                                      SlcStorageSpecNode::ALocal());
    }
    void Assign(const SlcOperand& variable, double value)
    {
        context.m_conditions.GenPlainAssignment(variable, SlcLexType::Float(value));
    }
    /// Inserts the pending copies into the list and returns its text.
    [[nodiscard]] std::string Text()
    {
        context.m_values.ForgetWrites();
        return ToText(*context.m_list.List());
    }

private:
    SlcOptionsControl m_options;

public:
    SlcLoweringContext context{MakeShared<SlcSemanticError>(), m_options};
};
