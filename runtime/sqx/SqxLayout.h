#pragma once

#include <algorithm>
#include <string_view>

#include "sqx/SqxCard.h"

/// The layout of the values after the number of an instruction in a code block. All readers of
/// blocks use it.
struct SqxLayout {
    std::string_view name;  // with the suffix of the form
    SqxPrimitive primitive{};
    bool simd = false;         // a whole-grid form, with "_SIMD" in the name
    bool conditional = false;  // runs only for points whose flag is set
    bool endsInList = false;   // the last letter of `types` may be repeated or left out
    SqxRun run = SqxRun::Point;
    std::string_view operands;  // one letter per value, but only one for a list; see below
    std::string_view types;     // one letter per value; the last one may stand for several

    // The letters of operands:
    //   w  variable that is written        j  position in the block: target of a jump
    //   r  variable that is read           s  number of a coordinate space
    //   m  variable read and written       i  literal number
    //   c  flag of the points to run for   d  number of a shadeop function
    //   n  number of variables at the `*`
    //   *  list of `n` variables, which are read
    //
    // The letters of types:
    //   f  float     t  point, vector, normal or color
    //   m  matrix    s  string     b  flag, also the letter of conditions
    //   a  any of these except a flag      A  like a, or an array of such values
    //   [  array     e  reference that is bound to an element of the array
    //   F, T, S  like f, t and s, or an integer constant if the argument is omitted
    //   N  like f or t, or an integer constant
    //   -  not a variable

    /// Returns the layout of an instruction number; null if the number is not assigned or the
    /// compiler never writes it.
    [[nodiscard]] static const SqxLayout* Find(int number);

    /// Returns the letter in `types` for value `i`.
    [[nodiscard]] char Type(std::size_t i) const { return types[std::min(i, types.size() - 1)]; }
    /// Returns the minimum number of values.
    [[nodiscard]] std::size_t LeastCount() const { return types.size() - (endsInList ? 1 : 0); }
};

/// True if an instruction writes a value with this letter in `SqxLayout::operands`.
[[nodiscard]] inline bool SqxIsWritten(char letter)
{
    return letter == 'w' || letter == 'm';
}
