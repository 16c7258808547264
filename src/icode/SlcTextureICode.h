#pragma once

#include <array>

#include "icode/SlcICode.h"

/// The four corners, s then t of each, of the patch around (s, t) that a point covers: in front of
/// `texture("a", s, t)`. All operands vary. Always over the whole grid: neighbours tell how far the
/// patch reaches.
class SlcTextureSTPointsICode : public SlcICodeOf<SlcTextureSTPointsICode, SlcICode> {
public:
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
    SlcOperand m_condition;  // null, or the points that it is limited to
};

/// The four corners of the patch around a point: in front of `environment` and `shadow`. All
/// operands vary.
class SlcTexturePointsICode : public SlcICodeOf<SlcTexturePointsICode, SlcICode> {
public:
    SlcTexturePointsICode(SlcOperand point, std::array<SlcOperand, 4> corners, SlcOperand condition)
        : m_point(std::move(point)),
          m_corners(std::move(corners)),
          m_condition(std::move(condition))
    {
    }

    SlcOperand m_point;
    std::array<SlcOperand, 4> m_corners;
    SlcOperand m_condition;  // null, or the points that it is limited to
};

/// x = the other end of the interval that a point covers in y: in front of `filterstep(e, y)`. Both
/// vary.
class SlcFilterstepPointsICode : public SlcICodeOf<SlcFilterstepPointsICode, SlcICode> {
public:
    SlcFilterstepPointsICode(SlcOperand x, SlcOperand y, SlcOperand condition)
        : m_x(std::move(x)),
          m_y(std::move(y)),
          m_condition(std::move(condition))
    {
    }

    SlcOperand m_x;
    SlcOperand m_y;
    SlcOperand m_condition;  // null, or the points that it is limited to
};
