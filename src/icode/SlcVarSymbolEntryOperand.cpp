// The operand of a variable that generated code reaches by a name of its own.

#include "icode/SlcLexType.h"
#include "symbols/SlcSymbolEntry.h"

void SlcVarSymbolEntry::MakeIntCodeVar(const char* cName)
{
    m_operand =
        MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(cName), m_type, m_detail, m_storage);
}
