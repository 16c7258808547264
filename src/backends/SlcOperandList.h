#pragma once

#include <vector>

#include "icode/SlcOperandWalker.h"

/// Lists the variables that an instruction accesses, in the order of `SlcOperandWalker`.
class SlcOperandList : private SlcOperandWalker {
public:
    enum class Access { Read, Write };
    struct Row {
        SlcOperand operand;
        Access access;
    };
    /// Returns the accesses of an instruction. Valid until the next call.
    [[nodiscard]] const std::vector<Row>& Of(const SlcPtr<SlcICode>& code)
    {
        m_rows.clear();
        Visit(code);
        return m_rows;
    }

private:
    void Read(SlcOperand& operand) override { Add(operand, Access::Read); }
    void Write(SlcOperand& operand) override { Add(operand, Access::Write); }
    void Add(const SlcOperand& operand, Access access)
    {
        if (operand->IsIdent() && !operand->IsPIVariable())
            m_rows.push_back({operand, access});
    }

    std::vector<Row> m_rows;
};
