// Prints blocks for debugging passes: blocks by number, with both directions of their edges.

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
