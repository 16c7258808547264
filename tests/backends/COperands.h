#pragma once

#include <string>

#include "icode/SlcICodes.h"

/// Functions that make operands, types and labels for tests of the C++ writer.
namespace CForm {

[[nodiscard]] SlcOperand Local(const char* name, SlcTypeNode* type, SlcDetailNode* detail);
[[nodiscard]] SlcOperand Uniform(const char* name, SlcTypeNode* type = SlcTypeNode::AFloat());
[[nodiscard]] SlcOperand Varying(const char* name, SlcTypeNode* type = SlcTypeNode::AFloat());
/// A predefined variable that generated code reads through `accessor`.
[[nodiscard]] SlcOperand Predefined(const char* accessor, SlcTypeNode* type,
                                    SlcDetailNode* detail = SlcDetailNode::AVarying());
[[nodiscard]] SlcOperand Parameter(const char* name, SlcTypeNode* type, SlcDetailNode* detail);
[[nodiscard]] SlcTypeNode* ArrayOf(SlcTypeNode* element, int length);
[[nodiscard]] SlcTypeNode* RefTo(SlcTypeNode* element);
[[nodiscard]] SlcLabel Label(const char* name);
/// Puts `text` between quotes.
[[nodiscard]] SlcStringLiteralNode* Literal(const std::string& text);
[[nodiscard]] SlcOperand Text(const std::string& text);

}  // namespace CForm
