#pragma once

#include <span>
#include <string_view>

/// A call of a built-in function and its result, for the reference page. A test runs all examples
/// as byte-code and as shared objects.
///
/// The examples run at the middle point of the host's square of 5 by 5 points, where s, t, u and v
/// are 0.5, P and I are (0, 0, 1), and N and Ng are (0, 0, -1). The scene has a white point light
/// at (0, 1, 0), an ambient light of 0.1, the space "shader", which is twice as large as the
/// current one and moved by (1, 0, 0), and the attribute "tag", a float of 7.
struct SqxBuiltInExample {
    std::string_view function;
    std::string_view type;  // of the expression, such as "color"
    std::string_view code;  // an expression; statements that prepare it come first
    /// A number, a triple in parentheses, a text in quotes, "no number", "infinite", or another
    /// expression of the language that has the same value.
    std::string_view value;
    std::string_view note;  // empty, or what the example shows
};

/// Returns all examples; those of a function are adjacent.
[[nodiscard]] std::span<const SqxBuiltInExample> SqxBuiltInExamples();
