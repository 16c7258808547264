// The passes of the optimizer on hand-made lists.

#include <gtest/gtest.h>

#include "CodeText.h"
#include "icode/SlcICodes.h"
#include "optimizer/SlcCodeMotion.h"
#include "optimizer/SlcConvertConstOp.h"
#include "optimizer/SlcConvertTmpVarDetail.h"
#include "optimizer/SlcCopyPropagation.h"
#include "optimizer/SlcDeadCodeElimination.h"
#include "optimizer/SlcReduceNumberTmps.h"
#include "optimizer/SlcRegroupParallelBlocks.h"
#include "optimizer/SlcRegroupParallelIfs.h"
#include "optimizer/SlcRemoveEmptyBlocks.h"
#include "sqx/SqxNumbers.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/SlcImplicitReads.h"

namespace {

/// What a pass that reads graph and sets needs of a list.
struct Analysed {
    explicit Analysed(const SlcListICode& list)
        : variables(list),
          defUse(variables),
          graph(list),
          analysis(graph, variables, defUse)
    {
    }
    SlcVariableNumbers variables;
    SlcDefUse defUse;
    SlcControlFlowGraph graph;
    SlcDataflowAnalysis analysis;
};

/// Runs the propagation of constants; true if it changed something.
bool PropagatedConstants(const Analysed& facts)
{
    SlcCopyPropagation pass(facts.graph, facts.variables);
    for (const auto& block : facts.graph.Blocks()) {
        pass.EnterBlock(block);
        for (const auto& code : block.GetListICode())
            pass.Propagate(code);
        pass.LeaveBlock(block);
    }
    return pass.HasChanged();
}

struct PassCase {
    const char* before;
    const char* after;
};

/// Runs `pass` on each case and compares the code that it leaves.
template <std::size_t N, class Pass>
void ExpectRewritten(const PassCase (&cases)[N], Pass pass)
{
    for (const PassCase& c : cases) {
        SlcPtr<SlcListICode> list = CodeText().List(c.before);
        pass(list);
        EXPECT_EQ(CodeText::Print(*list), c.after) << "before: " << c.before;
    }
}

std::string EdgesOf(const char* text)
{
    const auto list = CodeText().List(text);
    std::string edges;
    const SlcControlFlowGraph graph(*list);
    for (const auto& block : graph.Blocks()) {
        edges += edges.empty() ? "" : " ";
        edges += std::to_string(block.GetBlockId()) + ">";
        for (const int next : block.GetNextBlocks())
            edges += std::to_string(next);
    }
    return edges;
}

}  // namespace

TEST(SlcControlFlowGraph, LinksBlocks)
{
    struct GraphCase {
        const char* code;
        const char* edges;
    };
    static const GraphCase cases[] = {
        {"", ""},
        {"x = 1; { ; x = 2; }", "0>"},  // a parallel run is straight-line code
        {"x = 1; goto L; y = 1; L:; x = 2", "0>2 1>2 2>"},
        {"goto L if g; L:; x = 1", "0>1 1>"},  // two edges to one block are one
        {"x = 1; if f L; x = 2; endif L; y = x", "0>12 1>2 2>"},
        {"S:; goto E ifnot g; x = 1; goto S; E:", "0>21 1>0 2>"},
        // A light loop may run for no light.
        {"x = 1; illuminance S E; x = 2; again S; E:; y = x", "0>1 1>23 2>31 3>"},
        {"{; break f L; x = 1; }; L:", "0>1 1>"},  // clears flags, jumps nowhere
        {"x = 1; goto L; L:; goto L", "0>1 1>1"},
    };
    for (const GraphCase& c : cases)
        EXPECT_EQ(EdgesOf(c.code), c.edges) << c.code;
}

TEST(SlcDeadCodeElimination, RemovesWhatNobodyReads)
{
    static const PassCase cases[] = {
        {"begin; x = 1; y = x; end", "begin; end"},  // a chain goes in one run
        // Over blocks too, and around loops, where each keeps the other alive.
        {"begin; x = p; if f L; x = x + 1; endif L; if f M; y = x; endif M; end",
         "begin; if f L; endif L; if f M; endif M; end"},
        {"begin; x = 1; S:; y = x; x = 2; goto S if g; end", "begin; S:; goto S if g; end"},
        {"begin; x = 1; S:; y = x + 1; x = y; goto S if g; end", "begin; S:; goto S if g; end"},
        {"begin; x = 1; S:; y = x + 1; x = y; goto S if g; Ci = y; end",
         "begin; x = 1; S:; y = x + 1; x = y; goto S if g; Ci = y; end"},
        {"begin; Ci = 1; Ci = 2; end", "begin; Ci = 2; end"},
        {"begin; Ci = Ci; end", "begin; end"},
        {"begin; x = p; L:; x = x; M:; Ci = x; end", "begin; x = p; L:; M:; Ci = x; end"},
        {"begin; p = 1; end", "begin; p = 1; end"},  // a parameter is seen from outside
        {"begin; x = call random; end", "begin; x = call random; end"},
        {"begin; r = ref a u; r = 1; end", "begin; r = ref a u; r = 1; end"},
        // Points that skip the guard read the first value.
        {"begin; x = 1; if f L; x = 2; endif L; Ci = x; end",
         "begin; x = 1; if f L; x = 2; endif L; Ci = x; end"},
        // Alive around the loop only.
        {"begin; x = 1; S:; Ci = x; x = 2; goto S if g; end",
         "begin; x = 1; S:; Ci = x; x = 2; goto S if g; end"},
        // A light loop may run for no light, and then the first value is the one.
        {"begin; Ci = 0; illuminance S E; Ci = 1; again S; E:; end",
         "begin; Ci = 0; illuminance S E; Ci = 1; again S; E:; end"},
        {"begin; f = x < y; f = not f; if f L; Ci = 1; endif L; end",
         "begin; f = x < y; f = not f; if f L; Ci = 1; endif L; end"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        const std::string before = CodeText::Print(*list);
        const bool changed =
            SlcDeadCodeElimination().EliminateCode(*list, facts.graph, facts.analysis);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

namespace {

/// A predefined variable as a light loop has it, or else as the shader does.
SlcOperand Predefined(std::string_view name)
{
    const auto* light = SlcHiddenVariables::FindVarInfoIlluminance(name);
    const auto& info = light ? *light : SlcHiddenVariables::GetVarInfoHidden(name);
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(info.accessor), info.type(),
                                  info.detail(), SlcStorageSpecNode::AReadOnly());
}

/// Whether an assignment to `variable` stays in front of a call of `primitive`.
bool KeepsAssignment(std::string_view variable, std::string primitive)
{
    if (const std::size_t star = primitive.find('*'); star != std::string::npos)
        primitive.replace(star, 1, "1D");
    const SlcOperand operand = Predefined(variable);
    SlcListICode list;
    list.AddHiddenVar(operand);
    list.AddICode(MakeShared<SlcAssignICode>(operand, SlcLexType::Float(1)));
    list.AddICode(MakeShared<SlcCallICode>(
        SlcLexicalNode::CreateIdent(primitive), std::deque<SlcOperand>(), nullptr,
        SlcCallICode::ArgumentList::Fixed, SlcGridForm::Plain(), nullptr));
    Analysed facts(list);
    return !SlcDeadCodeElimination().EliminateCode(list, facts.graph, facts.analysis);
}

/// The name may have the suffix of a form, and is null at the end of the table.
bool Means(const SlcImplicitReads& row, const char* name)
{
    const std::string_view primitive = name ? name : "";
    return SlcImplicitReads::Of(primitive.substr(0, primitive.find("_SIMD"))) == &row;
}

}  // namespace

TEST(SlcImplicitReads, KeepWhatIsAssignedInFrontOfTheCall)
{
    for (const SlcImplicitReads& row : SlcImplicitReads::All()) {
        for (const std::string_view variable : row.variables) {
            if (variable.empty())
                continue;
            EXPECT_TRUE(KeepsAssignment(variable, std::string(row.primitive)))
                << variable << " " << row.primitive;
        }
        // A row that is spelt wrong would speak of nothing.
        EXPECT_TRUE(std::any_of(std::begin(k_sqxNumbers), std::end(k_sqxNumbers),
                                [&](const auto& known) { return Means(row, known.name); }))
            << row.primitive;
    }
    EXPECT_FALSE(KeepsAssignment("Ng", "CALL_PRIM_FACEFORWARD2"));
    EXPECT_FALSE(KeepsAssignment("Ol", "CALL_PRIM_DIFFUSE"));
}

TEST(SlcRemoveEmptyBlocks, RemovesPointlessMarks)
{
    static const PassCase cases[] = {
        {"goto L; L:; x = 1", "x = 1"},
        {"x = 1; goto L if g; L:; x = 2", "x = 1; x = 2"},
        {"goto A if g; x = 1; A:; goto B; y = 1; B:; x = 2",
         "goto B if g; x = 1; A:; goto B; y = 1; B:; x = 2"},
        {"goto A if g; x = 1; A:; goto B; B:; x = 2", "goto B if g; x = 1; A:; B:; x = 2"},
        {"{; }; x = 1", "x = 1"},
        {"{; x = 1; }; {; y = 1; }; {; z = 1; }", "{; x = 1; y = 1; z = 1; }"},
        {"{; x = 1; }; {; }; {; y = 1; }", "{; x = 1; y = 1; }"},
        {"{; f = x < y; }; {; if f L; z = 1; endif L; }",
         "{; f = x < y; if f L; z = 1; endif L; }"},
        {"{; if f L; endif L; }; x = 1", "x = 1"},
        {"{; x = call random; }; {; y = call random; }",
         "{; x = call random; }; {; y = call random; }"},
        // Whatever one of them writes of a uniform variable is whole before the other begins.
        {"{; u = x; }; {; }; {; y = 1; }; {; y = u; }", "{; u = x; y = 1; }; {; y = u; }"},
        {"x = 1", "x = 1"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        const std::string before = CodeText::Print(*list);
        const bool changed = SlcRemoveEmptyBlocks().RemoveBlocks(*list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcRemoveEmptyBlocks, RemovesWhatNothingReaches)
{
    static const PassCase cases[] = {
        {"x = 1; goto E; y = 1; A:; x = 2; goto E if g; B:; x = 3; E:; z = x",
         "x = 1; goto E; E:; z = x"},
        {"x = 1; goto E; A:; y = 1; goto A; E:; z = x",  // a cycle is its own predecessor
         "x = 1; goto E; A:; y = 1; goto A; E:; z = x"},
        {"A:; x = 1; goto A", "A:; x = 1; goto A"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        const std::string before = CodeText::Print(*list);
        const bool changed =
            SlcRemoveEmptyBlocks().RemoveUnreachable(SlcControlFlowGraph(*list), *list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcRemoveEmptyBlocks, KeepsTheFirstLabelOfAMergedRun)
{
    CodeText text;
    auto list = text.List("{; x = 1; }; {; y = 1; }");
    const auto firstEnd = list->m_icodes[2];
    ASSERT_TRUE(SlcRemoveEmptyBlocks().RemoveBlocks(*list));
    EXPECT_TRUE(list->m_icodes.back() == firstEnd);
}

TEST(SlcConvertConstOp, FoldsOneInstruction)
{
    static const PassCase cases[] = {
        {"x = 2 + 3", "x = 5"},
        {"x = 0 + y", "x = y"},
        {"x = y + 0", "x = y"},
        {"x = 0 - y", "x = -y"},
        {"x = y - y", "x = y - y"},  // values only, not identity
        {"x = y * 1", "x = y"},
        {"x = y * 0", "x = 0"},
        {"x = y / 4", "x = y * 0.25"},
        {"x = y / 0", "x = y / 0"},  // left to run time
        {"x = 0 / 0", "x = 0 / 0"},
        {"x = 49 / 49", "x = 1"},
        {"f = 0.30000001192092896 == 0.3", "f = true"},
        {"x = 12345 * 1001", "x = 12345 * 1001"},  // more digits than are written
        {"x = 1e+07 * 20", "x = 2e+08"},
        {"x = y / 3e+38", "x = y / 3e+38"},  // its reciprocal has fewer digits
        {"x = call CALL_PRIM_LOG2 8 2", "x = 3"},
        {"x = call CALL_PRIM_ROUND 0.49999997", "x = 1"},  // as the run time has it
        {"x = call CALL_PRIM_MOD 7 3", "x = 1"},
        {"x = 0 / y", "x = 0"},
        {"x = 1e38 * 10", "x = 1e+38 * 10"},  // would not be finite at run time
        {"x = y / 1e-45", "x = y / 1e-45"},
        {"x = -0", "x = 0"},
        {"x = -2", "x = -2"},
        {"f = 1 < 2", "f = true"},
        {"f = x == x", "f = true"},
        {"goto L if true; x = 1; L:", "goto L; x = 1; L:"},
        {"goto L ifnot true; x = 1; L:", "x = 1; L:"},
        {"if true L; x = 1; endif L; y = 1", "x = 1; y = 1"},
        {"if false L; x = 1; endif L; y = 1", "y = 1"},
        {"ifnot true L; x = 1; endif L; y = 1", "y = 1"},
        {"if f L; x = 1; endif L", "if f L; x = 1; endif L"},
        {"x = call CALL_PRIM_SQRT 4", "x = 2"},
        {"x = call CALL_PRIM_ASIN 2", "x = call CALL_PRIM_ASIN 2"},
        {"x = call CALL_PRIM_ACOS 2", "x = 0"},
        {"x = call CALL_PRIM_MOD 5 0", "x = call CALL_PRIM_MOD 5 0"},
        {"x = call CALL_PRIM_CLAMP_1D 5 0 1", "x = 1"},
        {"x = call CALL_PRIM_SQRT y", "x = call CALL_PRIM_SQRT y"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        const std::string before = CodeText::Print(*list);
        const bool changed = SlcConvertConstOp().Convert(*list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcCopyPropagation, CarriesConstantsWhereAllPathsAgree)
{
    static const PassCase cases[] = {
        {"x = 1; y = x", "x = 1; y = 1"},
        {"x = y; z = x", "x = y; z = x"},                        // no copies of variables
        {"x = 1; x = x + 1; y = x", "x = 1; x = 1 + 1; y = x"},  // reads come first
        {"x = 1; if f L; x = 2; endif L; y = x", "x = 1; if f L; x = 2; endif L; y = x"},
        {"x = 1; if f L; y = x; endif L", "x = 1; if f L; y = 1; endif L"},
        // At a join bools survive and floats do not.
        {"g = false; x = 1; if f L; z = 1; endif L; h = g; y = x",
         "g = false; x = 1; if f L; z = 1; endif L; h = false; y = x"},
        {"x = 1; S:; y = x; goto S if g", "x = 1; S:; y = x; goto S if g"},
        {"x = 1; y <- x", "x = 1; y <- x"},  // the whole-grid form needs the varying operand
        {"f = true; f = not f; g = any f", "f = true; f = not f; g = any f"},
        {"f = false; f1 = not f in f2; if f1 L; x = 1; endif L",
         "f = false; f1 = not f in f2; if f1 L; x = 1; endif L"},
        {"f = true; f1 = not f in f2; if f1 L; x = 1; endif L",
         "f = true; f1 = not f in f2; if false L; x = 1; endif L"},
        {"g = any true; g1 = g", "g = any true; g1 = true"},
        {"f = true; break f L; L:; f1 = f", "f = true; break f L; L:; f1 = f"},
        {"u = 2; x = call CALL_PRIM_SQRT u", "u = 2; x = call CALL_PRIM_SQRT 2"},
        {"x = 2; y = call CALL_PRIM_SQRT x", "x = 2; y = call CALL_PRIM_SQRT x"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        const std::string before = CodeText::Print(*list);
        const bool changed = PropagatedConstants(facts);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcReduceNumberTmps, SharesWhatIsNeverAliveTogether)
{
    static const PassCase cases[] = {
        {"begin; x = p; Ci = x; y = p; Ci = y; end", "begin; x = p; Ci = x; x = p; Ci = x; end"},
        {"begin; x = p; y = p; Ci = x + y; end", "begin; x = p; y = p; Ci = x + y; end"},
        // A value nobody reads must not overwrite one that is alive.
        {"begin; x = p; y = 1; Ci = x; end", "begin; x = p; y = 1; Ci = x; end"},
        // Alive around the loop.
        {"begin; x = p; S:; y = p; Ci = y; Ci = x; goto S if g; end",
         "begin; x = p; S:; y = p; Ci = y; Ci = x; goto S if g; end"},
        // Read before they are set, and so alive at the entry together.
        {"begin; Ci = x; Ci = y; end", "begin; Ci = x; Ci = y; end"},
        {"begin; u1 = p; Ci = u1; u2 = p; Ci = u2; end",
         "begin; u1 = p; Ci = u1; u2 = p; Ci = u2; end"},  // uniform ones keep their own
        {"begin; f = p < 1; if f L; Ci = 1; endif L; x = p; Ci = x; end",
         "begin; f = p < 1; if f L; Ci = 1; endif L; x = p; Ci = x; end"},  // by type
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        SlcReduceNumberTmps().Reduce(*list, facts.graph, facts.analysis, nullptr);
    });
}

TEST(SlcReduceNumberTmps, DeclaresOnlyWhatStays)
{
    auto list = CodeText().List("begin; x = p; Ci = x; y = p; Ci = y; r = ref a 1; r = 1; end");
    Analysed facts(*list);
    SlcReduceNumberTmps().Reduce(*list, facts.graph, facts.analysis, nullptr);
    std::string declared;
    for (const auto& variable : list->m_usedLocalVars)
        declared += variable->GetName() + " ";
    EXPECT_EQ(declared, "x a r ");
}

TEST(SlcConvertTmpVarDetail, StoresOnceWhatStaysWithinAPoint)
{
    static const struct {
        const char* code;
        bool once;  // the variable x
    } cases[] = {
        {"{; x = p + 1; Ci = x; }", true},
        {"{; x = p + 1; Ci = x; }; {; x = p; Ci = x; }", true},
        {"{; x = call F p; Ci = x; }", true},
        {"{; f = p < 1; if f L; x = p; Ci = x; endif L; }", true},
        {"{; x = p; f = p < 1; if f L; x = 2; endif L; Ci = x; }", true},
        {"{; f = p < 1; if f L; x = p; endif L; Ci = x; }", false},
        {"{; f = p < 1; if f L; x = p; endif L; if f M; Ci = x; endif M; }", false},
        {"{; x = x + 1; Ci = x; }", false},
        {"{; x = p; }; {; Ci = x; }", false},
        {"x <- p; {; Ci = x; }", false},
        {"{; x = p; Ci = x; }; y <- x", false},
        {"{; f = p < 1; if f L; x = p; L:; Ci = x; endif L; }", false},
    };
    for (const auto& c : cases) {
        CodeText text;
        const auto list = text.List(std::string("begin; ") + c.code + "; end");
        const SlcVariableNumbers variables(*list);
        SlcConvertTmpVarDetail(*list, variables);
        EXPECT_EQ(text.Variable("x")->GetDetail()->IsTempUniform(), c.once) << c.code;
        SlcForgetTmpVarDetail(variables);
        EXPECT_FALSE(text.Variable("x")->IsUniform()) << c.code;
    }
}

TEST(SlcCodeMotion, MovesInvariantsInFrontOfTheLoop)
{
    static const PassCase cases[] = {
        {"begin; S:; u = p + 1; pOut = u; g = p < u; goto E ifnot g; goto S; E:; end",
         "begin; u = p + 1; g = p < u; S:; pOut = u; goto E ifnot g; goto S; E:; end"},
        // Out of a run into a run of its own; what only feeds on it goes along.
        {"begin; S:; {; x = p + 1; y = x * 2; }; pOut = y; goto E ifnot g; goto S; E:; end",
         "begin; {; x = p + 1; y = x * 2; }; S:; {; }; pOut = y; goto E ifnot g; goto S; E:; end"},
        {"begin; S:; {; u = p; y = 2; }; {; x = u; }; pOut = x + y; goto E ifnot g; goto S; E:; "
         "end",
         "begin; {; u = p; y = 2; }; {; x = u; }; S:; {; }; {; }; pOut = x + y; goto E ifnot g; "
         "goto S; E:; end"},
        // Written twice, read before, alive at the head, under a guard, written from outside.
        {"begin; S:; u = 1; pOut = u; u = 2; goto E ifnot g; goto S; E:; end",
         "begin; S:; u = 1; pOut = u; u = 2; goto E ifnot g; goto S; E:; end"},
        {"begin; u = 0; S:; pOut = u; u = 2; goto E ifnot g; goto S; E:; end",
         "begin; u = 0; S:; pOut = u; u = 2; goto E ifnot g; goto S; E:; end"},
        {"begin; S:; {; if f L; x = p + 1; endif L; }; pOut = 1; goto E ifnot g; goto S; E:; end",
         "begin; S:; {; if f L; x = p + 1; endif L; }; pOut = 1; goto E ifnot g; goto S; E:; end"},
        {"begin; S:; x = p + 1; p = x; goto E ifnot g; goto S; E:; end",
         "begin; S:; x = p + 1; p = x; goto E ifnot g; goto S; E:; end"},
        {"begin; S:; r = ref a u; x = r + 1; pOut = x; goto E ifnot g; goto S; E:; end",
         "begin; S:; r = ref a u; x = r + 1; pOut = x; goto E ifnot g; goto S; E:; end"},
        // The flag is another in each round, though the set of writes names it once.
        {"begin; S:; {; f = p < 1; if f L; pOut = 1; endif L; f = not f; }; goto E ifnot g; goto "
         "S; E:; end",
         "begin; S:; {; f = p < 1; if f L; pOut = 1; endif L; f = not f; }; goto E ifnot g; goto "
         "S; E:; end"},
        // A loop without an exit.
        {"begin; S:; u = p + 1; pOut = u; goto S", "begin; u = p + 1; S:; pOut = u; goto S"},
        // A light loop can be left before its body runs.
        {"begin; illuminance S E; x = p + 1; pOut = x; again S; E:; end",
         "begin; illuminance S E; x = p + 1; pOut = x; again S; E:; end"},
        // A jump from elsewhere would pass by the place in front of the head.
        {"begin; goto S if g1; y = 1; S:; u = p + 1; pOut = u; goto E ifnot g; goto S; E:; end",
         "begin; goto S if g1; y = 1; S:; u = p + 1; pOut = u; goto E ifnot g; goto S; E:; end"},
        // Two jumps back: the loop is all that reaches either.
        {"begin; S:; u = p + 1; pOut = u; goto S if g1; u = 3; pOut = u; goto E ifnot g; goto S; "
         "E:; "
         "end",
         "begin; S:; u = p + 1; pOut = u; goto S if g1; u = 3; pOut = u; goto E ifnot g; goto S; "
         "E:; "
         "end"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        const std::string before = CodeText::Print(*list);
        const bool changed = SlcCodeMotion(facts.graph, facts.analysis).OptimizeLoops(*list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcRegroupParallelBlocks, JoinsRunsWithNothingBetween)
{
    static const PassCase cases[] = {
        {"{; x = 1; }; {; y = 1; }; {; z = 1; }", "{; x = 1; y = 1; z = 1; }"},
        {"{; x = 1; }; u = 1; {; y = 1; }", "{; x = 1; }; u = 1; {; y = 1; }"},
        // A run with a comparison joins the one before it, not the one behind.
        {"{; x = 1; }; {; f = x < y; }; {; y = 1; }", "{; x = 1; f = x < y; }; {; y = 1; }"},
        {"{; x = call random; }; {; y = 1; }", "{; x = call random; }; {; y = 1; }"},
        // For each point alone, one run would read what another point has left.
        {"{; u = x; }; {; y = u; }", "{; u = x; }; {; y = u; }"},
        {"{; y = u; }; {; z = 1; }; {; u = x; }", "{; y = u; z = 1; }; {; u = x; }"},
        {"{; u = x; }; {; u = y; }", "{; u = x; }; {; u = y; }"},
        {"{; y = u; }; {; z = u; }; {; u1 = y; }", "{; y = u; z = u; u1 = y; }"},
        {"{; r = ref A x; r = y; }; {; r1 = ref A y; z = r1; }",
         "{; r = ref A x; r = y; }; {; r1 = ref A y; z = r1; }"},
        {"{; r = ref a x; r = y; }; {; r1 = ref a y; z = r1; }",
         "{; r = ref a x; r = y; r1 = ref a y; z = r1; }"},
    };
    ExpectRewritten(cases,
                    [](SlcPtr<SlcListICode>& list) { SlcRegroupParallelBlocks().Optimize(list); });
}

TEST(SlcRegroupParallelIfs, JoinsGuardsOfOneFlag)
{
    static const PassCase cases[] = {
        {"{; if f A; x = 1; endif A; if f B; y = 1; endif B; if f C; z = 1; endif C; }",
         "{; if f A; x = 1; y = 1; z = 1; endif A; }"},
        {"{; if f A; x = 1; endif A; if f1 B; y = 1; endif B; }",
         "{; if f A; x = 1; endif A; if f1 B; y = 1; endif B; }"},
        {"{; if f A; x = 1; endif A; ifnot f B; y = 1; endif B; }",
         "{; if f A; x = 1; endif A; ifnot f B; y = 1; endif B; }"},
        {"{; if f A; break f L; endif A; if f B; y = 1; endif B; }",
         "{; if f A; break f L; endif A; if f B; y = 1; endif B; }"},
        {"{; if f A; break f1 L; endif A; if f B; y = 1; endif B; }",
         "{; if f A; break f1 L; endif A; if f B; y = 1; endif B; }"},
        {"{; if f A; continue f1 L; endif A; if f B; y = 1; endif B; }",
         "{; if f A; continue f1 L; endif A; if f B; y = 1; endif B; }"},
        // The second guard must see what the first body made of the flag.
        {"{; if f A; f = x < y; x = 1; endif A; if f B; y = 1; endif B; }",
         "{; if f A; f = x < y; x = 1; endif A; if f B; y = 1; endif B; }"},
    };
    ExpectRewritten(cases,
                    [](SlcPtr<SlcListICode>& list) { SlcRegroupParallelIfs().Optimize(list); });
}

TEST(SlcICodeOptimizer, EndsOnLoopsThatFeedConstantsAround)
{
    static const char* const lists[] = {
        "begin; u = 0; S:; u1 = u; u = 0; u2 = u1; u1 = u; goto E ifnot g; goto S; E:; pOut = u; "
        "end",
        "begin; u = 1; S:; u = u + 0; u = u * 1; g = u < 3; goto E ifnot g; goto S; E:; pOut = u; "
        "end",
        "begin; g = true; S:; g1 = g; goto E ifnot g1; g = g1; goto S; E:; pOut = 1; end",
        "begin; A:; goto B; C:; goto A; B:; goto C",
        "begin; x = 1; A:; B:; goto A if g; goto B; C:; goto C",
        "begin; S:; u = p + 1; T:; u1 = u + 1; pOut = u1; goto T if g; goto S if g1; end",
        "begin; illuminance S E; f = true; f = not f; if f L; x = 1; endif L; again S; E:; end",
    };
    for (const char* text : lists) {
        auto list = CodeText().List(text);
        int rounds = 0;
        for (bool changed = true; changed && rounds < 20; ++rounds) {
            Analysed facts(*list);
            changed = SlcDeadCodeElimination().EliminateCode(*list, facts.graph, facts.analysis) ||
                      SlcRemoveEmptyBlocks().RemoveUnreachable(facts.graph, *list) ||
                      SlcRemoveEmptyBlocks().RemoveBlocks(*list) || PropagatedConstants(facts) ||
                      SlcConvertConstOp().Convert(*list) ||
                      SlcCodeMotion(facts.graph, facts.analysis).OptimizeLoops(*list);
        }
        EXPECT_LT(rounds, 20) << text << "\nleaves " << CodeText::Print(*list);
    }
}
