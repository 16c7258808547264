/* A shadeop that the build of the project compiles. */
#include "QxShadeop.h"

QX_SHADEOP_TABLE(twist) = {
    {"float twist(float)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void twist(void* data, int argc, void** argv)
{
    *(float*)argv[0] = 1 - *(const float*)argv[1];
}
