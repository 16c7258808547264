#pragma once

#include <algorithm>
#include <string_view>

/// Where an instruction may stand, and for which points it runs.
enum class SqxRun : unsigned char {
    Point,   // within the parallel brackets at each point; outside of them once for the grid
    Grid,    // only outside of them, and it sees all points at once
    Reduce,  // like Grid; makes one value for the grid from those of the points
    Answer,  // like Point; the answer may be one for the grid though it depends on points
    Shaded,  // like Point, but looks at the shading point itself: never once for the grid
};

/// What follows the number of an instruction in a code block, as the writer lays it out and
/// everyone who reads the file takes it apart.
struct SqxLayout {
    std::string_view name;       // as in the table of numbers
    std::string_view primitive;  // the name without "_SIMD" and "_IF_TRUE"
    bool simd = false;           // runs over all points by itself
    bool conditional = false;    // limited to the points of a flag
    bool endsInList = false;     // the last type may be repeated, or left out
    SqxRun run = SqxRun::Point;
    std::string_view operands;  // one letter for each value, see below
    std::string_view types;     // likewise; values of a list have letters of their own

    // The letters of operands:
    //   w  variable that is written        j  position in the block to go to
    //   r  variable that is read           s  number of a coordinate space
    //   m  variable that is both           i  literal number
    //   c  flag of the points to run for   d  number of a shadeop function
    //   n  count of the variables that stand at *
    //   *  that many variables
    //
    // The letters of types:
    //   f  float     t  point, vector, normal or color
    //   m  matrix    s  string     b  flag, also the letter of conditions
    //   a  one of the former but a flag    A  the same, or an array of them
    //   [  array     e  reference that is bound to an element of the array
    //   F, T, S  like f, t and s, or a literal integer, which leaves the argument out
    //   N  a float, a literal integer or a triple
    //   -  no variable

    /// The layout of an instruction number; null if it is not assigned or the compiler never
    /// writes it.
    [[nodiscard]] static const SqxLayout* Find(int number);

    /// The letter of value `i`.
    [[nodiscard]] char Type(std::size_t i) const { return types[std::min(i, types.size() - 1)]; }
    /// The least number of values.
    [[nodiscard]] std::size_t LeastCount() const { return types.size() - (endsInList ? 1 : 0); }
};
