// Forwards copies, and fuses products with sums and differences:
//
//     t = f(x);  y = t                    becomes    y = f(x)
//     t = f(x);  u = g(y);  y = t         becomes    u = g(y);  y = f(x)
//     t = a * b;  y = t + c               becomes    y = a * b + c
//     t = a * b;  u = c * d;  y = t - u   becomes    y = a * b - c * d
//
// if `t` and `u` are not live afterwards. Also drops `f = f and g` if nothing reads `f` then. An
// instruction on numbers spends most of its time on loads and stores, not on arithmetic, and a
// temporary costs one of each. Products are rounded as before. The pass walks a block backwards, so
// that fused instructions can be fused again. It is a peephole optimization on adjacent
// instructions (William McKeeman, "Peephole optimization", 1965) that uses liveness.
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxFuse.h"

#include <algorithm>
#include <optional>

#include "machine/translate/QxRemovedDrafts.h"

namespace {

constexpr std::size_t k_none = QxRemovedDrafts::k_none;
// The most instructions between a value and its copy.
constexpr int k_mostBetween = 6;

/// A row of the table of fused instructions: an instruction that uses a product, and the fusion of
/// both.
struct Pair {
    SqxPrimitive user;
    unsigned char place;  // index of the product among the user's arguments
    SqxPrimitive result;  // the fused primitive
    enum class Order : unsigned char { ProductFirst, ProductLast } order;
};

constexpr Pair k_pairs[] = {
    // user, place, result, and where the product's factors are among the arguments of the result
    {SqxPrimitive::ADD_FLOAT_FLOAT, 0, SqxPrimitive::MACHINE_PRODUCT_PLUS,
     Pair::Order::ProductFirst},
    {SqxPrimitive::ADD_FLOAT_FLOAT, 1, SqxPrimitive::MACHINE_PRODUCT_PLUS,
     Pair::Order::ProductFirst},
    {SqxPrimitive::SUB_FLOAT_FLOAT, 0, SqxPrimitive::MACHINE_PRODUCT_MINUS,
     Pair::Order::ProductFirst},
    {SqxPrimitive::SUB_FLOAT_FLOAT, 1, SqxPrimitive::MACHINE_MINUS_PRODUCT,
     Pair::Order::ProductLast},
    {SqxPrimitive::MACHINE_PRODUCT_PLUS, 2, SqxPrimitive::MACHINE_SUM_OF_PRODUCTS,
     Pair::Order::ProductFirst},
    {SqxPrimitive::MACHINE_PRODUCT_MINUS, 2, SqxPrimitive::MACHINE_DIFFERENCE_OF_PRODUCTS,
     Pair::Order::ProductLast},
    {SqxPrimitive::MACHINE_MINUS_PRODUCT, 0, SqxPrimitive::MACHINE_DIFFERENCE_OF_PRODUCTS,
     Pair::Order::ProductFirst},
};

bool IsCopy(const QxDraft& draft)
{
    constexpr SqxPrimitive copies[] = {
        SqxPrimitive::ASSIGN_FLOAT_FLOAT, SqxPrimitive::ASSIGN_COLOR_COLOR,
        SqxPrimitive::ASSIGN_POINT_POINT, SqxPrimitive::ASSIGN_BOOL_BOOL};
    return std::find(std::begin(copies), std::end(copies), draft.row->primitive) !=
           std::end(copies);
}

class Fuser {
public:
    Fuser(QxDraftWriter& writer, QxLiveness& liveness)
        : m_writer(writer),
          m_block(writer.Block()),
          m_liveness(liveness),
          m_removed(m_block)
    {
    }
    void Run();

private:
    [[nodiscard]] bool IsUseless(const QxDraft& draft) const;
    void FuseWithEarlier(std::size_t index, std::size_t begin);
    [[nodiscard]] bool Fuse(std::size_t before, std::size_t index);
    [[nodiscard]] bool ForwardCopy(std::size_t before, std::size_t index);
    void MoveToCopies();
    void MoveToCopy(std::size_t index, std::size_t begin);
    [[nodiscard]] bool MayRunAfter(std::size_t source, std::size_t other) const;
    [[nodiscard]] bool FuseProduct(std::size_t before, std::size_t index);
    [[nodiscard]] bool IsOnlyFor(const QxOperand& temporary, const QxDraft& user) const;
    void Replace(std::size_t index, SqxPrimitive primitive, const std::vector<QxOperand>& operands);
    [[nodiscard]] const QxOperand* OperandsOf(const QxDraft& draft) const
    {
        return m_block.operands.data() + draft.first;
    }

    QxDraftWriter& m_writer;
    QxDraftBlock& m_block;
    QxLiveness& m_liveness;
    QxRemovedDrafts m_removed;
};

void Fuser::Run()
{
    m_liveness.WalkBack([this](std::size_t index, std::size_t begin) {
        // So that no basic block becomes empty, its first draft stays or is fused into a later one.
        if (index > begin && IsUseless(m_block.drafts[index]))
            m_removed.Remove(index);
        if (m_removed.IsKept(index))
            FuseWithEarlier(index, begin);
    });
    m_removed.Apply(m_liveness);
    MoveToCopies();
}

/// Runs after the other fusions, which remove temporaries that would be in the way.
void Fuser::MoveToCopies()
{
    const bool any =
        std::any_of(m_block.drafts.begin(), m_block.drafts.end(), [](const auto& draft) {
            return draft.code.step == QxCodeStep::Kernel && IsCopy(draft);
        });
    if (!any)
        return;
    m_liveness.WalkBack([this](std::size_t index, std::size_t begin) {
        if (m_removed.IsKept(index))
            MoveToCopy(index, begin);
    });
    m_removed.Apply(m_liveness);
}

/// Fuses a draft with those before it as long as that is possible. Each further search begins at
/// the draft that was dropped last, so that a long chain of copies costs linear time.
void Fuser::FuseWithEarlier(std::size_t index, std::size_t begin)
{
    std::size_t before = m_removed.Before(index, begin);
    while (before != k_none && Fuse(before, index))
        before = m_removed.Before(before, begin);
}

/// True for a cheap instruction that combines a flag with another one, or sets a component of a
/// triple, if the result is never read. This is common for flags: brackets clear a flag that is
/// then set before it is read.
bool Fuser::IsUseless(const QxDraft& draft) const
{
    if (draft.code.step != QxCodeStep::Kernel || !draft.row->shaped ||
        m_block.letters[draft.first] != 'm')
        return false;
    const QxOperand& result = OperandsOf(draft)[0];
    return result.step != 0 && !m_liveness.IsLive(result);
}

/// Fuses draft `index` with draft `before`, which is then dropped. Returns false if it cannot.
bool Fuser::Fuse(std::size_t before, std::size_t index)
{
    const QxDraft& user = m_block.drafts[index];
    if (user.code.step != QxCodeStep::Kernel || !user.row->shaped || OperandsOf(user)[0].step == 0)
        return false;
    if (m_block.drafts[before].code.step != QxCodeStep::Kernel ||
        !m_block.drafts[before].row->perPoint || m_block.drafts[before].code.count == 0)
        return false;
    return IsCopy(user) ? ForwardCopy(before, index) : FuseProduct(before, index);
}

/// True if the temporary is a varying local that is dead after the user has read it.
bool Fuser::IsOnlyFor(const QxOperand& temporary, const QxDraft& user) const
{
    return temporary.step != 0 && m_liveness.Follows(temporary) &&
           (!m_liveness.IsLive(temporary) || OperandsOf(user)[0].variable == temporary.variable);
}

bool Fuser::ForwardCopy(std::size_t before, std::size_t index)
{
    const QxDraft& copy = m_block.drafts[index];
    const QxDraft& source = m_block.drafts[before];
    const QxOperand target = OperandsOf(copy)[0];
    const QxOperand* const operands = OperandsOf(source);
    const char* const letters = m_block.letters.data() + source.first;
    if (operands[0].variable != OperandsOf(copy)[1].variable || letters[0] != 'w' ||
        target.variable == operands[0].variable || !IsOnlyFor(operands[0], copy))
        return false;
    // Kernels of functions that are not cheap may write to the result of a point before they have
    // read all operands.
    for (std::size_t k = 1; k < source.code.count; ++k)
        if (letters[k] != 'r' || (operands[k].variable == target.variable && !source.row->shaped))
            return false;
    m_block.drafts[index] = source;
    m_block.operands[source.first] = target;
    m_removed.Remove(before);
    return true;
}

/// Moves the instruction that computes a copied value to the place of the copy, over others in
/// between that do not affect it. The last of these usually read the old value of the copy.
void Fuser::MoveToCopy(std::size_t index, std::size_t begin)
{
    const QxDraft& copy = m_block.drafts[index];
    if (copy.code.step != QxCodeStep::Kernel || !IsCopy(copy) || OperandsOf(copy)[0].step == 0)
        return;
    const std::uint32_t value = OperandsOf(copy)[1].variable;
    const std::size_t last = m_removed.Before(index, begin);
    std::size_t source = last;
    for (int i = 0; source != k_none; ++i, source = m_removed.Before(source, begin)) {
        if (i > k_mostBetween || m_block.drafts[source].code.step != QxCodeStep::Kernel)
            return;
        if (m_block.drafts[source].code.count > 0 &&
            OperandsOf(m_block.drafts[source])[0].variable == value)
            break;
    }
    // Only cheap functions depend on nothing except their operands.
    if (source == k_none || source == last || !m_block.drafts[source].row->shaped)
        return;
    for (std::size_t i = source + 1; i < index; ++i)
        if (m_removed.IsKept(i) && !MayRunAfter(source, i))
            return;
    static_cast<void>(ForwardCopy(source, index));
}

/// True if the instruction `source`, which is before `other`, may run after it.
bool Fuser::MayRunAfter(std::size_t source, std::size_t other) const
{
    const QxDraft& first = m_block.drafts[source];
    const QxDraft& second = m_block.drafts[other];
    const QxOperand* const operands = OperandsOf(first);
    for (std::size_t k = second.first; k < second.first + second.code.count; ++k) {
        const std::uint32_t variable = m_block.operands[k].variable;
        if (variable == operands[0].variable)
            return false;
        if (SqxIsWritten(m_block.letters[k]) &&
            std::any_of(operands + 1, operands + first.code.count,
                        [&](const QxOperand& operand) { return operand.variable == variable; }))
            return false;
    }
    return true;
}

bool Fuser::FuseProduct(std::size_t before, std::size_t index)
{
    const QxDraft& user = m_block.drafts[index];
    const QxDraft& product = m_block.drafts[before];
    const QxOperand* const factors = OperandsOf(product);
    if (product.row->primitive != SqxPrimitive::MULT_FLOAT_FLOAT || !IsOnlyFor(factors[0], user))
        return false;
    const std::uint32_t temporary = factors[0].variable;
    const QxOperand* const operands = OperandsOf(user);
    const auto uses =
        std::count_if(operands + 1, operands + user.code.count,
                      [&](const QxOperand& operand) { return operand.variable == temporary; });
    if (uses != 1)
        return false;
    for (const Pair& pair : k_pairs) {
        if (user.row->primitive != pair.user || operands[1 + pair.place].variable != temporary)
            continue;
        std::vector<QxOperand> fused = {operands[0]};
        for (std::size_t k = 1; k < user.code.count; ++k)
            if (k != 1U + pair.place)
                fused.push_back(operands[k]);
        fused.insert(pair.order == Pair::Order::ProductFirst ? fused.begin() + 1 : fused.end(),
                     {factors[1], factors[2]});
        Replace(index, pair.result, fused);
        m_removed.Remove(before);
        return true;
    }
    return false;
}

/// Replaces a draft by a fused instruction. The first operand is the result.
void Fuser::Replace(std::size_t index, SqxPrimitive primitive,
                    const std::vector<QxOperand>& operands)
{
    QxDraft& draft = m_block.drafts[index];
    draft.row = &m_writer.RowOf(primitive);
    draft.first = m_block.operands.size();
    draft.code.count = static_cast<std::uint32_t>(operands.size());
    m_block.operands.insert(m_block.operands.end(), operands.begin(), operands.end());
    m_block.letters += 'w';
    m_block.letters.append(operands.size() - 1, 'r');
    m_writer.ChooseKernels(draft);
}

}  // namespace

void QxFuse(QxDraftWriter& writer, QxLiveness& liveness)
{
    Fuser(writer, liveness).Run();
}
