#pragma once

#include <unordered_map>
#include <vector>

#include "lowering/SlcListBuilder.h"

class SlcShaderTypeNode;

/// Has the light shaders run for the right points: for `P`, for those of a loop, and for those of
/// a loop again.
///
/// There is one set of lights. A lighting function inside a loop over other points runs it for
/// `P`, so that it must be run for the loop's points again; and a loop over other points leaves
/// theirs behind, which are not those for `P`.
class SlcLightEvaluations {
public:
    /// `list`, which is empty, outlives it.
    explicit SlcLightEvaluations(SlcListBuilder& list) : m_list(list) {}

    /// In front of a function that looks at the lights for `P`, and behind the call. Both are
    /// called for every such function, since only here is known whether a loop stands around it.
    void AddEvalLightForP();
    void NoteCallForP();
    /// Behind code that has written `assigned`. Lights evaluated for `P` are stale once it has been
    /// assigned, which only a shader of a kind that sees lights does; `shaderType` may be null.
    void ResetEvalLightIfPAssigned(const SlcOperand& assigned, const SlcShaderTypeNode* shaderType);

    /// In front of a loop over lights: runs them for the points at `position`, `P` itself or a
    /// varying operand. No loop stands inside another.
    void EnterLightLoop(const SlcOperand& position);
    /// Behind the loop and its `end`.
    void LeaveLightLoop(const SlcLabel& end);

    /// With the whole list done: who leaves the lights of another point behind has those for `P`
    /// evaluated anew, in a shader that looks at them; and around it, a loop's lights come back.
    /// Linear in the list; called once for each.
    void InsertLightEvaluations();

    /// The operand of the predefined `P`, by whatever name the source reaches it.
    [[nodiscard]] static bool IsP(const SlcOperand& operand);

private:
    struct LightLoop {
        SlcOperand position;
        const SlcICode* evaluation = nullptr;         // in front of the loop; null outside of one
        bool movesP = false;                          // `P` is assigned inside
        std::vector<const SlcICode*> callsForP = {};  // last instruction of each
    };

    SlcListBuilder& m_list;
    LightLoop m_lightLoop;  // being lowered
    bool m_evaluatesLightsForP = false;
    // By instruction: the lights left behind it are not those for `P`; points whose lights come
    // back there, if any.
    std::unordered_map<const SlcICode*, SlcOperand> m_otherLightsBehind;
    // By evaluation in front of a loop: keeps its points.
    std::unordered_map<const SlcICode*, SlcPtr<SlcICode>> m_copiesOfPoints;
};
