#pragma once

#include <deque>
#include <span>
#include <string>
#include <string_view>

#include "lowering/SlcLoweringContext.h"

class SlcShaderTypeNode;
class SlcTextureExprNode;
class SlcTextureParameters;

/// Lowers a texture access: the footprint of each point, then one call with every parameter in its
/// place.
class SlcTextureLowering {
public:
    explicit SlcTextureLowering(SlcLoweringContext& context) : m_context(context) {}

    /// `args`: the name of the file, the channel, positional arguments, then names and values, each
    /// evaluated. Gives the value, which varies.
    [[nodiscard]] SlcOperand Lower(SlcTextureExprNode* node, const std::deque<SlcOperand>& args);

    enum class Source { Point, Area };
    /// The primitive of an access, without the suffix of a form. A shadow may come of an area; in
    /// a light, shadows have primitives of their own. `shaderType` may be null.
    [[nodiscard]] static std::string PrimitiveOf(const SlcTextureExprNode* node, Source source,
                                                 const SlcShaderTypeNode* shaderType);

private:
    [[nodiscard]] SlcOperand GenTextureAccess(SlcTextureExprNode* node,
                                              const std::deque<SlcOperand>& args);
    /// `environment` and `shadow`, which look up a point or direction.
    [[nodiscard]] SlcOperand GenPointAccess(SlcTextureExprNode* node,
                                            const std::deque<SlcOperand>& args);
    /// Eight floats: as given, around the given s and t, or around the predefined ones.
    /// `positional` counts the arguments in front of the first name.
    [[nodiscard]] std::deque<SlcOperand> TextureCorners(SlcTextureExprNode* node,
                                                        const std::deque<SlcOperand>& args,
                                                        std::size_t positional);
    /// The corners of the patch that a point covers.
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& s, const SlcOperand& t);
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& point);
    /// The values of `keys`, in that order.
    static void AppendParameters(std::deque<SlcOperand>& call,
                                 const SlcTextureParameters& parameters,
                                 std::span<const std::string_view> keys);
    void AppendSource(SlcTextureExprNode* node, std::deque<SlcOperand>& call,
                      const std::deque<SlcOperand>& points);
    /// Over the grid if that suits the arguments, else in a block.
    [[nodiscard]] SlcOperand GenAccessCall(SlcTextureExprNode* node, Source source,
                                           std::deque<SlcOperand> args, std::size_t corners);

    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
};
