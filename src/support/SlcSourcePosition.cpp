#include "support/SlcSourcePosition.h"

#include "support/SlcCompilation.h"

SlcSourcePosition& SlcCurrentPosition()
{
    return SlcPartOfCompilation<SlcSourcePosition>();
}
