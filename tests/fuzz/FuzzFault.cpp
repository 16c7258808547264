#include <cstdlib>
#include <iostream>

#include "fuzz/FuzzTarget.h"

void FuzzFault(std::string_view message)
{
    // A target may have turned the other stream of errors to itself.
    std::clog << "FAULT: " << message << std::endl;
    std::abort();
}
