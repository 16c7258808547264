// Makes the operand of a predefined variable or of `PI`, whose name in generated code is not that
// in the source. Defined here instead of in the folder of the class, since that folder must not
// depend on operands.

#include <string_view>

#include "icode/SlcLexType.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcSymbolEntry.h"

void SlcVarSymbolEntry::MakeIntCodeVar(const char* cName)
{
    if (std::string_view(cName) == SlcGeneratedNames::k_pi)
        m_operand = SlcLexType::GetPIVariable();
    else
        m_operand =
            MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(cName), m_type, m_detail, m_storage);
}
