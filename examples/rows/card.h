/*
 * A test card: strips side by side across s, each of which shows one value. The shader has a
 * variable `shown` for it, and says how many strips there are.
 */
#define CARD(count)                    \
    float strip = floor((count) * s); \
    uniform float place = 0

#define SHOW(value)          \
    {                        \
        if (strip == place)  \
            shown = (value); \
        place += 1;          \
    }
