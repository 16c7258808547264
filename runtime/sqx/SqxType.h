#pragma once

/// The codes of types in a byte-code file. Only constants have the type Int: they stand for omitted
/// arguments and for counts. Bool is the type of flags, also of constant ones. `QxVerifier` rejects
/// parameters of either type.
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

/// Returns the name of a type in messages and dumps; empty for an invalid code.
[[nodiscard]] const char* SqxTypeName(SqxType type);
