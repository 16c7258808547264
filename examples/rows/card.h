/*
 * A test card: strips side by side across s, each of which shows one value. The shader
 * declares the output `shown` for it, and passes the number of strips to CARD.
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
