#pragma once

#include <array>

#include "icode/SlcICode.h"

/// The four corners, s then t of each, of the patch around (s, t) that a point covers.
class SlcTextureSTPointsICode : public SlcICodeOf<SlcTextureSTPointsICode, SlcICode> {
public:
    SlcTextureSTPointsICode(SlcOperand s, SlcOperand t, std::array<SlcOperand, 8> corners,
                            bool useCondition, SlcOperand condition, bool ifTrue)
        : m_s(std::move(s)),
          m_t(std::move(t)),
          m_corners(std::move(corners)),
          m_useCondition(useCondition),
          m_condition(std::move(condition)),
          m_ifTrue(ifTrue)
    {
    }

    SlcOperand m_s;
    SlcOperand m_t;
    std::array<SlcOperand, 8> m_corners;
    bool m_useCondition;
    SlcOperand m_condition;  // null unless `m_useCondition`
    bool m_ifTrue;
};

/// The four corners of the patch around a point.
class SlcTexturePointsICode : public SlcICodeOf<SlcTexturePointsICode, SlcICode> {
public:
    SlcTexturePointsICode(SlcOperand point, std::array<SlcOperand, 4> corners, bool useCondition,
                          SlcOperand condition, bool ifTrue)
        : m_point(std::move(point)),
          m_corners(std::move(corners)),
          m_useCondition(useCondition),
          m_condition(std::move(condition)),
          m_ifTrue(ifTrue)
    {
    }

    SlcOperand m_point;
    std::array<SlcOperand, 4> m_corners;
    bool m_useCondition;
    SlcOperand m_condition;  // null unless `m_useCondition`
    bool m_ifTrue;
};

/// x = the other end of the interval that a point covers in y.
class SlcFilterstepPointsICode : public SlcICodeOf<SlcFilterstepPointsICode, SlcICode> {
public:
    SlcFilterstepPointsICode(SlcOperand x, SlcOperand y, bool useCondition, SlcOperand condition,
                             bool ifTrue)
        : m_x(std::move(x)),
          m_y(std::move(y)),
          m_useCondition(useCondition),
          m_condition(std::move(condition)),
          m_ifTrue(ifTrue)
    {
    }

    SlcOperand m_x;
    SlcOperand m_y;
    bool m_useCondition;
    SlcOperand m_condition;  // null unless `m_useCondition`
    bool m_ifTrue;
};
