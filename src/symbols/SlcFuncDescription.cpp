// The parameters in the card of a built-in become fixed arguments and, from the first optional,
// named or repeated parameter on, a variable tail:
//
//     float f(point p, optional float samples = 0, named float bias = 0)
// takes a point, and then the tail
//     list(single float, named(pair "bias" float))
//
// Tested by tests/symbols/SlcFuncDescriptionTest.cpp.

#include "symbols/SlcFuncDescription.h"

namespace {

SlcTypeNode* TypeOf(SqxCardType type)
{
    switch (type) {
    case SqxCardType::Void:
        return SlcTypeNode::AVoid();
    case SqxCardType::Float:
        return SlcTypeNode::AFloat();
    case SqxCardType::String:
        return SlcTypeNode::AString();
    case SqxCardType::Color:
        return SlcTypeNode::AColor();
    case SqxCardType::Point:
        return SlcTypeNode::APoint();
    case SqxCardType::Vector:
        return SlcTypeNode::AVector();
    case SqxCardType::Normal:
        return SlcTypeNode::ANormal();
    case SqxCardType::Matrix:
        return SlcTypeNode::AMatrix();
    case SqxCardType::Any:
        return SlcTypeNode::AAnyType();
    case SqxCardType::AnyPoint:
        return SlcTypeNode::AAnyPoint();
    case SqxCardType::AnyVector:
        return SlcTypeNode::AAnyVector();
    case SqxCardType::Bool:
    case SqxCardType::AnyValue:
    case SqxCardType::Array:
    case SqxCardType::Reference:
    case SqxCardType::NumberOrTriple:
    case SqxCardType::Place:
    case SqxCardType::Space:
    case SqxCardType::Literal:
    case SqxCardType::Shadeop:
        break;  // only in instructions; the reader of cards rejects these types in functions
    }
    return SlcTypeNode::AError();
}

SlcTypeNode* TypeOf(const SqxParameter& parameter)
{
    SlcTypeNode* type = TypeOf(parameter.type);
    return parameter.isArray ? SlcTypeNode::CreateArrayType(type) : type;
}

SlcDetailNode* DetailOf(const SqxParameter& parameter)
{
    return parameter.isUniform ? SlcDetailNode::AUniform() : SlcDetailNode::AUnknown();
}

SlcStorageSpecNode* StorageOf(const SqxParameter& parameter)
{
    return parameter.isOutput ? SlcStorageSpecNode::AOutput() : SlcStorageSpecNode::AInput();
}

bool IsFixed(const SqxParameter& parameter)
{
    return !parameter.isOptional && !parameter.isNamed && !parameter.isRepeated;
}

std::unique_ptr<SlcFuncVarArgSingle> SingleOf(const SqxCard& card, const SqxParameter& parameter)
{
    return std::make_unique<SlcFuncVarArgSingle>(TypeOf(parameter), DetailOf(parameter),
                                                 StorageOf(parameter), parameter.isRepeated,
                                                 std::string(card.Text(parameter.value)));
}

std::unique_ptr<SlcFuncVarArgExpr> TailOf(const SqxCard& card)
{
    const auto formals = card.Formals();
    if (formals.empty() || IsFixed(formals.back()))
        return nullptr;
    if (formals.back().isRepeated)
        return SingleOf(card, formals.back());
    auto tail = std::make_unique<SlcFuncVarArgList>(SlcFuncVarArgList::Order::Positional);
    auto pairs = std::make_unique<SlcFuncVarArgList>(SlcFuncVarArgList::Order::Named);
    for (const SqxParameter& parameter : formals) {
        if (parameter.isOptional)
            tail->Append(SingleOf(card, parameter));
        else if (parameter.isNamed)
            pairs->Append(std::make_unique<SlcFuncVarArgPair>(
                std::string(card.Text(parameter.name)), SingleOf(card, parameter)));
    }
    if (!pairs->GetParts().empty())
        tail->Append(std::move(pairs));
    return tail;
}

SlcCallSIMD GridCallOf(const SqxCard& card)
{
    if (!card.hasGridCall)
        return SlcCallSIMD::NoSimd;
    return SqxCardOf(card.primitive).IsGridOnly() ? SlcCallSIMD::AlwaysSimd : SlcCallSIMD::Simd;
}

}  // namespace

SlcFuncDescription::SlcFuncDescription(const SqxCard& card_)
    : card(card_),
      name(card.Name()),
      returnType(TypeOf(card.result)),
      simd(GridCallOf(card)),
      tail(TailOf(card))
{
    for (const SqxParameter& parameter : card.Formals()) {
        if (IsFixed(parameter)) {
            argTypes.push_back(TypeOf(parameter));
            argDetails.push_back(DetailOf(parameter));
            argStorages.push_back(StorageOf(parameter));
        }
        if (card.hasGridCall && !parameter.isRepeated)
            simdDetails.push_back(parameter.isUniformInGrid ? SlcDetailNode::AUniform()
                                                            : SlcDetailNode::AVarying());
    }
}

std::vector<SlcFuncDescription> SlcFuncDescription::All()
{
    std::vector<SlcFuncDescription> all;
    for (const SqxCard& card : SqxCards())
        if (!card.Name().empty())
            all.emplace_back(card);
    return all;
}
