# Functions that print the example programs of documents. The tests `embedding` and `package` source
# this file.
# shellcheck shell=bash

# Prints the first block of C++ in the page $1 that contains the text $2.
block() {
    awk -v text="$2" '
        /^```cpp$/ { inside = 1; block = ""; next }
        /^```$/ && inside { inside = 0; if (index(block, text)) { printf "%s", block; exit } next }
        inside { block = block $0 "\n" }' "$1"
}

# Prints the program patch.cpp of the page $1.
patch_program() {
    block "$1" '// patch.cpp'
}
# Prints the first line of its output that the page $1 shows.
patch_output() {
    sed -n '/^\$ .\/patch/{n;p;q}' "$1"
}

# Prints the example of the README $1, completed to a program that prints its colors.
readme_program() {
    echo '#include <iostream>'
    block "$1" '#include "host/QxHost.h"' | sed '/^#include/!d'
    echo 'int main() {'
    block "$1" '#include "host/QxHost.h"' | sed '/^#include/d'
    echo 'for (const QxRGBColor& c : colors) std::cout << c.r << " " << c.g << " " << c.b << std::endl; }'
}
