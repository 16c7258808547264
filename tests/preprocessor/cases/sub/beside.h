#include "deep.h"
b __INCLUDE_LEVEL__
