#pragma once

/// The codes of types in the file. Int is the type of literal numbers in code, and Bool that of
/// flags and constants; no parameter has either.
enum class SqxType {
    Float = 1,
    Point = 2,
    Color = 3,
    String = 4,
    Int = 5,
    Matrix = 7,
    Vector = 8,
    Normal = 9,
    Bool = 10,
};

/// Returns the name in messages and dumps; empty for an invalid code.
[[nodiscard]] const char* SqxTypeName(SqxType type);
