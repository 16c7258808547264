#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

class SlcFloatConstNode;

/// Base of types. Plain types are shared singletons; types of arrays and of references to their
/// elements live in a pool until the compilation ends. Compare types with the operations here,
/// never by address.
class SlcTypeNode : public SlcSyntaxNode {
public:
    // Tests of the kind. Exactly one is true for a type, except in the point family and for
    // references to elements.
    [[nodiscard]] virtual bool IsVoidType() const { return false; }
    [[nodiscard]] virtual bool IsAnyType() const { return false; }
    [[nodiscard]] virtual bool IsFloatType() const { return false; }
    [[nodiscard]] virtual bool IsColorType() const { return false; }
    /// True for the point family: point, vector, normal and the two types that stand for several of
    /// these, `AAnyPoint` and `AAnyVector`.
    [[nodiscard]] virtual bool IsPointType() const { return false; }
    /// True only for the plain point type.
    [[nodiscard]] virtual bool IsTruePointType() const { return false; }
    /// This test and the next are also true for `AAnyPoint` and `AAnyVector`.
    [[nodiscard]] virtual bool IsVectorType() const { return false; }
    [[nodiscard]] virtual bool IsNormalType() const { return false; }
    [[nodiscard]] virtual bool IsAnyVectorType() const { return false; }
    [[nodiscard]] virtual bool IsMatrixType() const { return false; }
    [[nodiscard]] virtual bool IsStringType() const { return false; }
    [[nodiscard]] virtual bool IsArrayType() const { return false; }
    [[nodiscard]] virtual bool IsBoolType() const { return false; }
    [[nodiscard]] virtual bool IsIntType() const { return false; }
    [[nodiscard]] virtual bool IsErrorType() const { return false; }
    /// True for an array element accessed through an index; the tests of the element's type are
    /// also true.
    [[nodiscard]] virtual bool IsArrayRefType() const { return false; }

    /// True if `other` has the same type; the class of this type decides, so the relation is not
    /// symmetric. The point family counts as one type, an array of unspecified length matches any
    /// length, a reference compares like its element, the type any matches every `other` except
    /// void, the error type matches every `other`, and the internal integer matches none.
    [[nodiscard]] virtual bool IsSameType(const SlcTypeNode* other) const;
    /// Like `IsSameType`, but distinguishes point, vector and normal, except as elements of arrays
    /// and for references.
    [[nodiscard]] virtual bool IsSameExactType(const SlcTypeNode* other) const;
    /// True if a value of this type can be used where `other` is required: `IsSameType` holds, or
    /// this is the float type, but not a reference to a float, and `other` is a color, a matrix or
    /// in the point family.
    [[nodiscard]] virtual bool IsPromotableAs(const SlcTypeNode* other) const;

    /// Returns the word for the type; for an array, with its length. `AAnyPoint` returns "point",
    /// `AAnyVector` "vector".
    [[nodiscard]] virtual std::string ToString() const = 0;

    /// The singletons of the plain types.
    [[nodiscard]] static SlcTypeNode* AFloat();
    [[nodiscard]] static SlcTypeNode* AString();
    [[nodiscard]] static SlcTypeNode* AColor();
    [[nodiscard]] static SlcTypeNode* APoint();
    [[nodiscard]] static SlcTypeNode* AVector();
    [[nodiscard]] static SlcTypeNode* ANormal();
    [[nodiscard]] static SlcTypeNode* AMatrix();
    /// Point, vector or normal, in signatures of built-ins and as the type of a cross product.
    [[nodiscard]] static SlcTypeNode* AAnyPoint();
    /// Vector or normal, in signatures of built-ins.
    [[nodiscard]] static SlcTypeNode* AAnyVector();
    [[nodiscard]] static SlcTypeNode* AInteger();
    [[nodiscard]] static SlcTypeNode* ABoolean();
    [[nodiscard]] static SlcTypeNode* AAnyType();
    [[nodiscard]] static SlcTypeNode* AVoid();
    [[nodiscard]] static SlcTypeNode* AError();

    /// Makes the type of arrays of unspecified length. This and the next three operations make a
    /// new node on each call.
    [[nodiscard]] static SlcTypeNode* CreateArrayType(SlcTypeNode* element);
    /// The length is the value, truncated toward zero; it must be in the range of `int`.
    [[nodiscard]] static SlcTypeNode* CreateArrayType(SlcTypeNode* element,
                                                      const SlcFloatConstNode* length);
    /// A length of 0 means unspecified.
    [[nodiscard]] static SlcTypeNode* CreateArrayType(SlcTypeNode* element, int length);
    /// Makes the type of a reference to an array element of type `element`.
    [[nodiscard]] static SlcTypeNode* CreateArrayRefType(SlcTypeNode* element);
};

/// `float`, the only kind of number; promoted to colors, matrices and the point family.
class SlcFloatTypeNode : public SlcVisitable<SlcFloatTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsFloatType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] bool IsPromotableAs(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "float"; }
};

/// `string`
class SlcStringTypeNode : public SlcVisitable<SlcStringTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsStringType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "string"; }
};

/// `color`
class SlcColorTypeNode : public SlcVisitable<SlcColorTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsColorType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "color"; }
};

/// The plain point, and base of the rest of the point family.
class SlcPointTypeNode : public SlcVisitable<SlcPointTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsPointType() const override { return true; }
    [[nodiscard]] bool IsTruePointType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "point"; }
};

/// `vector`: a direction with a length.
class SlcVectorTypeNode : public SlcVisitable<SlcVectorTypeNode, SlcPointTypeNode> {
public:
    [[nodiscard]] bool IsTruePointType() const override { return false; }
    [[nodiscard]] bool IsVectorType() const override { return true; }
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "vector"; }
};

/// `normal`: a direction perpendicular to a surface, which transforms differently from a vector.
class SlcNormalTypeNode : public SlcVisitable<SlcNormalTypeNode, SlcPointTypeNode> {
public:
    [[nodiscard]] bool IsTruePointType() const override { return false; }
    [[nodiscard]] bool IsNormalType() const override { return true; }
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] bool IsPromotableAs(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "normal"; }
};

/// Any member of the point family (`AAnyPoint`). The tests for point, vector and normal are true.
class SlcAnyPointTypeNode : public SlcVisitable<SlcAnyPointTypeNode, SlcPointTypeNode> {
public:
    [[nodiscard]] bool IsTruePointType() const override { return false; }
    [[nodiscard]] bool IsVectorType() const override { return true; }
    [[nodiscard]] bool IsNormalType() const override { return true; }
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "point"; }
};

/// A vector or a normal (`AAnyVector`). The tests for point, vector and normal are true.
class SlcAnyVectorTypeNode : public SlcVisitable<SlcAnyVectorTypeNode, SlcPointTypeNode> {
public:
    [[nodiscard]] bool IsTruePointType() const override { return false; }
    [[nodiscard]] bool IsVectorType() const override { return true; }
    [[nodiscard]] bool IsNormalType() const override { return true; }
    [[nodiscard]] bool IsAnyVectorType() const override { return true; }
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "vector"; }
};

/// `matrix`, of four rows and columns; stored row by row.
class SlcMatrixTypeNode : public SlcVisitable<SlcMatrixTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsMatrixType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "matrix"; }
};

/// Internal: the type of constants that the compiler adds to calls, such as counts; sources cannot
/// name it.
class SlcIntTypeNode : public SlcVisitable<SlcIntTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsIntType() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "int"; }
};

/// Internal: the type of the values of conditions; sources cannot name it.
class SlcBoolTypeNode : public SlcVisitable<SlcBoolTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsBoolType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "boolean"; }
};

/// Any type except void: of formals of built-ins, of formals whose type is unknown, and of the
/// elements of an empty `{}`.
class SlcAnyTypeNode : public SlcVisitable<SlcAnyTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsAnyType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "any"; }
};

/// `void`: the result of a function without a value.
class SlcVoidTypeNode : public SlcVisitable<SlcVoidTypeNode, SlcTypeNode> {
public:
    [[nodiscard]] bool IsVoidType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "void"; }
};

/// The type of an expression or a name after a report: its comparisons match every type, so that
/// one fault leads to one report. Walkers treat it as a `SlcTypeNode`.
class SlcErrorTypeNode : public SlcTypeNode {
public:
    void ApplyWalker(SlcCodeWalker* walker) override { SlcCallCase<SlcTypeNode>(*walker, this); }
    [[nodiscard]] bool IsErrorType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] bool IsSameExactType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return "error"; }
};

/// `float[3]`, or `float[]` where the length is unspecified.
class SlcArrayTypeNode : public SlcVisitable<SlcArrayTypeNode, SlcTypeNode> {
public:
    SlcArrayTypeNode(SlcTypeNode* element, int length) : m_element(element), m_length(length) {}

    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] bool IsArrayType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override;

    [[nodiscard]] SlcTypeNode* GetElementType() const { return m_element; }
    /// 0 for an unspecified length.
    [[nodiscard]] int GetLength() const { return m_length; }

private:
    SlcTypeNode* m_element;
    int m_length;
};

/// The type of an array element accessed through an index: tests of the element's type are true.
class SlcArrayRefTypeNode : public SlcVisitable<SlcArrayRefTypeNode, SlcTypeNode> {
public:
    explicit SlcArrayRefTypeNode(SlcTypeNode* element) : m_element(element) {}

    [[nodiscard]] bool IsVoidType() const override { return m_element->IsVoidType(); }
    [[nodiscard]] bool IsAnyType() const override { return m_element->IsAnyType(); }
    [[nodiscard]] bool IsFloatType() const override { return m_element->IsFloatType(); }
    [[nodiscard]] bool IsColorType() const override { return m_element->IsColorType(); }
    [[nodiscard]] bool IsPointType() const override { return m_element->IsPointType(); }
    [[nodiscard]] bool IsTruePointType() const override { return m_element->IsTruePointType(); }
    [[nodiscard]] bool IsVectorType() const override { return m_element->IsVectorType(); }
    [[nodiscard]] bool IsNormalType() const override { return m_element->IsNormalType(); }
    [[nodiscard]] bool IsAnyVectorType() const override { return m_element->IsAnyVectorType(); }
    [[nodiscard]] bool IsMatrixType() const override { return m_element->IsMatrixType(); }
    [[nodiscard]] bool IsStringType() const override { return m_element->IsStringType(); }
    [[nodiscard]] bool IsArrayType() const override { return m_element->IsArrayType(); }
    [[nodiscard]] bool IsBoolType() const override { return m_element->IsBoolType(); }
    [[nodiscard]] bool IsIntType() const override { return m_element->IsIntType(); }
    [[nodiscard]] bool IsErrorType() const override { return m_element->IsErrorType(); }
    [[nodiscard]] bool IsArrayRefType() const override { return true; }
    [[nodiscard]] bool IsSameType(const SlcTypeNode* other) const override;
    [[nodiscard]] std::string ToString() const override { return m_element->ToString(); }

    [[nodiscard]] SlcTypeNode* GetElementType() const { return m_element; }

private:
    SlcTypeNode* m_element;
};
