// One object for each detail, made when it is first asked for: other statics may ask.
//
// If one of two operands may turn out varying, the result stays open: unknown beats uniform, since
// a function's body is checked before the details of its arguments are known from its calls.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "frontend/SlcDetailNode.h"

namespace {

template <class Detail>
SlcDetailNode* Singleton()
{
    static Detail detail;
    return &detail;
}

}  // namespace

SlcDetailNode* SlcDetailNode::AUnknown()
{
    return Singleton<SlcUnknownDetailNode>();
}
SlcDetailNode* SlcDetailNode::AUniform()
{
    return Singleton<SlcUniformNode>();
}
SlcDetailNode* SlcDetailNode::AVarying()
{
    return Singleton<SlcVaryingNode>();
}
SlcDetailNode* SlcDetailNode::ATempUniform()
{
    return Singleton<SlcTempUniformNode>();
}

SlcDetailNode* SlcDetailNode::Combine(const SlcDetailNode* first, const SlcDetailNode* second)
{
    if (first->IsVarying() || second->IsVarying())
        return AVarying();
    if (first->IsUnknownDetail() || second->IsUnknownDetail())
        return AUnknown();
    return AUniform();
}
