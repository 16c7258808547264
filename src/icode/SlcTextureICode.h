#pragma once

#include <array>

#include "icode/SlcICode.h"

/// Computes the four corners of the patch around (s, t) that a point covers, s then t of each.
/// Emitted before a `texture` call that does not specify the corners. All operands are varying.
/// Always a whole-grid instruction, outside parallel runs, since the size of the patch depends on
/// the neighbouring points.
class SlcTextureSTPointsICode : public SlcICodeOf<SlcTextureSTPointsICode, SlcICode> {
public:
    SlcTextureSTPointsICode() = default;
    SlcTextureSTPointsICode(SlcOperand s, SlcOperand t, std::array<SlcOperand, 8> corners,
                            SlcOperand condition)
        : m_s(std::move(s)),
          m_t(std::move(t)),
          m_corners(std::move(corners)),
          m_condition(std::move(condition))
    {
    }

    SlcOperand m_s;
    SlcOperand m_t;
    std::array<SlcOperand, 8> m_corners;
    SlcOperand m_condition;  // flag of the points to run for; null for all
};

/// Computes the four corners of the patch around a point. Emitted before an `environment` or
/// `shadow` call that does not specify the corners. All operands are varying.
class SlcTexturePointsICode : public SlcICodeOf<SlcTexturePointsICode, SlcICode> {
public:
    SlcTexturePointsICode() = default;
    SlcTexturePointsICode(SlcOperand point, std::array<SlcOperand, 4> corners, SlcOperand condition)
        : m_point(std::move(point)),
          m_corners(std::move(corners)),
          m_condition(std::move(condition))
    {
    }

    SlcOperand m_point;
    std::array<SlcOperand, 4> m_corners;
    SlcOperand m_condition;  // flag of the points to run for; null for all
};

/// x = the other end of the interval that a point covers in y. Emitted before `filterstep(e, y)`
/// with a varying y. All operands are varying.
class SlcFilterstepPointsICode : public SlcICodeOf<SlcFilterstepPointsICode, SlcICode> {
public:
    SlcFilterstepPointsICode() = default;
    SlcFilterstepPointsICode(SlcOperand x, SlcOperand y, SlcOperand condition)
        : m_x(std::move(x)),
          m_y(std::move(y)),
          m_condition(std::move(condition))
    {
    }

    SlcOperand m_x;
    SlcOperand m_y;
    SlcOperand m_condition;  // flag of the points to run for; null for all
};
