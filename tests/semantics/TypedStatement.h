#pragma once

#include <string>

#include "frontend/SlcExprNodes.h"
#include "helpers/CheckedShader.h"

/// A statement in the body of a shader that declares a few variables of each type, after the
/// semantic passes: f1 f2 c1 c2 p1 p2 v1 v2 n1 n2 m1 m2 s1 s2, and the arrays fa and ca.
class TypedStatement {
public:
    /// `functions` precede the shader.
    explicit TypedStatement(const std::string& statement, const std::string& kind = "surface",
                            const std::string& functions = "");

    /// The reports of the statement, without their place, joined by "; ".
    [[nodiscard]] std::string Reports() const;
    /// The possible types of the value that the statement, an assignment, assigns: "float color".
    [[nodiscard]] std::string ValueTypes() const;
    /// The value, or the call that the statement is, with the one type of each part:
    /// "(c1:color * f1:float):color", "sqrt(f1:float):float". A call without an overload shows
    /// as "sqrt?(...)".
    [[nodiscard]] std::string ValueText() const;

private:
    [[nodiscard]] SlcExprNode* Value() const;

    CheckedShader m_shader;
};
