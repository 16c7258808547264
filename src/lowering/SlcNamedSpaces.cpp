// Tested by tests/lowering/SlcInterFormTest.cpp.

#include "lowering/SlcNamedSpaces.h"

#include "frontend/SlcNodes.h"

bool SlcLivesInSpace(const SlcTypeNode* type)
{
    return type->IsPointType() || type->IsMatrixType();
}

SlcStringLiteralNode* SlcSpaceNamedBy(const SlcCastExprNode* cast)
{
    return SlcLivesInSpace(cast->GetType()) ? cast->GetSpace() : nullptr;
}

std::vector<SlcStringLiteralNode*> SlcSpacesNamedBy(const SlcProcCallExprNode* call)
{
    const std::string& name = call->GetIdent()->GetName();
    std::vector<SlcStringLiteralNode*> spaces;
    if (name != "transform" && name != "vtransform" && name != "ntransform")
        return spaces;
    for (const auto& argument : call->GetArguments()->GetArgs()) {
        const auto* constant = dynamic_cast<const SlcConstExprNode*>(argument.get());
        if (constant && constant->GetStringConst())
            spaces.push_back(constant->GetStringConst());
    }
    return spaces;
}
