#pragma once

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"
#include "icode/SlcJumpICode.h"

/// The head of `illuminate (position, axis, angle)`: flag = the points that the light at `position`
/// reaches; L = the vector from it to `Ps`.
///
/// The light reaches a point that lies within `angle`, in radians, of `axis`; without a cone, all
/// points. The plain form is used in a parallel run; the whole-grid form requires that `position`,
/// `axis` and `angle` are uniform.
class SlcIlluminateICode : public SlcICodeOf<SlcIlluminateICode, SlcICode> {
public:
    SlcIlluminateICode() = default;
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

/// The head of `solar (axis, angle)`: L = axis, the direction of the light's rays; flag = the
/// points that the rays reach, which are all points for which the instruction runs. For `solar ()`,
/// axis is `Ps - E` and angle is 0.
class SlcSolarICode : public SlcICodeOf<SlcSolarICode, SlcICode> {
public:
    SlcSolarICode() = default;
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

/// flag = the points whose current light is within `angle` of `axis`. Used inside the loop of
/// `illuminance (position, axis, angle)`. Also reads `L`, which is not an operand.
class SlcCheckIlluminanceICode : public SlcICodeOf<SlcCheckIlluminanceICode, SlcICode> {
public:
    SlcCheckIlluminanceICode() = default;
    /// `flag` is varying; `position` holds the points for which the lights were evaluated.
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

/// Head of the loop over the evaluated lights; jumps to `endLabel` if there are none. Each
/// iteration sets `L`, `Cl` and `Ol` to those of one light. Loops do not nest.
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

/// Back edge of the loop over lights: jumps to `startLabel`, right after the head, while there is
/// another light.
class SlcEndIlluminanceICode : public SlcICodeOf<SlcEndIlluminanceICode, SlcICode> {
public:
    explicit SlcEndIlluminanceICode(SlcLabel startLabel) : m_startLabel(std::move(startLabel)) {}

    SlcLabel m_startLabel;
};

/// Runs the light shaders for the varying points `position`. It replaces the current set of
/// evaluated lights. Emitted before the loop of an `illuminance` over points other than `P`, and in
/// a loop after a call such as `diffuse`, which has replaced the lights of the loop.
class SlcEvalLightICode : public SlcICodeOf<SlcEvalLightICode, SlcICode> {
public:
    SlcEvalLightICode() = default;
    explicit SlcEvalLightICode(SlcOperand position) : m_position(std::move(position)) {}

    SlcOperand m_position;
};

/// Runs the light shaders for `P`, unless they have already run for its current value. Emitted
/// before lighting functions such as `diffuse`, and before an `illuminance` over `P`.
class SlcEvalLightForPICode : public SlcICodeOf<SlcEvalLightForPICode, SlcICode> {};

/// Marks the lights evaluated for `P` as stale: `P` has been assigned, or lights for other points
/// have replaced them.
class SlcResetEvalLightForPICode : public SlcICodeOf<SlcResetEvalLightForPICode, SlcICode> {};
