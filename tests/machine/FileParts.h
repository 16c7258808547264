#pragma once

#include <string>

/// A file whose main block is `code`: numbers, names of instructions, and names of variables. These
/// are s P Ci, Kd and w, then of uniform (u) and varying (v) locals: f a float, b a flag, p a point
/// or c a color, m a matrix, s a string, a an array of three floats, e a reference to a float; then
/// the constants #1 1.0, #a "a", #0 the integer 0, #t a true flag. The parts can be changed before
/// the file is written.
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

/// The count of the numbers of code, then the numbers, one per line.
[[nodiscard]] std::string CodeText(const std::string& code);
