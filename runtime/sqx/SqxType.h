#pragma once

/// Types of variables by the codes of the file. Int is that of literal numbers in code, and Bool
/// that of flags and constants; no parameter has either.
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

/// As messages and dumps call it; empty for a code that is none.
[[nodiscard]] const char* SqxTypeName(SqxType type);
