// Makes the temporaries and labels of a list, and the names of its locals.
//
// With `m_reuseTempVars`, a temporary from `GenTempVar` is in use until the end of its statement.
// Then it may be reused for another value, if its type has a pool in `SlcTempPools`. A temporary
// with a longer life, such as the result of a body with an early `return`, comes from `MakeTempVar`
// and is never reused.
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp.

#include "lowering/SlcListBuilder.h"

#include <charconv>
#include <iterator>
#include <utility>

#include "support/SlcCompilation.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// The names of temporaries and labels are unique in the whole compilation.
struct NameCounters {
    int temporaries = 0;
    int gotoLabels = 0;
};

[[nodiscard]] SlcIdentNode* NumberedTemporary(int number)
{
    char name[16] = {'T'};
    char* end = std::to_chars(name + 1, std::end(name) - 1, number).ptr;
    *end++ = '_';
    return SlcLexicalNode::CreateIdent({std::begin(name), end});
}

}  // namespace

SlcListBuilder::KeepTempVars::KeepTempVars(SlcListBuilder& list)
    : m_list(list),
      m_outer(std::exchange(list.m_keepsTempVars, true))
{
}

void SlcListBuilder::Start(Runs runs)
{
    m_list = MakeShared<SlcListICode>();
    m_runs = runs;
    m_temps = SlcTempPools();
    m_keepsTempVars = false;
    m_localNames.clear();
}

SlcDetailNode* SlcListBuilder::DetailHere(SlcDetailNode* detail) const
{
    return IsWithoutGrid() ? SlcDetailNode::AUniform() : detail;
}

SlcOperand SlcListBuilder::MakeTempVar(SlcTypeNode* type, SlcDetailNode* detail)
{
    auto temporary = MakeShared<SlcLexType>(
        NumberedTemporary(SlcPartOfCompilation<NameCounters>().temporaries++), type,
        DetailHere(detail), SlcStorageSpecNode::ALocal());
    m_list->AddLocalVar(temporary);
    return temporary;
}

SlcOperand SlcListBuilder::GenTempVar(SlcTypeNode* type, SlcDetailNode* detail)
{
    // A reused reference would create data dependences between the blocks of its accesses.
    if (type->IsArrayRefType() || !m_options.m_reuseTempVars)
        return MakeTempVar(type, detail);
    SlcOperand temporary = m_temps.Acquire(type, DetailHere(detail));
    if (temporary.Null()) {
        temporary = MakeTempVar(type, detail);
        m_temps.AddUsed(temporary);
    }
    return temporary;
}

void SlcListBuilder::ReleaseTempVars()
{
    if (m_options.m_reuseTempVars && !m_keepsTempVars)
        m_temps.ReleaseUsed();
}

SlcOperand SlcListBuilder::GetResultVar(const SlcExprNode* expr, SlcTypeNode* type,
                                        SlcDetailNode* detail)
{
    const auto types = SlcPossibleTypes::Of(expr);
    if (types && types->GetOperandHint()) {
        const SlcOperand& hint = types->GetOperandHint();
        // In `u = u + s`, with a uniform u and a varying s, an operation with the target u would
        // run once per point, and read the u that it has already changed for an earlier point.
        if (hint->GetType()->IsSameType(type) &&
            hint->IsUniform() == DetailHere(detail)->IsUniform())
            return hint;
    }
    return GenTempVar(type, detail);
}

SlcLabel SlcListBuilder::GenLabel()
{
    return MakeShared<SlcLabelICode>(SlcPartOfCompilation<NameCounters>().gotoLabels++);
}

/// Returns the source name with the current number of the counter, or with the next one that makes
/// it new: a block that ends at a `return` does not increment the counter, so a later block can
/// have the same number.
std::string SlcListBuilder::LocalName(const std::string& sourceName)
{
    std::string name = sourceName + '_' + std::to_string(m_blockCounter);
    while (!m_localNames.insert(name).second)
        name = sourceName + '_' + std::to_string(++m_blockCounter);
    return name;
}
