// There is one object for each detail. It is made on first use, since the constructors of other
// static objects may need it.
//
// Of a uniform operand and one that may turn out varying, the result has unknown detail, since a
// function's body is checked before its calls determine the details of the formals.
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
