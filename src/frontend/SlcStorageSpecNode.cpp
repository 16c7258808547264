// There is one object for each storage class. It is made on first use, since the constructors of
// other static objects may need it.

#include "frontend/SlcStorageSpecNode.h"

namespace {

template <class Storage>
SlcStorageSpecNode* Singleton()
{
    static Storage storage;
    return &storage;
}

}  // namespace

SlcStorageSpecNode* SlcStorageSpecNode::AInput()
{
    return Singleton<SlcInputSpecNode>();
}
SlcStorageSpecNode* SlcStorageSpecNode::AOutput()
{
    return Singleton<SlcOutputSpecNode>();
}
SlcStorageSpecNode* SlcStorageSpecNode::AExtern()
{
    return Singleton<SlcExternSpecNode>();
}
SlcStorageSpecNode* SlcStorageSpecNode::ALocal()
{
    return Singleton<SlcLocalSpecNode>();
}
SlcStorageSpecNode* SlcStorageSpecNode::AReadOnly()
{
    return Singleton<SlcReadOnlySpecNode>();
}
SlcStorageSpecNode* SlcStorageSpecNode::AReadWrite()
{
    return Singleton<SlcReadWriteSpecNode>();
}
