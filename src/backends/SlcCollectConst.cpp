// Makes equal constants of one or more lists share one operand, so that the section of the file
// that declares the constants of these lists contains each once:
//
//     x = 1; y = 1; z = PI       constants 1 and 3.14159; the first two instructions share 1
//
// Floats are compared by their bits in single precision, so 0 and -0 stay distinct. Constants are
// declared by kind, in an order that depends only on their values, not on addresses.
//
// Tested by tests/backends/CollectConstTest.cpp.

#include "backends/SlcCollectConst.h"

#include <bit>

void SlcCollectConst::Collect(SlcPtr<SlcListICode>& list, std::deque<SlcOperand>& constants)
{
    Clear();
    Walk(*list);
    Append(constants);
}

void SlcCollectConst::CollectInit(std::deque<SlcPtr<SlcListICode>>& lists,
                                  std::deque<std::deque<SlcOperand>>& defaults,
                                  std::deque<SlcOperand>& constants)
{
    Clear();
    for (auto& values : defaults)
        for (SlcOperand& value : values)
            value = ReplaceConst(value);
    for (const auto& list : lists)
        Walk(*list);
    Append(constants);
}

SlcOperand SlcCollectConst::ReplaceConst(const SlcOperand& operand)
{
    if (operand->IsFloat())
        return ReplaceFloat(operand);
    if (operand->IsString())
        return m_strings.try_emplace(operand->GetString(), operand).first->second;
    if (operand->IsInt())
        return m_ints.try_emplace(operand->GetInt(), operand).first->second;
    if (operand->IsBool()) {
        SlcOperand& shared = operand->GetBool() ? m_true : m_false;
        if (shared.Null())
            shared = operand;
        return shared;
    }
    if (operand->IsPIVariable())
        return ReplaceFloat(SlcLexType::GetPI());
    return operand;
}

SlcOperand SlcCollectConst::ReplaceFloat(const SlcOperand& operand)
{
    const auto key = std::bit_cast<std::uint32_t>(static_cast<float>(operand->GetFloat()));
    auto& shared = m_floats[key];
    if (shared.Null()) {
        // The single operand for pi is shared by all lists, but each list numbers its own
        // constants.
        const bool isPi = operand == SlcLexType::GetPI();
        shared = isPi ? SlcLexType::Float(operand->GetFloat()) : operand;
    }
    return shared;
}

void SlcCollectConst::Clear()
{
    m_floats.clear();
    m_strings.clear();
    m_ints.clear();
    m_true = nullptr;
    m_false = nullptr;
}

void SlcCollectConst::Walk(const SlcListICode& list)
{
    for (const auto& code : list.m_icodes)
        Visit(code);
}

void SlcCollectConst::Append(std::deque<SlcOperand>& constants) const
{
    constants.clear();
    for (const auto& [key, operand] : m_floats)
        constants.push_back(operand);
    for (const auto& [key, operand] : m_strings)
        constants.push_back(operand);
    for (const auto& [key, operand] : m_ints)
        constants.push_back(operand);
    for (const SlcOperand& operand : {m_true, m_false})
        if (operand)
            constants.push_back(operand);
}
