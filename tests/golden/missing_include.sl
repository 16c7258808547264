/* An included file does not exist. */
#include "nowhere.h"
surface missing_include() {}
