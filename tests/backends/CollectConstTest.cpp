#include "backends/SlcCollectConst.h"

#include <gtest/gtest.h>

#include "backends/FormBuilder.h"

namespace {

SlcOperand Variable(const char* name)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), SlcTypeNode::AFloat(),
                                  SlcDetailNode::AUniform(), SlcStorageSpecNode::ALocal());
}

std::string TextOf(const SlcOperand& constant)
{
    if (constant->IsFloat())
        return std::to_string(constant->GetFloat());
    if (constant->IsString())
        return constant->GetString();
    if (constant->IsInt())
        return std::to_string(constant->GetInt());
    return constant->GetBool() ? "true" : "false";
}

std::string TextOf(const std::deque<SlcOperand>& constants)
{
    std::string text;
    for (const SlcOperand& constant : constants)
        text += TextOf(constant) + ' ';
    return text;
}

/// Returns a list that reads each of the values once.
SlcPtr<SlcListICode> ListOf(const std::vector<SlcOperand>& values)
{
    auto list = MakeShared<SlcListICode>();
    for (const SlcOperand& value : values)
        list->AddICode(MakeShared<SlcAssignICode>(Variable("x"), value));
    return list;
}

}  // namespace

TEST(SlcCollectConst, OrdersConstantsByValue)
{
    using L = SlcLexType;
    auto list = ListOf({L::Bool(false), L::String("\"b\""), L::Float(-1), L::Int(7, true),
                        L::Float(2), L::Bool(true), L::Float(0.5), L::String("\"a\""),
                        L::Int(-3, false), Variable("y"), L::Float(-2)});
    std::deque<SlcOperand> constants;
    SlcCollectConst().Collect(list, constants);
    const char* order = "0.500000 2.000000 -1.000000 -2.000000 \"a\" \"b\" -3 7 true false ";
    EXPECT_EQ(TextOf(constants), order);
    SlcCollectConst().Collect(list, constants);
    EXPECT_EQ(TextOf(constants), order);
}

TEST(SlcCollectConst, MergesNumbersThatRoundToTheSameFloat)
{
    struct MergeCase {
        SlcOperand first;
        SlcOperand second;
        std::size_t constants;
    };
    const MergeCase cases[] = {
        {Number(0.1), Number(static_cast<double>(0.1F)), 1},
        {Number(0.1), Number(0.1000001), 2},
        {Number(0), Number(-0.0), 2},
        {SlcLexType::GetPI(), Number(3.1415926536), 1},
        {SlcLexType::GetPIVariable(), Number(3.1415926536), 1},
        {Variable("QX_PI"), Variable("x"), 0},
        {Variable("PI"), Variable("x"), 0},
    };
    for (const MergeCase& c : cases) {
        auto list = ListOf({c.first, c.second});
        std::deque<SlcOperand> constants;
        SlcCollectConst().Collect(list, constants);
        EXPECT_EQ(constants.size(), c.constants) << TextOf(constants);
    }
}

TEST(SlcCollectConst, ReachesTheOperandsOfLightStatements)
{
    auto list = MakeShared<SlcListICode>();
    const SlcOperand flag = Variable("f");
    auto light = MakeShared<SlcIlluminateICode>(
        flag, Number(1), Number(1), Number(1), Variable("Ps"), Variable("L"), SlcGridForm::Plain());
    list->AddICode(light);
    std::deque<SlcOperand> constants;
    SlcCollectConst().Collect(list, constants);
    ASSERT_EQ(constants.size(), 1U);
    EXPECT_TRUE(light->m_position == constants[0]);
    EXPECT_TRUE(light->m_axis == constants[0]);
    EXPECT_TRUE(light->m_angle == constants[0]);
}
