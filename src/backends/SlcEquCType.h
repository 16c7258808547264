#pragma once

#include <string>

#include "frontend/SlcTypeNode.h"

class SlcShaderTypeNode;

/// The C++ type that holds a value of a type of the language.
class SlcEquCType {
public:
    /// A reference to an array's element is a pointer. An array as a whole has no C++ type: its
    /// declaration is written with the type of the element. Any other type is fatal.
    [[nodiscard]] std::string GetString(const SlcTypeNode* type) const;
};

/// The enumerator by which a generated file states its kind of shader.
class SlcEquCShaderType {
public:
    [[nodiscard]] std::string GetString(const SlcShaderTypeNode* type) const;
};
