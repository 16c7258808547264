#include <cstdlib>
#include <iostream>

#include "fuzz/FuzzTarget.h"

void FuzzFault(std::string_view message)
{
    // A target may have redirected std::cerr.
    std::clog << "FAULT: " << message << std::endl;
    std::abort();
}
