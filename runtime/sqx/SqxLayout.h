#pragma once

#include <string_view>

/// What follows the number of an instruction in a code block, as the writer lays it out and
/// everyone who reads the file takes it apart.
struct SqxLayout {
    std::string_view name;       // as in the table of numbers
    std::string_view primitive;  // the name without "_SIMD" and "_IF_TRUE"
    bool simd = false;           // runs over all points by itself
    bool conditional = false;    // limited to the points of a flag
    std::string_view operands;   // one letter for each value, see below

    // The letters:
    //   w  variable that is written        j  position in the block to go to
    //   r  variable that is read           s  number of a coordinate space
    //   m  variable that is both           i  literal number
    //   c  flag of the points to run for   d  number of a shadeop function
    //   n  count of the variables that stand at *
    //   *  that many variables

    /// The layout of an instruction number; null if it is not assigned or the compiler never
    /// writes it.
    [[nodiscard]] static const SqxLayout* Find(int number);
};
