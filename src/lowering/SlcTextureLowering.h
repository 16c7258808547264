#pragma once

#include <deque>
#include <span>
#include <string>
#include <string_view>

#include "lowering/SlcLoweringContext.h"

class SlcShaderTypeNode;
class SlcTextureExprNode;
class SlcTextureParameters;

/// Lowers a texture access: emits the computation of each point's footprint, unless the access
/// gives it, and then one call with all parameters in fixed positions.
class SlcTextureLowering {
public:
    /// The context must outlive this object.
    explicit SlcTextureLowering(SlcLoweringContext& context) : m_context(context) {}

    /// `args` holds the evaluated arguments: file name, channel, positional arguments, then names
    /// and values. Returns the value, which is varying on a grid. Fatal if required points, or the
    /// predefined `s` and `t`, are missing.
    [[nodiscard]] SlcOperand Lower(SlcTextureExprNode* node, const std::deque<SlcOperand>& args);

    enum class Source { Point, Area };
    /// Returns the primitive of an access. `source`, the shape of the light, is used only for
    /// shadows. Shadows in a light shader have separate primitives. `shaderType` may be null.
    [[nodiscard]] static SqxPrimitive PrimitiveOf(const SlcTextureExprNode* node, Source source,
                                                  const SlcShaderTypeNode* shaderType);

private:
    [[nodiscard]] SlcOperand GenTextureAccess(SlcTextureExprNode* node,
                                              const std::deque<SlcOperand>& args);
    /// Lowers `environment` and `shadow`, which look up a point or direction.
    [[nodiscard]] SlcOperand GenPointAccess(SlcTextureExprNode* node,
                                            const std::deque<SlcOperand>& args);
    /// Returns eight floats: the given corners, or the patch around the given or predefined s and
    /// t. `positional` is the number of arguments between the channel and the first parameter name.
    [[nodiscard]] std::deque<SlcOperand> TextureCorners(SlcTextureExprNode* node,
                                                        const std::deque<SlcOperand>& args,
                                                        std::size_t positional);
    /// Computes the corners of the patch that a point covers.
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& s, const SlcOperand& t);
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& point);
    /// Appends the values of `keys`, in that order.
    static void AppendParameters(std::deque<SlcOperand>& call,
                                 const SlcTextureParameters& parameters,
                                 std::span<const std::string_view> keys);
    void AppendSource(SlcTextureExprNode* node, std::deque<SlcOperand>& call,
                      const std::deque<SlcOperand>& points);
    /// Emits a whole-grid call if the arguments and the enclosing conditions allow it, otherwise a
    /// call in a varying block. Returns the result.
    [[nodiscard]] SlcOperand GenAccessCall(SlcTextureExprNode* node, Source source,
                                           std::deque<SlcOperand> args, std::size_t corners);

    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
};
