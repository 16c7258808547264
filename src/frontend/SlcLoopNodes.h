#pragma once

// Loops, light statements and the jumps out of them. They are checked in SlcCheckStatements.cpp and
// SlcCheckLightStatements.cpp, and lowered in SlcGenInterCodeLoops.cpp and
// SlcGenInterCodeLights.cpp.

#include <memory>
#include <string>

#include "frontend/SlcStmtNodes.h"

/// Base of the loops and of the light statements, which repeat or guard a body.
class SlcLoopStmtNode : public SlcVisitable<SlcLoopStmtNode, SlcStmtNode> {
public:
    SlcLoopStmtNode(const SlcPosition& position, std::unique_ptr<SlcStmtNode> body);
    [[nodiscard]] SlcStmtNode* GetBody() const { return m_body.get(); }
    /// True if a `break`, `continue` or `return` in the body can leave this statement or, for a
    /// loop, its current iteration. Set by `SlcMarkLeaves`.
    [[nodiscard]] bool ContainsBreakOrContinue() const { return m_containsBreakOrContinue; }
    void SetContainsBreakOrContinue(bool contains) { m_containsBreakOrContinue = contains; }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcStmtNode> m_body;
    bool m_containsBreakOrContinue = false;
};

/// `while (condition) body`. Under a varying condition, the loop continues until no point is
/// active.
class SlcWhileStmtNode : public SlcVisitable<SlcWhileStmtNode, SlcLoopStmtNode> {
public:
    SlcWhileStmtNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> condition,
                     std::unique_ptr<SlcStmtNode> body);
    ~SlcWhileStmtNode() override;
    [[nodiscard]] SlcRelationNode* GetCondition() const { return m_condition.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "while"; }

private:
    std::unique_ptr<SlcRelationNode> m_condition;
};

/// `for (init; condition; step) body`. The values of `init` and `step` are not used. A `continue`
/// jumps to the step.
class SlcForStmtNode : public SlcVisitable<SlcForStmtNode, SlcLoopStmtNode> {
public:
    SlcForStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> init,
                   std::unique_ptr<SlcRelationNode> condition, std::unique_ptr<SlcExprNode> step,
                   std::unique_ptr<SlcStmtNode> body);
    ~SlcForStmtNode() override;
    [[nodiscard]] SlcExprNode* GetInit() const { return m_init.get(); }
    [[nodiscard]] SlcRelationNode* GetCondition() const { return m_condition.get(); }
    [[nodiscard]] SlcExprNode* GetStep() const { return m_step.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "for"; }

private:
    std::unique_ptr<SlcExprNode> m_init;
    std::unique_ptr<SlcRelationNode> m_condition;
    std::unique_ptr<SlcExprNode> m_step;
};

/// `solar() body`, `solar(axis, angle) body`: light from a distant source, in light shaders. The
/// body sets `Cl` for the points that the light reaches, with `L` as the direction of the light; at
/// all other points the light is black.
class SlcSolarStmtNode : public SlcVisitable<SlcSolarStmtNode, SlcLoopStmtNode> {
public:
    /// `axis` and `angle` are both null or both set.
    SlcSolarStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> axis,
                     std::unique_ptr<SlcExprNode> angle, std::unique_ptr<SlcStmtNode> body);
    /// Null, like the angle, if the source specifies no cone. The same holds in the next two
    /// classes.
    [[nodiscard]] SlcExprNode* GetAxis() const { return m_axis.get(); }
    [[nodiscard]] SlcExprNode* GetAngle() const { return m_angle.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "solar"; }

private:
    std::unique_ptr<SlcExprNode> m_axis;
    std::unique_ptr<SlcExprNode> m_angle;
};

/// `illuminate(position) body`, `illuminate(position, axis, angle) body`: light from a position, in
/// light shaders. The body is like that of `solar`, with `L` from the position to the
/// lit point.
class SlcIlluminateStmtNode : public SlcVisitable<SlcIlluminateStmtNode, SlcLoopStmtNode> {
public:
    /// `axis` and `angle` are both null or both set.
    SlcIlluminateStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> lightPosition,
                          std::unique_ptr<SlcExprNode> axis, std::unique_ptr<SlcExprNode> angle,
                          std::unique_ptr<SlcStmtNode> body);
    [[nodiscard]] SlcExprNode* GetLightPosition() const { return m_lightPosition.get(); }
    [[nodiscard]] SlcExprNode* GetAxis() const { return m_axis.get(); }
    [[nodiscard]] SlcExprNode* GetAngle() const { return m_angle.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "illuminate"; }

private:
    std::unique_ptr<SlcExprNode> m_lightPosition;
    std::unique_ptr<SlcExprNode> m_axis;
    std::unique_ptr<SlcExprNode> m_angle;
};

/// `illuminance(position) body`, `illuminance(position, axis, angle) body`: a loop over the lights
/// that reach a position, in the second form only from inside a cone. It occurs in surfaces and
/// volumes; in the body, `L`, `Cl` and `Ol` are those of the current light. The parser drops a
/// category argument, with a warning.
class SlcIlluminanceStmtNode : public SlcVisitable<SlcIlluminanceStmtNode, SlcLoopStmtNode> {
public:
    /// `axis` and `angle` are both null or both set.
    SlcIlluminanceStmtNode(const SlcPosition& position,
                           std::unique_ptr<SlcExprNode> surfacePosition,
                           std::unique_ptr<SlcExprNode> axis, std::unique_ptr<SlcExprNode> angle,
                           std::unique_ptr<SlcStmtNode> body);
    [[nodiscard]] SlcExprNode* GetSurfacePosition() const { return m_surfacePosition.get(); }
    [[nodiscard]] SlcExprNode* GetAxis() const { return m_axis.get(); }
    [[nodiscard]] SlcExprNode* GetAngle() const { return m_angle.get(); }
    /// Walks position, axis and angle, which are evaluated before the loop.
    void WalkHead(SlcCodeWalker* walker);
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "illuminance"; }

private:
    std::unique_ptr<SlcExprNode> m_surfacePosition;
    std::unique_ptr<SlcExprNode> m_axis;
    std::unique_ptr<SlcExprNode> m_angle;
};

/// Base of `break` and `continue`. Their level counts only `while` and `for` as loops.
class SlcLoopModStmtNode : public SlcVisitable<SlcLoopModStmtNode, SlcStmtNode> {
public:
    /// Uses level 1.
    explicit SlcLoopModStmtNode(const SlcPosition& position);
    SlcLoopModStmtNode(const SlcPosition& position, SlcIntConstNode* level);
    [[nodiscard]] SlcIntConstNode* GetLevel() const { return m_level; }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIntConstNode* m_level;  // number of enclosing loops up to the target
};

/// `break`, `break levels`
class SlcBreakStmtNode : public SlcVisitable<SlcBreakStmtNode, SlcLoopModStmtNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] std::string ToString() const override { return "break"; }
};

/// `continue`, `continue levels`
class SlcContinueStmtNode : public SlcVisitable<SlcContinueStmtNode, SlcLoopModStmtNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] std::string ToString() const override { return "continue"; }
};
