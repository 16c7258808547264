#ifndef G
#define G
guarded __FILE__ __LINE__ __INCLUDE_LEVEL__
#include "sub/beside.h"
#endif
