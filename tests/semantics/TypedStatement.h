#pragma once

#include <string>

#include "frontend/SlcExprNodes.h"
#include "helpers/CheckedShader.h"

/// A statement after the semantic passes. It is in the body of a shader that declares variables of
/// each type: f1 f2 c1 c2 p1 p2 v1 v2 n1 n2 m1 m2 s1 s2, and the arrays fa and ca.
class TypedStatement {
public:
    /// `functions` precede the shader.
    explicit TypedStatement(const std::string& statement, const std::string& kind = "surface",
                            const std::string& functions = "");

    /// Returns the reports of the statement without their positions, joined by "; ".
    [[nodiscard]] std::string Reports() const;
    /// Returns the possible types of the value that the statement assigns, such as "float color".
    /// The statement must be an assignment.
    [[nodiscard]] std::string ValueTypes() const;
    /// Returns the assigned value, or the call if the statement is one, with the unique type of
    /// each part: "(c1:color * f1:float):color", "sqrt(f1:float):float". A call without an overload
    /// shows as "sqrt?(...)".
    [[nodiscard]] std::string ValueText() const;

private:
    [[nodiscard]] SlcExprNode* Value() const;

    CheckedShader m_shader;
};
