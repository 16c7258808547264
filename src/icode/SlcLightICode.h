#pragma once

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"
#include "icode/SlcJumpICode.h"

/// flag = the points that the light at `position` reaches; L = the direction from it to `Ps`.
class SlcIlluminateICode : public SlcICodeOf<SlcIlluminateICode, SlcICode> {
public:
    SlcIlluminateICode(SlcOperand flag, SlcOperand position, SlcOperand axis, SlcOperand angle,
                       SlcOperand Ps, SlcOperand L, SlcGridForm form)
        : m_flag(std::move(flag)),
          m_position(std::move(position)),
          m_axis(std::move(axis)),
          m_angle(std::move(angle)),
          m_Ps(std::move(Ps)),
          m_L(std::move(L)),
          m_form(std::move(form))
    {
    }

    SlcOperand m_flag;
    SlcOperand m_position;
    SlcOperand m_axis;   // null without a cone
    SlcOperand m_angle;  // null without a cone
    SlcOperand m_Ps;
    SlcOperand m_L;
    SlcGridForm m_form;
};

/// flag = the points that a light from the direction of `axis` reaches; L = that direction.
class SlcSolarICode : public SlcICodeOf<SlcSolarICode, SlcICode> {
public:
    SlcSolarICode(SlcOperand flag, SlcOperand axis, SlcOperand angle, SlcOperand L,
                  SlcGridForm form)
        : m_flag(std::move(flag)),
          m_axis(std::move(axis)),
          m_angle(std::move(angle)),
          m_L(std::move(L)),
          m_form(std::move(form))
    {
    }

    SlcOperand m_flag;
    SlcOperand m_axis;
    SlcOperand m_angle;
    SlcOperand m_L;
    SlcGridForm m_form;
};

/// flag = the points whose current light lies within the cone.
class SlcCheckIlluminanceICode : public SlcICodeOf<SlcCheckIlluminanceICode, SlcICode> {
public:
    SlcCheckIlluminanceICode(SlcOperand flag, SlcOperand position, SlcOperand axis,
                             SlcOperand angle, SlcGridForm form)
        : m_flag(std::move(flag)),
          m_position(std::move(position)),
          m_axis(std::move(axis)),
          m_angle(std::move(angle)),
          m_form(std::move(form))
    {
    }

    SlcOperand m_flag;
    SlcOperand m_position;
    SlcOperand m_axis;
    SlcOperand m_angle;
    SlcGridForm m_form;
};

/// Head of the loop over the evaluated lights; goes to `endLabel` when there is none.
class SlcBeginIlluminanceICode : public SlcICodeOf<SlcBeginIlluminanceICode, SlcICode> {
public:
    SlcBeginIlluminanceICode(SlcLabel startLabel, SlcLabel endLabel)
        : m_startLabel(std::move(startLabel)),
          m_endLabel(std::move(endLabel))
    {
    }

    SlcLabel m_startLabel;
    SlcLabel m_endLabel;
};

/// Back edge of the loop over lights.
class SlcEndIlluminanceICode : public SlcICodeOf<SlcEndIlluminanceICode, SlcICode> {
public:
    explicit SlcEndIlluminanceICode(SlcLabel startLabel) : m_startLabel(std::move(startLabel)) {}

    SlcLabel m_startLabel;
};

/// Runs the light shaders for the points `position`.
class SlcEvalLightICode : public SlcICodeOf<SlcEvalLightICode, SlcICode> {
public:
    explicit SlcEvalLightICode(SlcOperand position) : m_position(std::move(position)) {}

    SlcOperand m_position;
};

/// Runs the light shaders for `P`, unless they have run for its present value.
class SlcEvalLightForPICode : public SlcICodeOf<SlcEvalLightForPICode, SlcICode> {};

/// `P` has changed: lights evaluated for it are stale.
class SlcResetEvalLightForPICode : public SlcICodeOf<SlcResetEvalLightForPICode, SlcICode> {};
