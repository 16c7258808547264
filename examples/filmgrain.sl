/* The grain of fast film: strongest in the middle tones, gone in black and white. */
#include "include/shading.h"

imager filmgrain(float amount = 0.1)
{
    float tone = clamp(BRIGHTNESS(Ci), 0, 1);

    Ci += amount * 4 * tone * (1 - tone) * (color random() - 0.5);
}
