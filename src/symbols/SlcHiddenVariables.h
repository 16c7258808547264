#pragma once

#include <span>
#include <string_view>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

/// The predefined variables of shaders: `P`, `Cs` and the like. Which kind of shader knows which of
/// them is told in SlcShaderSymbolTable.cpp.
class SlcHiddenVariables {
public:
    struct VarInfo {
        const char* name;
        SlcTypeNode* (*type)();
        SlcDetailNode* (*detail)();
        const char* accessor;  // the text by which generated code reaches the variable
    };

    /// All of them, whichever kind of shader knows them.
    [[nodiscard]] static std::span<const VarInfo> All();
    /// A name that no shader knows is a fault of the compiler, and fatal.
    [[nodiscard]] static const VarInfo& GetVarInfoHidden(std::string_view name);
    /// Null for a name that no shader knows.
    [[nodiscard]] static const VarInfo* FindVarInfoHidden(std::string_view name);
    /// The three variables that a light loop adds.
    [[nodiscard]] static std::span<const VarInfo> AllOfIlluminance();
    /// Another name is fatal.
    [[nodiscard]] static const VarInfo& GetVarInfoIlluminance(std::string_view name);
    /// Null for any other name.
    [[nodiscard]] static const VarInfo* FindVarInfoIlluminance(std::string_view name);
};
