// Finds the instructions that C++ runs as one loop over points.
//
//     { f?( x = y * 2; ) }  g = f for the grid  u = any g  { g?( z = x; ) }
// becomes
//     for each point: load f x y z; if (f) x = y * 2; g = f; any |= g; if (g) z = x; store x g z
//
// What nothing reads afterwards is not stored, and what each iteration first computes is not
// loaded.
//
// A piece is one parallel run, or one whole-grid instruction, that qualifies; adjacent pieces are
// joined up to a limit. The host may pass one array for several predefined variables of the same
// type. If a loop accesses several of one type and writes one of them, it accesses those of this
// type in memory, in order.
//
// Tested by tests/backends/PointLoopsTest.cpp, and with whole shaders by tests/host.

#include "backends/SlcPointLoops.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "backends/SlcOperandList.h"
#include "backends/SlcPrimitiveNames.h"
#include "icode/SlcICodes.h"
#include "sqx/SqxCard.h"

namespace {

/// The most instructions of a loop from several pieces: longer loops take a C++ compiler too long.
constexpr std::size_t k_longestJoined = 400;

using Access = SlcOperandList::Access;

/// Functions of one component, which have hand-written macros.
constexpr SqxPrimitive k_components[] = {
    SqxPrimitive::CALL_PRIM_XCOMP,    SqxPrimitive::CALL_PRIM_YCOMP,
    SqxPrimitive::CALL_PRIM_ZCOMP,    SqxPrimitive::CALL_PRIM_SETXCOMP,
    SqxPrimitive::CALL_PRIM_SETYCOMP, SqxPrimitive::CALL_PRIM_SETZCOMP,
};

bool IsCheap(SqxPrimitive primitive)
{
    const SqxCard& card = SqxCardOf(primitive);
    return (card.kernel == SqxKernelKind::Cheap && !card.HasReads()) ||
           std::find(std::begin(k_components), std::end(k_components), primitive) !=
               std::end(k_components);
}

/// Classifies instructions for the search for pieces.
class Classes : private SlcAllICodeWalker {
public:
    enum class Kind { Unsupported, Binding, Plain, Grid, Reduction, Opens, Closes, Guard };

    [[nodiscard]] Kind Of(const SlcPtr<SlcICode>& code)
    {
        code->ApplyWalker(this);
        return m_kind;
    }

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcArrayRefICode>) override { m_kind = Kind::Binding; }
    void Case(SlcPtr<SlcArithExprICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcBinOpBoolExprICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcAssignICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcUnaryMinusICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcPointICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcColorICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcEndIfICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcBreakICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcContinueICode>) override { m_kind = Kind::Plain; }
    void Case(SlcPtr<SlcIfICode>) override { m_kind = Kind::Guard; }
    void Case(SlcPtr<SlcBeginParallelICode>) override { m_kind = Kind::Opens; }
    void Case(SlcPtr<SlcEndParallelICode>) override { m_kind = Kind::Closes; }
    void Case(SlcPtr<SlcAssignSIMDICode>) override { m_kind = Kind::Grid; }
    void Case(SlcPtr<SlcInvertBoolFlagICode>) override { m_kind = Kind::Grid; }
    void Case(SlcPtr<SlcOrBoolFlagICode>) override { m_kind = Kind::Grid; }
    void Case(SlcPtr<SlcSetUniformBoolFlagICode>) override { m_kind = Kind::Reduction; }
    void Case(SlcPtr<SlcCallICode> code) override
    {
        const bool fit = code->m_list == SlcCallICode::ArgumentList::Fixed &&
                         IsCheap(code->m_primitive) && (code->m_result || !code->m_form.simd);
        const Kind kind = code->m_form.simd ? Kind::Grid : Kind::Plain;
        m_kind = fit ? kind : Kind::Unsupported;
    }
    void Default(SlcPtr<SlcICode>) override { m_kind = Kind::Unsupported; }

    Kind m_kind = Kind::Unsupported;
};

/// True for floats, triples and flags.
bool HasSupportedType(const SlcOperand& operand)
{
    const SlcTypeNode* type = operand->GetType();
    return !type->IsArrayType() && !type->IsArrayRefType() && !type->IsStringType() &&
           !type->IsMatrixType() && !SlcTypeWord(type).empty();
}

bool IsParameter(const SlcOperand& operand)
{
    return operand->GetStorage()->IsInput() || operand->GetStorage()->IsOutput();
}

bool IsPredefined(const SlcOperand& operand)
{
    const SlcStorageSpecNode* storage = operand->GetStorage();
    return !storage->IsLocal() && !IsParameter(operand) &&
           (storage->IsReadOnly() || storage->IsReadWrite());
}

/// Keeps only the first of equal operands.
void RemoveRepeated(std::vector<SlcOperand>& operands)
{
    std::set<SlcOperand> seen;  // for look-up only
    std::erase_if(operands,
                  [&](const SlcOperand& operand) { return !seen.insert(operand).second; });
}

class Finder {
public:
    Finder(const SlcListICode& list, const SlcValueSpans& spans)
        : m_codes(list.m_icodes),
          m_spans(spans)
    {
    }
    [[nodiscard]] std::vector<SlcPointLoop> Find();

private:
    struct Accesses {
        [[nodiscard]] bool MayAlias(const SlcOperand& operand) const;

        std::vector<SlcOperand> inOrder;                              // of first access
        std::set<SlcOperand> seen;                                    // the same; for look-up only
        std::set<SlcOperand> written;                                 // for look-up only
        std::map<std::string_view, std::set<SlcOperand>> predefined;  // by type
    };
    [[nodiscard]] std::size_t EndOfPiece(std::size_t begin);
    [[nodiscard]] bool HasSupportedOperands(std::size_t begin, std::size_t end);
    [[nodiscard]] bool ReadsFlag(std::size_t begin, std::size_t end,
                                 const std::vector<SlcOperand>& flags);
    void AddPiece(SlcPointLoop& loop, std::size_t end);
    [[nodiscard]] Accesses AccessesIn(std::size_t begin, std::size_t end);
    void PlaceOperands(SlcPointLoop& loop);

    const std::deque<SlcPtr<SlcICode>>& m_codes;
    const SlcValueSpans& m_spans;
    SlcOperandList m_operands;
    Classes m_classes;
};

std::vector<SlcPointLoop> Finder::Find()
{
    std::vector<SlcPointLoop> loops;
    for (std::size_t i = 0; i < m_codes.size();) {
        std::size_t end = EndOfPiece(i);
        if (end == i) {
            ++i;
            continue;
        }
        SlcPointLoop loop;
        loop.begin = loop.end = i;
        do {
            loop.isJoined = loop.end != loop.begin;
            AddPiece(loop, end);
            i = end;
            end = i < m_codes.size() ? EndOfPiece(i) : i;
        } while (end != i && end - loop.begin <= k_longestJoined && !ReadsFlag(i, end, loop.flags));
        PlaceOperands(loop);
        loops.push_back(std::move(loop));
    }
    return loops;
}

/// Returns the end of the piece at `begin`; `begin` itself if there is none.
std::size_t Finder::EndOfPiece(std::size_t begin)
{
    using Kind = Classes::Kind;
    const Kind kind = m_classes.Of(m_codes[begin]);
    std::size_t end = begin + 1;
    if (kind == Kind::Opens) {
        for (Kind inside = Kind::Opens; inside != Kind::Closes; ++end) {
            inside = end < m_codes.size() ? m_classes.Of(m_codes[end]) : Kind::Unsupported;
            if (inside != Kind::Plain && inside != Kind::Guard && inside != Kind::Closes)
                return begin;
        }
    } else if (kind != Kind::Grid && kind != Kind::Reduction) {
        return begin;
    }
    return HasSupportedOperands(begin, end) ? end : begin;
}

/// True if the instructions access only locals, parameters and predefined variables of supported
/// types, reductions turn a varying flag into a uniform one, and other instructions write uniform
/// variables only if they are temp-uniform.
bool Finder::HasSupportedOperands(std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        const bool reduces = m_classes.Of(m_codes[i]) == Classes::Kind::Reduction;
        for (const auto& [operand, access] : m_operands.Of(m_codes[i])) {
            const bool isLocal = operand->GetStorage()->IsLocal();
            if (!HasSupportedType(operand) ||
                (!isLocal && !IsParameter(operand) && !IsPredefined(operand)))
                return false;
            if (reduces && (access == Access::Read) == operand->IsUniform())
                return false;
            if (!reduces && access == Access::Write && operand->IsUniform() &&
                !operand->GetDetail()->IsTempUniform())
                return false;
        }
    }
    return true;
}

bool Finder::ReadsFlag(std::size_t begin, std::size_t end, const std::vector<SlcOperand>& flags)
{
    for (std::size_t i = begin; i < end && !flags.empty(); ++i)
        for (const auto& [operand, access] : m_operands.Of(m_codes[i]))
            if (std::find(flags.begin(), flags.end(), operand) != flags.end())
                return true;
    return false;
}

void Finder::AddPiece(SlcPointLoop& loop, std::size_t end)
{
    for (; loop.end < end; ++loop.end) {
        const Classes::Kind kind = m_classes.Of(m_codes[loop.end]);
        loop.hasGuard = loop.hasGuard || kind == Classes::Kind::Guard;
        if (kind == Classes::Kind::Reduction)
            loop.flags.push_back(m_operands.Of(m_codes[loop.end]).back().operand);
    }
}

/// Collects the operands that the instructions from `begin` up to `end` access.
Finder::Accesses Finder::AccessesIn(std::size_t begin, std::size_t end)
{
    Accesses accesses;
    for (std::size_t i = begin; i < end; ++i)
        for (const auto& [operand, access] : m_operands.Of(m_codes[i])) {
            if (accesses.seen.insert(operand).second)
                accesses.inOrder.push_back(operand);
            if (access == Access::Write)
                accesses.written.insert(operand);
            if (IsPredefined(operand))
                accesses.predefined[SlcTypeWord(operand->GetType())].insert(operand);
        }
    return accesses;
}

/// True for a predefined variable if the loop accesses several of its type and writes any of them.
bool Finder::Accesses::MayAlias(const SlcOperand& operand) const
{
    if (!IsPredefined(operand))
        return false;
    const std::set<SlcOperand>& alike = predefined.at(SlcTypeWord(operand->GetType()));
    return alike.size() > 1 && std::any_of(alike.begin(), alike.end(), [&](const auto& other) {
               return written.count(other) != 0;
           });
}

/// Decides where each operand of a loop is kept.
void Finder::PlaceOperands(SlcPointLoop& loop)
{
    const Accesses accesses = AccessesIn(loop.begin, loop.end);
    for (const SlcOperand& operand : accesses.inOrder) {
        if (accesses.MayAlias(operand))
            continue;
        const bool isWritten = accesses.written.count(operand) != 0;
        if (!operand->IsUniform()) {
            const bool enters = m_spans.MayCross(operand, loop.begin);
            (enters ? loop.loaded : loop.computed).push_back(operand);
            if (isWritten && m_spans.MayCross(operand, loop.end))
                loop.stored.push_back(operand);
        } else if (!isWritten) {
            loop.constants.push_back(operand);
        } else if (std::find(loop.flags.begin(), loop.flags.end(), operand) == loop.flags.end()) {
            loop.computed.push_back(operand);
        }
    }
}

}  // namespace

std::vector<SlcPointLoop> SlcFindPointLoops(const SlcListICode& list, const SlcValueSpans& spans)
{
    return Finder(list, spans).Find();
}

std::vector<SlcParallelRun> SlcFindParallelRuns(const SlcListICode& list,
                                                const SlcValueSpans& spans)
{
    Classes classes;
    SlcOperandList operands;
    std::vector<SlcParallelRun> runs;
    bool isOpen = false;
    for (std::size_t i = 0; i < list.m_icodes.size(); ++i) {
        const Classes::Kind kind = classes.Of(list.m_icodes[i]);
        if (kind == Classes::Kind::Opens) {
            runs.push_back({.begin = i});
            isOpen = true;
        }
        if (!isOpen)
            continue;
        SlcParallelRun& run = runs.back();
        run.end = i + 1;
        for (const auto& [operand, access] : operands.Of(list.m_icodes[i])) {
            if (operand->GetDetail()->IsTempUniform() || !operand->IsUniform())
                run.temporaries.push_back(operand);
            else if (access == Access::Write && operand->IsUniform())
                run.isApart = false;
        }
        run.isApart = run.isApart && kind != Classes::Kind::Binding;
        isOpen = kind != Classes::Kind::Closes;
    }
    for (SlcParallelRun& run : runs) {
        RemoveRepeated(run.temporaries);
        std::erase_if(run.temporaries, [&](const SlcOperand& operand) {
            return !operand->IsUniform() &&
                   (spans.MayCross(operand, run.begin) || spans.MayCross(operand, run.end));
        });
    }
    return runs;
}
