#pragma once

#include <string>

#include "frontend/SlcTypeNode.h"

class SlcShaderTypeNode;

/// Maps types of the language to the C++ types that hold their values.
class SlcEquCType {
public:
    /// A reference to an array's element becomes a pointer. A whole array has no C++ type: its
    /// declaration is written with the element's type. Any other type is fatal.
    [[nodiscard]] std::string GetString(const SlcTypeNode* type) const;
};

/// Maps kinds of shaders to the enumerators that generated files use.
class SlcEquCShaderType {
public:
    [[nodiscard]] std::string GetString(const SlcShaderTypeNode* type) const;
};
