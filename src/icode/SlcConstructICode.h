#pragma once

#include <deque>

#include "icode/SlcICode.h"

/// dest = (x, y, z), as a point: `point (x, y, z)`, and a triple without a type name. Each
/// component is a uniform or varying float.
class SlcPointICode : public SlcICodeOf<SlcPointICode, SlcICode> {
public:
    SlcPointICode() = default;
    SlcPointICode(SlcOperand dest, SlcOperand x, SlcOperand y, SlcOperand z)
        : m_dest(std::move(dest)),
          m_x(std::move(x)),
          m_y(std::move(y)),
          m_z(std::move(z))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_x;
    SlcOperand m_y;
    SlcOperand m_z;
};

/// `vector (x, y, z)`. Differs from a point only in the type of dest, which transforms differently.
class SlcVectorICode : public SlcICodeOf<SlcVectorICode, SlcPointICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `normal (x, y, z)`. Differs from a point only in the type of dest.
class SlcNormalICode : public SlcICodeOf<SlcNormalICode, SlcPointICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// dest = (r, g, b), three floats: `color (r, g, b)`.
class SlcColorICode : public SlcICodeOf<SlcColorICode, SlcICode> {
public:
    SlcColorICode() = default;
    SlcColorICode(SlcOperand dest, SlcOperand r, SlcOperand g, SlcOperand b)
        : m_dest(std::move(dest)),
          m_r(std::move(r)),
          m_g(std::move(g)),
          m_b(std::move(b))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_r;
    SlcOperand m_g;
    SlcOperand m_b;
};

/// dest = the matrix of 16 floats, row by row: `matrix (a, b, ...)`.
class SlcMatrixICode : public SlcICodeOf<SlcMatrixICode, SlcICode> {
public:
    SlcMatrixICode(SlcOperand dest, std::deque<SlcOperand> values)
        : m_dest(std::move(dest)),
          m_values(std::move(values))
    {
    }

    SlcOperand m_dest;
    std::deque<SlcOperand> m_values;
};
