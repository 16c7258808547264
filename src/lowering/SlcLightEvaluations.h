#pragma once

#include <unordered_map>
#include <vector>

#include "lowering/SlcListBuilder.h"

class SlcShaderTypeNode;

/// Emits the evaluation of the light shaders for the right points: those of `P`, or those at the
/// position of a light loop.
///
/// There is only one set of evaluated lights. A lighting function inside a light loop over other
/// points evaluates the set for `P`, so the set must then be evaluated again for the loop's points.
/// After a loop over other points, the set is not the one for `P`.
class SlcLightEvaluations {
public:
    /// `list` must outlive this object.
    explicit SlcLightEvaluations(SlcListBuilder& list) : m_list(list) {}

    /// Call these before and after a call of a function that reads the lights for `P`. Call both
    /// for every such function: only this class knows whether a light loop encloses it.
    void AddEvalLightForP();
    void NoteCallForP();
    /// Call it after code that has written `assigned`. If that is `P`, marks the evaluated lights
    /// as stale in kinds of shaders that see lights. Does nothing if `shaderType` is null.
    void ResetEvalLightIfPAssigned(const SlcOperand& assigned, const SlcShaderTypeNode* shaderType);

    /// Call it before a loop over lights: evaluates them for the points at `position`, which is `P`
    /// itself or a varying operand. Light loops do not nest.
    void EnterLightLoop(const SlcOperand& position);
    /// Call it after the loop and its `end`.
    void LeaveLightLoop(const SlcLabel& end);

    /// Call it once, when the list is complete. Restores the lights of a loop where its body has
    /// replaced them. Also, if the shader reads the lights for `P`, marks them as stale after code
    /// that leaves lights for other points. Linear in the list.
    void InsertLightEvaluations();

    /// True for the operand of the predefined `P`, under any name that the source uses for it.
    [[nodiscard]] static bool IsP(const SlcOperand& operand);

private:
    struct LightLoop {
        SlcOperand position;
        const SlcICode* evaluation = nullptr;         // before the loop; null outside a loop
        bool movesP = false;                          // `P` is assigned inside
        std::vector<const SlcICode*> callsForP = {};  // last instruction of each
    };

    SlcListBuilder& m_list;
    LightLoop m_lightLoop;  // being lowered
    bool m_evaluatesLightsForP = false;
    // Keyed by instructions after which the evaluated lights are not those for `P`: the points
    // whose lights to restore there, or null.
    std::unordered_map<const SlcICode*, SlcOperand> m_otherLightsAfter;
    // Keyed by the evaluation before a loop: the instruction that saves the loop's points.
    std::unordered_map<const SlcICode*, SlcPtr<SlcICode>> m_copiesOfPoints;
};
