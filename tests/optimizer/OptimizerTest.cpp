// Tests the flow graph and the passes of the optimizer on hand-written lists.

#include <gtest/gtest.h>

#include "helpers/CodeText.h"
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
#include "sqx/SqxCard.h"
#include "symbols/SlcHiddenVariables.h"

namespace {

/// The flow graph of a list and the analyses that passes need.
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

/// Propagates constants; true if the pass changed something.
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
        {"x = 1; { x = 2; }", "0>"},  // a parallel run is straight-line code
        {"x = 1; goto L; y = 1; L: x = 2;", "0>2 1>2 2>"},
        {"g? goto L; L: x = 1;", "0>1 1>"},  // two edges to one block are one
        {"x = 1; f?( x = 2; ) y = x;", "0>12 1>2 2>"},
        {"S: !g? goto E; x = 1; goto S; E:", "0>21 1>0 2>"},
        // A light loop may run for no light.
        {"x = 1; lights S E; x = 2; next S; E: y = x;", "0>1 1>23 2>31 3>"},
        {"{ break f to L; x = 1; } L:", "0>1 1>"},  // clears flags, jumps nowhere
        {"x = 1; goto L; L: goto L;", "0>1 1>1"},
    };
    for (const GraphCase& c : cases)
        EXPECT_EQ(EdgesOf(c.code), c.edges) << c.code;
}

TEST(SlcBasicBlock, PrintsItsEdges)
{
    const auto list = CodeText().List("S: g? goto S; x = 1;");
    SlcText text;
    const SlcControlFlowGraph graph(*list);
    for (const auto& block : graph.Blocks())
        block.Print(text);
    EXPECT_EQ(text.Str(), "Begin Block 0 \n\tPred: 0 \n\tSucc: 0 1 \n\n"
                          "\tSlcLabelICode\n\tSlcIfTrueGotoICode\nEnd Block 0 \n\n"
                          "Begin Block 1 \n\tPred: 0 \n\tSucc: \n\n"
                          "\tSlcAssignICode\nEnd Block 1 \n\n");
}

TEST(SlcDeadCodeElimination, RemovesValuesThatAreNeverRead)
{
    static const PassCase cases[] = {
        {"begin; x = 1; y = x; end;", "begin; end;"},  // one run removes a whole chain
        // Chains may cross blocks, and go around loops, where each value keeps the other live.
        {"begin; x = p; f?( x = x + 1; ) f?( y = x; ) end;", "begin; f?( ) f?( ) end;"},
        {"begin; x = 1; S: y = x; x = 2; g? goto S; end;", "begin; S: g? goto S; end;"},
        {"begin; x = 1; S: y = x + 1; x = y; g? goto S; end;", "begin; S: g? goto S; end;"},
        {"begin; x = 1; S: y = x + 1; x = y; g? goto S; Ci = y; end;",
         "begin; x = 1; S: y = x + 1; x = y; g? goto S; Ci = y; end;"},
        {"begin; Ci = 1; Ci = 2; end;", "begin; Ci = 2; end;"},
        {"begin; Ci = Ci; end;", "begin; end;"},
        {"begin; x = p; L: x = x; M: Ci = x; end;", "begin; x = p; L: M: Ci = x; end;"},
        {"begin; p = 1; end;", "begin; p = 1; end;"},  // a parameter is live at the end
        {"begin; x = RANDOM_FLOAT(); end;", "begin; x = RANDOM_FLOAT(); end;"},
        {"begin; r = &a[u]; r = 1; end;", "begin; r = &a[u]; r = 1; end;"},
        // Points that skip the guard read the first value.
        {"begin; x = 1; f?( x = 2; ) Ci = x; end;", "begin; x = 1; f?( x = 2; ) Ci = x; end;"},
        // The second value is live only around the loop.
        {"begin; x = 1; S: Ci = x; x = 2; g? goto S; end;",
         "begin; x = 1; S: Ci = x; x = 2; g? goto S; end;"},
        // A light loop may run for no light, and then the first value is the result.
        {"begin; Ci = 0; lights S E; Ci = 1; next S; E: end;",
         "begin; Ci = 0; lights S E; Ci = 1; next S; E: end;"},
        {"begin; f = x < y; f = not f; f?( Ci = 1; ) end;",
         "begin; f = x < y; f = not f; f?( Ci = 1; ) end;"},
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

/// Returns the predefined variable of light loops with this name, otherwise that of the shader.
SlcOperand Predefined(std::string_view name)
{
    const auto* light = SlcHiddenVariables::FindVarInfoIlluminance(name);
    const auto& info = light ? *light : SlcHiddenVariables::GetVarInfoHidden(name);
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(info.accessor), info.type(),
                                  info.detail(), SlcStorageSpecNode::AReadOnly());
}

/// True if an assignment to `variable` before a call of `primitive` is kept.
bool KeepsAssignment(std::string_view variable, SqxPrimitive primitive)
{
    const SlcOperand operand = Predefined(variable);
    SlcListICode list;
    list.AddHiddenVar(operand);
    list.AddICode(MakeShared<SlcAssignICode>(operand, SlcLexType::Float(1)));
    list.AddICode(MakeShared<SlcCallICode>(primitive, std::deque<SlcOperand>(), nullptr,
                                           SlcCallICode::ArgumentList::Fixed, SlcGridForm::Plain(),
                                           nullptr));
    Analysed facts(list);
    return !SlcDeadCodeElimination().EliminateCode(list, facts.graph, facts.analysis);
}

}  // namespace

TEST(SlcDefUse, KeepsAssignmentsThatACallReads)
{
    for (const SqxCard& card : SqxCards())
        for (const std::string_view variable : card.Reads())
            EXPECT_TRUE(variable.empty() || KeepsAssignment(variable, card.primitive))
                << variable << " " << SqxPrimitiveName(card.primitive);
    EXPECT_FALSE(KeepsAssignment("Ng", SqxPrimitive::CALL_PRIM_FACEFORWARD2));
    EXPECT_FALSE(KeepsAssignment("Ol", SqxPrimitive::CALL_PRIM_DIFFUSE));
}

TEST(SlcRemoveEmptyBlocks, RemovesRedundantLabelsAndBrackets)
{
    static const PassCase cases[] = {
        {"goto L; L: x = 1;", "x = 1;"},
        {"x = 1; g? goto L; L: x = 2;", "x = 1; x = 2;"},
        {"g? goto A; x = 1; A: goto B; y = 1; B: x = 2;",
         "g? goto B; x = 1; A: goto B; y = 1; B: x = 2;"},
        {"g? goto A; x = 1; A: goto B; B: x = 2;", "g? goto B; x = 1; A: B: x = 2;"},
        {"{ } x = 1;", "x = 1;"},
        {"{ x = 1; } { y = 1; } { z = 1; }", "{ x = 1; y = 1; z = 1; }"},
        {"{ x = 1; } { } { y = 1; }", "{ x = 1; y = 1; }"},
        {"{ f = x < y; } { f?( z = 1; ) }", "{ f = x < y; f?( z = 1; ) }"},
        {"{ f?( ) } x = 1;", "x = 1;"},
        {"{ x = RANDOM_FLOAT(); } { y = RANDOM_FLOAT(); }",
         "{ x = RANDOM_FLOAT(); } { y = RANDOM_FLOAT(); }"},
        // All points write a uniform variable before the next run reads it.
        {"{ u = x; } { } { y = 1; } { y = u; }", "{ u = x; y = 1; } { y = u; }"},
        {"x = 1;", "x = 1;"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        const std::string before = CodeText::Print(*list);
        const bool changed = SlcRemoveEmptyBlocks().RemoveBlocks(*list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcRemoveEmptyBlocks, RemovesUnreachableCode)
{
    static const PassCase cases[] = {
        {"x = 1; goto E; y = 1; A: x = 2; g? goto E; B: x = 3; E: z = x;",
         "x = 1; goto E; E: z = x;"},
        {"x = 1; goto E; A: y = 1; goto A; E: z = x;",  // a cycle is its own predecessor
         "x = 1; goto E; A: y = 1; goto A; E: z = x;"},
        {"A: x = 1; goto A;", "A: x = 1; goto A;"},
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
    auto list = text.List("{ x = 1; } { y = 1; }");
    const auto firstEnd = list->m_icodes[2];
    ASSERT_TRUE(SlcRemoveEmptyBlocks().RemoveBlocks(*list));
    EXPECT_TRUE(list->m_icodes.back() == firstEnd);
}

TEST(SlcConvertConstOp, FoldsOneInstruction)
{
    static const PassCase cases[] = {
        {"x = 2 + 3;", "x = 5;"},
        {"x = 0 + y;", "x = y;"},
        {"x = y + 0;", "x = y;"},
        {"x = 0 - y;", "x = -y;"},
        {"x = y - y;", "x = y - y;"},  // equal operands are not recognized
        {"x = y * 1;", "x = y;"},
        {"x = y * 0;", "x = 0;"},
        {"x = y / 4;", "x = y * 0.25;"},
        {"x = y / 0;", "x = y / 0;"},  // left to run time
        {"x = 0 / 0;", "x = 0 / 0;"},
        {"x = 49 / 49;", "x = 1;"},
        {"f = 0.30000001192092896 == 0.3;", "f = true;"},
        {"x = 12345 * 1001;", "x = 12345 * 1001;"},  // the product has more digits than are written
        {"x = 1e+07 * 20;", "x = 2e+08;"},
        {"x = y / 3e+38;", "x = y / 3e+38;"},  // the reciprocal is denormal
        {"x = LOG2(8, 2);", "x = 3;"},
        {"x = ROUND(0.49999997);", "x = 1;"},  // as at run time
        {"x = MOD(7, 3);", "x = 1;"},
        {"x = 0 / y;", "x = 0;"},
        {"x = 1e38 * 10;", "x = 1e+38 * 10;"},  // would not be finite at run time
        {"x = y / 1e-45;", "x = y / 1e-45;"},
        {"x = -(0);", "x = 0;"},
        {"x = -(2);", "x = -(2);"},
        {"f = 1 < 2;", "f = true;"},
        {"f = x == x;", "f = true;"},
        {"true? goto L; x = 1; L:", "goto L; x = 1; L:"},
        {"!true? goto L; x = 1; L:", "x = 1; L:"},
        {"true?( x = 1; ) y = 1;", "x = 1; y = 1;"},
        {"false?( x = 1; ) y = 1;", "y = 1;"},
        {"!true?( x = 1; ) y = 1;", "y = 1;"},
        // The inner guard remains for the next run, and its end is not mistaken for that of the
        // outer one.
        {"true?( true?( x = 1; ) y = 1; ) z = 1;", "true?( x = 1; ) y = 1; z = 1;"},
        {"true?( f?( x = 1; ) y = 1; ) z = 1;", "f?( x = 1; ) y = 1; z = 1;"},
        {"false?( f?( x = 1; ) y = 1; ) z = 1;", "z = 1;"},
        {"f?( x = 1; )", "f?( x = 1; )"},
        {"x = SQRT(4);", "x = 2;"},
        {"x = ASIN(2);", "x = ASIN(2);"},
        {"x = ACOS(2);", "x = 0;"},
        {"x = MOD(5, 0);", "x = MOD(5, 0);"},
        {"x = CLAMP_1D(5, 0, 1);", "x = 1;"},
        {"x = SQRT(y);", "x = SQRT(y);"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        const std::string before = CodeText::Print(*list);
        const bool changed = SlcConvertConstOp().Convert(*list);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcCopyPropagation, PropagatesConstantsWhereAllPathsAgree)
{
    static const PassCase cases[] = {
        {"x = 1; y = x;", "x = 1; y = 1;"},
        {"x = y; z = x;", "x = y; z = x;"},                        // no copies of variables
        {"x = 1; x = x + 1; y = x;", "x = 1; x = 1 + 1; y = x;"},  // reads come before writes
        {"x = 1; f?( x = 2; ) y = x;", "x = 1; f?( x = 2; ) y = x;"},
        {"x = 1; f?( y = x; )", "x = 1; f?( y = 1; )"},
        // Known flags survive a join, known floats do not.
        {"g = false; x = 1; f?( z = 1; ) h = g; y = x;",
         "g = false; x = 1; f?( z = 1; ) h = false; y = x;"},
        {"x = 1; S: y = x; g? goto S;", "x = 1; S: y = x; g? goto S;"},
        {"x = 1; y <- x;", "x = 1; y <- x;"},  // the whole-grid form needs the varying operand
        {"f = true; f = not f; g = any f;", "f = true; f = not f; g = any f;"},
        {"f = false; f1 = f2 but not f; f1?( x = 1; )",
         "f = false; f1 = f2 but not f; f1?( x = 1; )"},
        {"f = true; f1 = f2 but not f; f1?( x = 1; )",
         "f = true; f1 = f2 but not f; false?( x = 1; )"},
        {"g = any true; g1 = g;", "g = any true; g1 = true;"},
        {"f = true; break f to L; L: f1 = f;", "f = true; break f to L; L: f1 = f;"},
        {"u = 2; x = SQRT(u);", "u = 2; x = SQRT(2);"},
        {"x = 2; y = SQRT(x);", "x = 2; y = SQRT(x);"},
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        const std::string before = CodeText::Print(*list);
        const bool changed = PropagatedConstants(facts);
        EXPECT_EQ(changed, CodeText::Print(*list) != before);
    });
}

TEST(SlcReduceNumberTmps, SharesVariablesThatAreNeverLiveTogether)
{
    static const PassCase cases[] = {
        {"begin; x = p; Ci = x; y = p; Ci = y; end;", "begin; x = p; Ci = x; x = p; Ci = x; end;"},
        {"begin; x = p; y = p; Ci = x + y; end;", "begin; x = p; y = p; Ci = x + y; end;"},
        // A dead value must not overwrite a live one.
        {"begin; x = p; y = 1; Ci = x; end;", "begin; x = p; y = 1; Ci = x; end;"},
        // The value is live around the loop.
        {"begin; x = p; S: y = p; Ci = y; Ci = x; g? goto S; end;",
         "begin; x = p; S: y = p; Ci = y; Ci = x; g? goto S; end;"},
        // Both are read but never set, so both are live at the entry.
        {"begin; Ci = x; Ci = y; end;", "begin; Ci = x; Ci = y; end;"},
        {"begin; u1 = p; Ci = u1; u2 = p; Ci = u2; end;",
         "begin; u1 = p; Ci = u1; u2 = p; Ci = u2; end;"},  // uniform variables are not shared
        {"begin; f = p < 1; f?( Ci = 1; ) x = p; Ci = x; end;",
         "begin; f = p < 1; f?( Ci = 1; ) x = p; Ci = x; end;"},  // types are not mixed
    };
    ExpectRewritten(cases, [](SlcPtr<SlcListICode>& list) {
        Analysed facts(*list);
        SlcReduceNumberTmps().Reduce(*list, facts.graph, facts.analysis, nullptr);
    });
}

TEST(SlcReduceNumberTmps, DeclaresOnlyRemainingVariables)
{
    auto list = CodeText().List("begin; x = p; Ci = x; y = p; Ci = y; r = &a[1]; r = 1; end;");
    Analysed facts(*list);
    SlcReduceNumberTmps().Reduce(*list, facts.graph, facts.analysis, nullptr);
    std::string declared;
    for (const auto& variable : list->m_usedLocalVars)
        declared += variable->GetName() + " ";
    EXPECT_EQ(declared, "x r a ");
}

TEST(SlcConvertTmpVarDetail, StoresOneValueIfEachPointWritesItFirst)
{
    static const struct {
        const char* code;
        bool once;  // x is stored once for all points
    } cases[] = {
        {"{ x = p + 1; Ci = x; }", true},
        {"{ x = p + 1; Ci = x; } { x = p; Ci = x; }", true},
        {"{ x = LENGTH(p); Ci = x; }", true},
        {"{ f = p < 1; f?( x = p; Ci = x; ) }", true},
        {"{ x = p; f = p < 1; f?( x = 2; ) Ci = x; }", true},
        {"{ f = p < 1; f?( x = p; ) Ci = x; }", false},
        {"{ f = p < 1; f?( x = p; ) f?( Ci = x; ) }", false},
        {"{ x = x + 1; Ci = x; }", false},
        {"{ x = p; } { Ci = x; }", false},
        {"x <- p; { Ci = x; }", false},
        {"{ x = p; Ci = x; } y <- x;", false},
        {"{ f = p < 1; f?( x = p; L: Ci = x; ) }", false},
    };
    for (const auto& c : cases) {
        CodeText text;
        const auto list = text.List(std::string("begin;") + c.code + "end;");
        const SlcVariableNumbers variables(*list);
        SlcConvertTmpVarDetail(*list, variables);
        EXPECT_EQ(text.Variable("x")->GetDetail()->IsTempUniform(), c.once) << c.code;
        SlcForgetTmpVarDetail(variables);
        EXPECT_FALSE(text.Variable("x")->IsUniform()) << c.code;
    }
}

TEST(SlcCodeMotion, HoistsInvariantsOutOfTheLoop)
{
    static const PassCase cases[] = {
        {"begin; S: u = p + 1; pOut = u; g = p < u; !g? goto E; goto S; E: end;",
         "begin; u = p + 1; g = p < u; S: pOut = u; !g? goto E; goto S; E: end;"},
        // These are the kinds of instructions that can be hoisted.
        {"begin; S: { x = zero(); y = -p; z = p - x; z1 = p * y; z2 = p / z; z3 = z1 . z2; z4 = p "
         "^ z3; z5 = point(p, 1, z4); z6 = normal(p, 1, z5); z7 = vector(p, 1, z6); z8 = color(p, "
         "1, z7); f = p < z8; f1 = p <= 1; f2 = p > 1; f3 = p >= 1; f4 = p == 1; f5 = p != 1; "
         "z9 = matrix(p, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, z8); } y1 <- p; pOut = z9; !g? "
         "goto E; goto S; E: end;",
         "begin; { x = zero(); y = -p; z = p - x; z1 = p * y; z2 = p / z; z3 = z1 . z2; z4 = p ^ "
         "z3; z5 = point(p, 1, z4); z6 = normal(p, 1, z5); z7 = vector(p, 1, z6); z8 = color(p, 1, "
         "z7); f = p < z8; f1 = p <= 1; f2 = p > 1; f3 = p >= 1; f4 = p == 1; f5 = p != 1; z9 = "
         "matrix(p, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, z8); } y1 <- p; S: { } pOut = z9; "
         "!g? goto E; goto S; E: end;"},
        // Instructions are hoisted out of a parallel run into a separate one, together with those
        // that depend only on them.
        {"begin; S: { x = p + 1; y = x * 2; } pOut = y; !g? goto E; goto S; E: end;",
         "begin; { x = p + 1; y = x * 2; } S: { } pOut = y; !g? goto E; goto S; E: end;"},
        {"begin; S: { u = p; y = 2; } { x = u; } pOut = x + y; !g? goto E; goto S; E: end;",
         "begin; { u = p; y = 2; } { x = u; } S: { } { } pOut = x + y; !g? goto E; goto S; E: "
         "end;"},
        // A jump to the head would skip hoisted code, even if it is right before the head.
        {"begin; goto S; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;",
         "begin; goto S; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;"},
        {"begin; g? goto S; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;",
         "begin; g? goto S; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;"},
        // These are not hoisted: a variable that is written twice, one that is read before it is
        // written, a write under a guard, an operand that the loop writes, an array element.
        {"begin; S: u = 1; pOut = u; u = 2; !g? goto E; goto S; E: end;",
         "begin; S: u = 1; pOut = u; u = 2; !g? goto E; goto S; E: end;"},
        {"begin; u = 0; S: pOut = u; u = 2; !g? goto E; goto S; E: end;",
         "begin; u = 0; S: pOut = u; u = 2; !g? goto E; goto S; E: end;"},
        {"begin; S: { f?( x = p + 1; ) } pOut = 1; !g? goto E; goto S; E: end;",
         "begin; S: { f?( x = p + 1; ) } pOut = 1; !g? goto E; goto S; E: end;"},
        {"begin; S: x = p + 1; p = x; !g? goto E; goto S; E: end;",
         "begin; S: x = p + 1; p = x; !g? goto E; goto S; E: end;"},
        {"begin; S: r = &a[u]; x = r + 1; pOut = x; !g? goto E; goto S; E: end;",
         "begin; S: r = &a[u]; x = r + 1; pOut = x; !g? goto E; goto S; E: end;"},
        // Each iteration writes the flag twice.
        {"begin; S: { f = p < 1; f?( pOut = 1; ) f = not f; } !g? goto E; goto S; E: end;",
         "begin; S: { f = p < 1; f?( pOut = 1; ) f = not f; } !g? goto E; goto S; E: end;"},
        // The loop has no exit.
        {"begin; S: u = p + 1; pOut = u; goto S;", "begin; u = p + 1; S: pOut = u; goto S;"},
        // A light loop can be left before its body runs.
        {"begin; lights S E; x = p + 1; pOut = x; next S; E: end;",
         "begin; lights S E; x = p + 1; pOut = x; next S; E: end;"},
        // A jump from elsewhere would skip the hoisted code.
        {"begin; g1? goto S; y = 1; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;",
         "begin; g1? goto S; y = 1; S: u = p + 1; pOut = u; !g? goto E; goto S; E: end;"},
        // Two back edges lead to one head, so the loop consists of all blocks that reach either.
        {"begin; S: u = p + 1; pOut = u; g1? goto S; u = 3; pOut = u; !g? goto E; goto S; E: end;",
         "begin; S: u = p + 1; pOut = u; g1? goto S; u = 3; pOut = u; !g? goto E; goto S; E: end;"},
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
        {"{ x = 1; } { y = 1; } { z = 1; }", "{ x = 1; y = 1; z = 1; }"},
        {"{ x = 1; } u = 1; { y = 1; }", "{ x = 1; } u = 1; { y = 1; }"},
        // A run with a comparison is joined with the one before it, not with the one after it.
        {"{ x = 1; } { f = x < y; } { y = 1; }", "{ x = 1; f = x < y; } { y = 1; }"},
        {"{ x = RANDOM_FLOAT(); } { y = 1; }", "{ x = RANDOM_FLOAT(); } { y = 1; }"},
        // In a joined run the points would access the uniform variable in another order.
        {"{ u = x; } { y = u; }", "{ u = x; } { y = u; }"},
        {"{ y = u; } { z = 1; } { u = x; }", "{ y = u; z = 1; } { u = x; }"},
        {"{ u = x; } { u = y; }", "{ u = x; } { u = y; }"},
        {"{ y = u; } { z = u; } { u1 = y; }", "{ y = u; z = u; u1 = y; }"},
        {"{ r = &A[x]; r = y; } { r1 = &A[y]; z = r1; }",
         "{ r = &A[x]; r = y; } { r1 = &A[y]; z = r1; }"},
        {"{ r = &a[x]; r = y; } { r1 = &a[y]; z = r1; }",
         "{ r = &a[x]; r = y; r1 = &a[y]; z = r1; }"},
    };
    ExpectRewritten(cases,
                    [](SlcPtr<SlcListICode>& list) { SlcRegroupParallelBlocks().Optimize(list); });
}

TEST(SlcRegroupParallelIfs, JoinsGuardsOfOneFlag)
{
    static const PassCase cases[] = {
        {"{ f?( x = 1; ) f?( y = 1; ) f?( z = 1; ) }", "{ f?( x = 1; y = 1; z = 1; ) }"},
        {"{ f?( x = 1; ) f1?( y = 1; ) }", "{ f?( x = 1; ) f1?( y = 1; ) }"},
        {"{ f?( x = 1; ) !f?( y = 1; ) }", "{ f?( x = 1; ) !f?( y = 1; ) }"},
        {"{ f?( break f to L; ) f?( y = 1; ) }", "{ f?( break f to L; ) f?( y = 1; ) }"},
        {"{ f?( break f1 to L; ) f?( y = 1; ) }", "{ f?( break f1 to L; ) f?( y = 1; ) }"},
        {"{ f?( continue f1 to L; ) f?( y = 1; ) }", "{ f?( continue f1 to L; ) f?( y = 1; ) }"},
        // The second guard must use the value that the first body has written to the flag.
        {"{ f?( f = x < y; x = 1; ) f?( y = 1; ) }", "{ f?( f = x < y; x = 1; ) f?( y = 1; ) }"},
        // The lowering does not nest guards.
        {"{ f?( x = 1; ) f?( f1?( y = 1; ) ) }", "{ f?( x = 1; f1?( y = 1; ) ) }"},
        {"{ f?( f1?( x = 1; ) f1?( y = 1; ) ) f?( z = 1; ) }",
         "{ f?( f1?( x = 1; y = 1; ) z = 1; ) }"},
        {"{ f?( f1?( f = x < y; ) ) f?( y = 1; ) }", "{ f?( f1?( f = x < y; ) ) f?( y = 1; ) }"},
        {"{ f?( f1?( break f to L; ) ) f?( y = 1; ) }",
         "{ f?( f1?( break f to L; ) ) f?( y = 1; ) }"},
    };
    ExpectRewritten(cases,
                    [](SlcPtr<SlcListICode>& list) { SlcRegroupParallelIfs().Optimize(list); });
}

TEST(SlcICodeOptimizer, TerminatesOnLoopsThatCarryConstants)
{
    static const char* const lists[] = {
        "begin; u = 0; S: u1 = u; u = 0; u2 = u1; u1 = u; !g? goto E; goto S; E: pOut = u; end;",
        "begin; u = 1; S: u = u + 0; u = u * 1; g = u < 3; !g? goto E; goto S; E: pOut = u; end;",
        "begin; g = true; S: g1 = g; !g1? goto E; g = g1; goto S; E: pOut = 1; end;",
        "begin; A: goto B; C: goto A; B: goto C;",
        "begin; x = 1; A: B: g? goto A; goto B; C: goto C;",
        "begin; S: u = p + 1; T: u1 = u + 1; pOut = u1; g? goto T; g1? goto S; end;",
        "begin; lights S E; f = true; f = not f; f?( x = 1; ) next S; E: end;",
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
