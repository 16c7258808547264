#pragma once

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"

/// Base of the coordinate and color transforms between a named space and the current one. `type`
/// selects the transform: point, vector, normal or color. A vector ignores the translation, a
/// normal stays perpendicular to its surface, and a color uses color spaces.
class SlcTransformSpaceICode : public SlcICode {
public:
    /// `space` is a string constant with its quotes.
    SlcTransformSpaceICode(SlcOperand dest, SlcOperand source, SlcTypeNode* type, SlcOperand space,
                           SlcGridForm form)
        : m_dest(std::move(dest)),
          m_source(std::move(source)),
          m_type(type),
          m_space(std::move(space)),
          m_form(std::move(form))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
    SlcTypeNode* m_type;
    SlcOperand m_space;  // a string constant
    SlcGridForm m_form;
};

/// For `point "space" (x, y, z)` and other casts, and for `transform("space", "other", p)` and
/// similar calls: source is in the named space, dest in the current one or, for a color, in rgb.
class SlcTransformFromSpaceICode
    : public SlcICodeOf<SlcTransformFromSpaceICode, SlcTransformSpaceICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// For `transform("space", p)` and similar calls: source is in the current space, dest in the named
/// one. `ctransform` has separate primitives.
class SlcTransformToSpaceICode
    : public SlcICodeOf<SlcTransformToSpaceICode, SlcTransformSpaceICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// dest = the matrix source, given relative to a named space, converted to the current space:
/// `matrix "space" (a, b, ...)`.
class SlcConcatSpaceMatrixICode : public SlcICodeOf<SlcConcatSpaceMatrixICode, SlcICode> {
public:
    SlcConcatSpaceMatrixICode(SlcOperand dest, SlcOperand source, SlcStringLiteralNode* space)
        : m_dest(std::move(dest)),
          m_source(std::move(source)),
          m_space(space)
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
    SlcStringLiteralNode* m_space;
};
