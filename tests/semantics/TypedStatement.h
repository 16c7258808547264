#pragma once

#include <string>

#include "frontend/SlcExprNodes.h"
#include "helpers/CheckedShader.h"

/// One or more statements after the semantic passes. They are in the body of a shader that declares
/// variables of each type: f1 f2 c1 c2 p1 p2 v1 v2 n1 n2 m1 m2 s1 s2, and the arrays fa and ca.
class TypedStatement {
public:
    /// `kind` is the kind of shader, such as "light". The definitions in `functions` precede it.
    explicit TypedStatement(const std::string& statement, const std::string& kind = "surface",
                            const std::string& functions = "");

    /// Returns all reports without their positions, joined by "; ".
    [[nodiscard]] std::string Reports() const;
    /// Returns the possible types, such as "float color", of the value that the last statement
    /// assigns, or of the call if it is one. It must be an assignment or a call.
    [[nodiscard]] std::string ValueTypes() const;
    /// Returns the text of the same value or call, with the unique type of each expression in it:
    /// "(c1:color * f1:float):color", "sqrt(f1:float):float". A call for which no overload has been
    /// selected is printed as "sqrt?(...)".
    [[nodiscard]] std::string ValueText() const;

private:
    [[nodiscard]] SlcExprNode* Value() const;

    CheckedShader m_shader;
};
