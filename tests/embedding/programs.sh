# Sourced by tests: the programs that documents show.
# shellcheck shell=bash

# The block of C++ in $1 that holds the text $2.
block() {
    awk -v text="$2" '
        /^```cpp$/ { inside = 1; block = ""; next }
        /^```$/ && inside { inside = 0; if (index(block, text)) { printf "%s", block; exit } next }
        inside { block = block $0 "\n" }' "$1"
}

# The whole program of the page $1, and what it prints there.
patch_program() {
    block "$1" '// patch.cpp'
}
patch_output() {
    sed -n '/^\$ .\/patch/{n;p;q}' "$1"
}

# The example of the README $1, with what it leaves out.
readme_program() {
    echo '#include <iostream>'
    block "$1" '#include "host/QxHost.h"' | sed '/^#include/!d'
    echo 'int main() {'
    block "$1" '#include "host/QxHost.h"' | sed '/^#include/d'
    echo 'for (const QxRGBColor& c : colors) std::cout << c.r << " " << c.g << " " << c.b << std::endl; }'
}
