#pragma once

#include <string>

/// A byte-code file whose main block is `code`: numbers, names of instructions, and names of
/// variables. The variables are s P Ci, Kd and w. Uniform locals (u) and varying locals (v) have a
/// second letter for their type: f is a float, b a flag, p a point or c a color, m a matrix, s a
/// string, a an array of three floats, and e a reference to a float. The constants are #1 for 1.0,
/// #a for "a", #0 for the integer 0, and #t for a true flag. The parts can be changed before the
/// file is written.
struct FileParts {
    std::string predefined = "3\ns\nP\nCi\n";                            // s P Ci
    std::string parameters = "2\n\"Kd\" \"uniform float\" \"\" 2 1 1\n"  // Kd
                             "\"w\" \"varying color\" \"\" 3 3 1\n";     // w
    std::string uniforms = "7\n1 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n1 3 0\n1 1 1\n";
    std::string varyings = "6\n1 1 0\n10 1 0\n3 1 0\n4 1 0\n1 3 0\n1 1 1\n";
    std::string constants = "4\n1 1.0\n4 \"a\"\n5 0\n10 1\n";
    std::string total = "22";
    std::string initializers = "0\n0\n0\n0\n0\n0\n0\n0\n0\n0\n";
    std::string shadeops = "0\n0\n";
    std::string code;

    [[nodiscard]] std::string Text() const;
};

/// Returns the numbers of `code`, one per line, after their count.
[[nodiscard]] std::string CodeText(const std::string& code);
