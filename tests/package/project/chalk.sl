#include "gain.h"
surface chalk(float gain = GAIN)
{
    Ci = gain * Cs * ambient();
    Oi = Os;
}
