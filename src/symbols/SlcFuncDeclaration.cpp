// Tested by tests/reference, whose pages contain these declarations.

#include "symbols/SlcFuncDeclaration.h"

namespace {

std::string TailText(const SlcFuncVarArgExpr& part)
{
    if (const auto* single = dynamic_cast<const SlcFuncVarArgSingle*>(&part))
        return SlcFormalText(single->GetType(), single->GetDetail(), single->GetStorage()) +
               (single->IsRepeated() ? " ..." : "");
    if (const auto* pair = dynamic_cast<const SlcFuncVarArgPair*>(&part))
        return "\"" + pair->GetName() + "\", " + TailText(*pair->GetValue());
    std::string text;
    for (const auto& member : dynamic_cast<const SlcFuncVarArgList&>(part).GetParts())
        text += (text.empty() ? "" : ", ") + TailText(*member);
    return text;
}

}  // namespace

std::string SlcFormalText(const SlcTypeNode* type, const SlcDetailNode* detail,
                          const SlcStorageSpecNode* storage)
{
    std::string text;
    if (storage && storage->IsOutput())
        text += "output ";
    if (detail && detail->IsUniform())
        text += "uniform ";
    return text + type->ToString();
}

std::string SlcDeclarationText(const SlcFuncShape& function)
{
    std::string text = function.returnType->ToString() + " ";
    text.append(function.name).append("(");
    for (std::size_t i = 0; i < function.argTypes.size(); ++i)
        text.append(i == 0 ? "" : ", ")
            .append(SlcFormalText(function.argTypes[i], function.argDetails[i],
                                  function.argStorages[i]));
    if (function.tail) {
        const std::string tail = TailText(*function.tail);
        const bool repeated = tail.ends_with(" ...");
        text += function.argTypes.empty() ? "" : repeated ? ", " : " [, ";
        text += tail + (repeated ? "" : "]");
    }
    return text + ")";
}
