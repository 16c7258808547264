#pragma once

#include <string>

#include "frontend/SlcTypeNode.h"

class SlcShaderTypeNode;

/// Maps types of the language to the C++ types that hold their values.
class SlcEquCType {
public:
    /// Returns the C++ type of a value; for a reference to an array element, a pointer. Any other
    /// type is fatal, even an array, whose declaration is written with the type of its elements.
    [[nodiscard]] std::string GetString(const SlcTypeNode* type) const;
};

/// Maps kinds of shaders to the enumerators that generated files use.
class SlcEquCShaderType {
public:
    /// Returns the name of the enumerator, with its class. An unknown kind is fatal.
    [[nodiscard]] std::string GetString(const SlcShaderTypeNode* type) const;
};
