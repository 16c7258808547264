#include "helpers/ICodeReadBack.h"

#include <map>

#include "icode/SlcICodeParser.h"
#include "icode/SlcICodeText.h"
#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"

namespace {

/// Maps the names in the text of a list to its variables and functions.
class ListScope : public SlcICodeScope, private SlcOperandWalker {
public:
    explicit ListScope(const SlcListICode& list)
    {
        for (const auto& code : list.m_icodes)
            m_text += SlcICodeText::Of(*code, m_names) + ' ';
        for (const auto& code : list.m_icodes)
            Visit(code);
    }
    [[nodiscard]] const std::string& Text() const { return m_text; }

    [[nodiscard]] SlcOperand FindVariable(const std::string& name) override
    {
        const auto found = m_variables.find(name);
        if (found == m_variables.end())
            throw SlcICodeSyntaxError("no variable '" + name + "'");
        return found->second;
    }
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> FindFunction(SqxPrimitive primitive,
                                                          const std::deque<SlcOperand>&) override
    {
        return m_functions[primitive];
    }

private:
    void Read(SlcOperand& operand) override { m_variables.emplace(m_names.Of(operand), operand); }
    void Write(SlcOperand& operand) override { Read(operand); }
    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcCallICode> code) override
    {
        SlcOperandWalker::Case(code);
        m_functions.emplace(code->m_primitive, code->m_funcEntry);
    }

    SlcICodeNames m_names;
    std::string m_text;
    std::map<std::string, SlcOperand> m_variables;
    std::map<SqxPrimitive, SlcPtr<SlcFuncSymbolEntry>> m_functions;
};

}  // namespace

std::string ICodeReadBackFault(const SlcListICode& list)
{
    ListScope scope(list);
    try {
        SlcICodeNames names;
        std::string again;
        for (const auto& code : SlcICodeParser(scope).Parse(scope.Text()))
            again += SlcICodeText::Of(*code, names) + ' ';
        return again == scope.Text() ? "" : scope.Text() + "\nbecomes\n" + again;
    } catch (const SlcICodeSyntaxError& fault) {
        return fault.what() + ("\n" + scope.Text());
    }
}
