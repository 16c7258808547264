/* The preprocessor does not find an included file. */
#include "nowhere.h"
surface missing_include() {}
