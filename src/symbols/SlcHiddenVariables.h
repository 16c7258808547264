#pragma once

#include <span>
#include <string_view>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

/// The predefined variables of shaders: `P`, `Cs` and the like. SlcShaderSymbolTable.cpp specifies
/// which kind of shader has which variables.
class SlcHiddenVariables {
public:
    struct VarInfo {
        const char* name;
        SlcTypeNode* (*type)();
        SlcDetailNode* (*detail)();
        const char* accessor;  // the expression for the variable in generated code
    };

    /// Returns all predefined variables of all kinds of shaders.
    [[nodiscard]] static std::span<const VarInfo> All();
    /// Returns `PI`, which belongs to no kind of shader and is available in all code.
    [[nodiscard]] static const VarInfo& Pi();
    /// Returns the variable of this name. An unknown name is a fault of the compiler, and fatal.
    [[nodiscard]] static const VarInfo& GetVarInfoHidden(std::string_view name);
    /// Returns the variable of this name; null for an unknown name.
    [[nodiscard]] static const VarInfo* FindVarInfoHidden(std::string_view name);
    /// Returns the three variables that a light loop (`illuminance`) adds.
    [[nodiscard]] static std::span<const VarInfo> AllOfIlluminance();
    /// Returns the variable of this name in a light loop. An unknown name is fatal.
    [[nodiscard]] static const VarInfo& GetVarInfoIlluminance(std::string_view name);
    /// Returns the variable of this name in a light loop; null for an unknown name.
    [[nodiscard]] static const VarInfo* FindVarInfoIlluminance(std::string_view name);
};
