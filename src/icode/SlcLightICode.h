#pragma once

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"
#include "icode/SlcJumpICode.h"

/// flag = the points that the light at `position` reaches; L = the direction from it to `Ps`: the
/// head of `illuminate (position, axis, angle)`.
///
/// A point is reached if it lies within `angle`, in radians, of `axis`. A plain one stands in a
/// run, one for the grid takes uniform operands.
class SlcIlluminateICode : public SlcICodeOf<SlcIlluminateICode, SlcICode> {
public:
    /// `axis` and `angle` are both null or both set. `Ps` and `L` are the predefined variables.
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

/// flag = the points that a light from the direction of `axis` reaches; L = that direction: the
/// head of `solar (axis, angle)`. Without the two in the source, axis is `Ps - E` and angle 0.
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

/// flag = the points whose current light lies within the cone: inside the loop of `illuminance
/// (position, axis, angle)`. Reads `L`.
class SlcCheckIlluminanceICode : public SlcICodeOf<SlcCheckIlluminanceICode, SlcICode> {
public:
    /// `flag` varies; the points of `position` are those that the lights have run for.
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

/// Head of the loop over the evaluated lights; goes to `endLabel` when there is none. Each round
/// sets `L`, `Cl` and `Ol` to those of one light. Loops do not nest.
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

/// Back edge of the loop over lights: goes to `startLabel`, right behind the head, with the next
/// light as long as there is one.
class SlcEndIlluminanceICode : public SlcICodeOf<SlcEndIlluminanceICode, SlcICode> {
public:
    explicit SlcEndIlluminanceICode(SlcLabel startLabel) : m_startLabel(std::move(startLabel)) {}

    SlcLabel m_startLabel;
};

/// Runs the light shaders for the points `position`, which varies: in front of the loop of an
/// `illuminance` over other points than `P`. There is one set of lights, which this replaces.
class SlcEvalLightICode : public SlcICodeOf<SlcEvalLightICode, SlcICode> {
public:
    explicit SlcEvalLightICode(SlcOperand position) : m_position(std::move(position)) {}

    SlcOperand m_position;
};

/// Runs the light shaders for `P`, unless they have run for its present value: in front of
/// `diffuse` and the like, and of an `illuminance` over `P`.
class SlcEvalLightForPICode : public SlcICodeOf<SlcEvalLightForPICode, SlcICode> {};

/// Lights evaluated for `P` are stale: it has changed, or other points have taken their place.
class SlcResetEvalLightForPICode : public SlcICodeOf<SlcResetEvalLightForPICode, SlcICode> {};
