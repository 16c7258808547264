// A shared object that a host must refuse: a shader of the interface version FAKE_MAJOR.FAKE_MINOR,
// without `QxEvaluate` if FAKE_WITHOUT_EVALUATE is defined.

#include "slcShaderCCodeOp.h"

namespace {
int s_registrations = 0;
}

extern "C" {

void QX_SHADER_FUNC QxRegister(QxTokenRegistry*)
{
    ++s_registrations;
}

void QX_SHADER_FUNC QxInterfaceVersion(int* o_majorVersion, int* o_minorVersion)
{
    *o_majorVersion = FAKE_MAJOR;
    *o_minorVersion = FAKE_MINOR;
}

void QX_SHADER_FUNC QxInterrogate(const QxSearchPath*, QxSpaceRegistry*, const QxFrame3D***,
                                  QxShaderInterface::QxType*, QxVar**, unsigned char**,
                                  unsigned char**, QxToken***, QxShaderInterface::QxDataSize**)
{
    std::abort();  // no host may continue with a shader of another version
}

void QX_SHADER_FUNC QxInitialize(const QxShadingContext&, QxVar*, const QxFrame3D**) {}

int QX_SHADER_FUNC QxUseRayTracing(void)
{
    return 0;
}

int QX_SHADER_FUNC QxModifyPoint(void)
{
    return 0;
}

void QX_SHADER_FUNC QxDestroy(const QxFrame3D***)
{
    if (--s_registrations != 0)
        std::abort();  // the host must have registered exactly once since the last call
}

#ifndef FAKE_WITHOUT_EVALUATE
void QX_SHADER_FUNC QxEvaluate() {}
#endif
}
