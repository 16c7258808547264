#include "support/SlcSourcePosition.h"

SlcSourcePosition SlcSourcePosition::sm_current;
