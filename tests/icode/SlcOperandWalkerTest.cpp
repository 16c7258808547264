#include "icode/SlcOperandWalker.h"

#include <gtest/gtest.h>

#include "icode/SlcICodes.h"

namespace {

SlcOperand Variable(const char* name)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), SlcTypeNode::AFloat(),
                                  SlcDetailNode::AVarying(), SlcStorageSpecNode::ALocal());
}

class Shown : public SlcOperandWalker {
public:
    std::string m_text;

private:
    void Read(SlcOperand& operand) override { m_text += operand->GetName(); }
    void Write(SlcOperand& operand) override { m_text += '=' + operand->GetName(); }
};

TEST(SlcOperandWalker, VisitsReadsBeforeWritesAndSkipsMissingOperands)
{
    const SlcOperand a = Variable("a");
    const SlcOperand b = Variable("b");
    const SlcOperand c = Variable("c");
    const SlcLabel label = MakeShared<SlcLabelICode>("L");
    auto leave = MakeShared<SlcBreakICode>(label);
    leave->m_flags = {a, b};
    const struct {
        SlcPtr<SlcICode> code;
        const char* shown;
    } cases[] = {
        {MakeShared<SlcAddICode>(a, b, c), "bc=a"},
        {MakeShared<SlcEqualICode>(a, b, c), "bc=a"},
        {MakeShared<SlcAssignSIMDICode>(a, b), "b=a"},
        {MakeShared<SlcVectorICode>(a, b, b, c), "bbc=a"},
        {MakeShared<SlcInvertBoolFlagICode>(a, a, nullptr), "a=a"},
        {MakeShared<SlcInvertBoolFlagICode>(a, b, c), "bc=a"},
        {MakeShared<SlcIfTrueGotoICode>(a, label), "a"},
        {MakeShared<SlcIfFalseICode>(a, label), "a"},
        {leave, "=a=b"},
        {MakeShared<SlcCallICode>(SqxPrimitive::CALL_PRIM_PRINTF, std::deque<SlcOperand>{b, c},
                                  nullptr, SlcCallICode::ArgumentList::Counted,
                                  SlcGridForm::Plain(), nullptr),
         "bc"},
        {MakeShared<SlcArrayRefICode>(a, b, c), "bc=a"},
        {MakeShared<SlcBeginShaderICode>(), ""},
    };
    for (const auto& c : cases) {
        Shown shown;
        shown.Visit(c.code);
        EXPECT_EQ(shown.m_text, c.shown);
    }
}

/// Overrides the `Case` of a class, of its base class and of another base class, as a pass may.
class Heights : public SlcAllICodeWalker {
public:
    int m_additions = 0;
    int m_arithmetic = 0;
    int m_marks = 0;
    int m_rest = 0;

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcAddICode>) override { ++m_additions; }
    void Case(SlcPtr<SlcArithExprICode>) override { ++m_arithmetic; }
    void Case(SlcPtr<SlcInvisibleICode>) override { ++m_marks; }
    void Default(SlcPtr<SlcICode>) override { ++m_rest; }
};

TEST(SlcAllICodeWalker, CallsTheNearestOverriddenClass)
{
    const SlcOperand a = Variable("a");
    const SlcPtr<SlcICode> codes[] = {
        MakeShared<SlcAddICode>(a, a, a),     MakeShared<SlcCrossProdICode>(a, a, a),
        MakeShared<SlcEndShaderICode>(),      MakeShared<SlcUnaryMinusICode>(a, a),
        MakeShared<SlcAssignSIMDICode>(a, a),
    };
    Heights heights;
    for (const auto& code : codes)
        code->ApplyWalker(&heights);
    EXPECT_EQ(heights.m_additions, 1);
    EXPECT_EQ(heights.m_arithmetic, 1);
    EXPECT_EQ(heights.m_marks, 1);
    EXPECT_EQ(heights.m_rest, 2);
}

}  // namespace
