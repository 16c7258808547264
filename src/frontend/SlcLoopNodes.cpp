// Loops and light statements share a base for the passes that treat all their bodies alike: a body
// might never run, and those of `while`, `for` and `illuminance` can run repeatedly, so that an
// assignment can reach a read that precedes it in the source.
//
// If `break` or `continue` has no level, the node has level 1.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcLoopNodes.h"

#include <utility>

#include "frontend/SlcRelationNodes.h"

SlcLoopStmtNode::SlcLoopStmtNode(const SlcPosition& position, std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position),
      m_body(std::move(body))
{
    Adopt(m_body.get());
}

void SlcLoopStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_body.get(), walker);
}

SlcWhileStmtNode::SlcWhileStmtNode(const SlcPosition& position,
                                   std::unique_ptr<SlcRelationNode> condition,
                                   std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position, std::move(body)),
      m_condition(std::move(condition))
{
    Adopt(m_condition.get());
}

SlcWhileStmtNode::~SlcWhileStmtNode() = default;

void SlcWhileStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_condition.get(), walker);
    SlcLoopStmtNode::WalkIn(walker);
}

SlcForStmtNode::SlcForStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> init,
                               std::unique_ptr<SlcRelationNode> condition,
                               std::unique_ptr<SlcExprNode> step, std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position, std::move(body)),
      m_init(std::move(init)),
      m_condition(std::move(condition)),
      m_step(std::move(step))
{
    Adopt(m_init.get());
    Adopt(m_condition.get());
    Adopt(m_step.get());
}

SlcForStmtNode::~SlcForStmtNode() = default;

void SlcForStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_init.get(), walker);
    Walk(m_condition.get(), walker);
    Walk(m_step.get(), walker);
    SlcLoopStmtNode::WalkIn(walker);
}

SlcSolarStmtNode::SlcSolarStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> axis,
                                   std::unique_ptr<SlcExprNode> angle,
                                   std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position, std::move(body)),
      m_axis(std::move(axis)),
      m_angle(std::move(angle))
{
    Adopt(m_axis.get());
    Adopt(m_angle.get());
}

void SlcSolarStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_axis.get(), walker);
    Walk(m_angle.get(), walker);
    SlcLoopStmtNode::WalkIn(walker);
}

SlcIlluminateStmtNode::SlcIlluminateStmtNode(const SlcPosition& position,
                                             std::unique_ptr<SlcExprNode> lightPosition,
                                             std::unique_ptr<SlcExprNode> axis,
                                             std::unique_ptr<SlcExprNode> angle,
                                             std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position, std::move(body)),
      m_lightPosition(std::move(lightPosition)),
      m_axis(std::move(axis)),
      m_angle(std::move(angle))
{
    Adopt(m_lightPosition.get());
    Adopt(m_axis.get());
    Adopt(m_angle.get());
}

void SlcIlluminateStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_lightPosition.get(), walker);
    Walk(m_axis.get(), walker);
    Walk(m_angle.get(), walker);
    SlcLoopStmtNode::WalkIn(walker);
}

SlcIlluminanceStmtNode::SlcIlluminanceStmtNode(const SlcPosition& position,
                                               std::unique_ptr<SlcExprNode> surfacePosition,
                                               std::unique_ptr<SlcExprNode> axis,
                                               std::unique_ptr<SlcExprNode> angle,
                                               std::unique_ptr<SlcStmtNode> body)
    : SlcVisitable(position, std::move(body)),
      m_surfacePosition(std::move(surfacePosition)),
      m_axis(std::move(axis)),
      m_angle(std::move(angle))
{
    Adopt(m_surfacePosition.get());
    Adopt(m_axis.get());
    Adopt(m_angle.get());
}

void SlcIlluminanceStmtNode::WalkHead(SlcCodeWalker* walker)
{
    Walk(m_surfacePosition.get(), walker);
    Walk(m_axis.get(), walker);
    Walk(m_angle.get(), walker);
}

void SlcIlluminanceStmtNode::WalkIn(SlcCodeWalker* walker)
{
    WalkHead(walker);
    SlcLoopStmtNode::WalkIn(walker);
}

SlcLoopModStmtNode::SlcLoopModStmtNode(const SlcPosition& position)
    : SlcLoopModStmtNode(position, SlcLexicalNode::CreateInt(1, false))
{
}

SlcLoopModStmtNode::SlcLoopModStmtNode(const SlcPosition& position, SlcIntConstNode* level)
    : SlcVisitable(position),
      m_level(level)
{
}

void SlcLoopModStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_level, walker);
}
