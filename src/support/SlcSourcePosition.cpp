#include "support/SlcSourcePosition.h"

SlcSourcePosition& SlcCurrentPosition()
{
    static SlcSourcePosition position;
    return position;
}
