// Prints a block for debugging: its number, the numbers of its predecessors and successors, and its
// instructions.

#include "optimizer/SlcBasicBlock.h"

#include "icode/SlcICodeName.h"

namespace {

void PrintIds(SlcText& out, std::span<const int> ids)
{
    for (const int id : ids)
        out << id << ' ';
    out << '\n';
}

}  // namespace

void SlcBasicBlock::Print(SlcText& out) const
{
    out << "Begin Block " << m_id << " \n\tPred: ";
    PrintIds(out, m_predecessors);
    out << "\tSucc: ";
    PrintIds(out, GetNextBlocks());
    out << '\n';
    for (const auto& code : m_icodes)
        out << '\t' << SlcICodeName(*code) << '\n';
    out << "End Block " << m_id << " \n\n";
}
