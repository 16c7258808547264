#include "gain.h"
#ifndef TINT
#define TINT 1
#endif
surface tinted()
{
    Ci = GAIN * TINT;
}
