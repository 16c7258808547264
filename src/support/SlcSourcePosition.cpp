#include "support/SlcSourcePosition.h"

constinit SlcSourcePosition SlcSourcePosition::sm_current;
