// Lowers a texture access: first the footprint of each point, then one call with all parameters.
//
//     texture("a", s, t)      corners = patch around (s, t); r = CALL_TEXTURE "a" 0 corners ...
//
// The corners are those of the patch that a shading point covers, computed from its neighbours in
// the grid, unless the call gives all four. Missing parameters get defaults, so that the primitive
// has only one list of arguments. The call is in whole-grid form unless the name or channel varies,
// all arguments are uniform, or the enclosing conditions do not allow that form.
//
// Tested by tests/golden/texture_forms.sl.

#include <algorithm>

#include "lowering/SlcTextureLowering.h"

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcTextureParameters.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

constexpr std::size_t k_nameAndChannel = 2;
constexpr std::size_t k_fewestSourcePoints = 2;
constexpr std::size_t k_sourcePlaces = 4;

constexpr std::string_view k_common[] = {"fidelity", "samples", "sblur", "tblur",
                                         "swidth",   "twidth",  "filter"};
constexpr std::string_view k_ofTexture[] = {"fill", "lerp"};
constexpr std::string_view k_ofEnvironment[] = {"lerp", "fill"};
constexpr std::string_view k_ofShadow[] = {"bias"};

/// Counts the arguments between the channel and the first parameter name.
std::size_t CountPositional(const std::deque<SlcOperand>& args)
{
    const auto name = std::find_if(args.begin() + k_nameAndChannel, args.end(),
                                   [](const auto& arg) { return arg->GetType()->IsStringType(); });
    return static_cast<std::size_t>(name - args.begin()) - k_nameAndChannel;
}

}  // namespace

SlcOperand SlcTextureLowering::Lower(SlcTextureExprNode* node, const std::deque<SlcOperand>& args)
{
    const SlcTextureTypeNode* kind = node->GetKind();
    if (kind->IsTexture())
        return GenTextureAccess(node, args);
    if (kind->IsEnvironment() || kind->IsShadow())
        return GenPointAccess(node, args);
    m_errors->FatalError(node, "No code generated yet for this type of texture function.");
}

SlcOperand SlcTextureLowering::GenTextureAccess(SlcTextureExprNode* node,
                                                const std::deque<SlcOperand>& args)
{
    const std::size_t positional = CountPositional(args);
    const SlcTextureParameters parameters(args, k_nameAndChannel + positional);
    std::deque<SlcOperand> call(args.begin(), args.begin() + k_nameAndChannel);
    for (const SlcOperand& corner : TextureCorners(node, args, positional))
        call.push_back(corner);
    AppendParameters(call, parameters, k_common);
    AppendParameters(call, parameters, k_ofTexture);
    return GenAccessCall(node, Source::Point, std::move(call), 8);
}

std::deque<SlcOperand> SlcTextureLowering::TextureCorners(SlcTextureExprNode* node,
                                                          const std::deque<SlcOperand>& args,
                                                          std::size_t positional)
{
    using Hiddens = SlcShaderSymbolTable;
    if (positional == 8)
        return {args.begin() + k_nameAndChannel, args.begin() + k_nameAndChannel + 8};
    if (positional != 0)
        return FootprintOf(args[k_nameAndChannel], args[k_nameAndChannel + 1]);
    if (Hiddens::EntryNamed("s").Null() || Hiddens::EntryNamed("t").Null())
        m_errors->FatalError(node, "'s' or 't' is not available.");
    return FootprintOf(m_context.OperandOf(Hiddens::EntryNamed("s")),
                       m_context.OperandOf(Hiddens::EntryNamed("t")));
}

std::deque<SlcOperand> SlcTextureLowering::FootprintOf(const SlcOperand& s, const SlcOperand& t)
{
    const SlcOperand varyingS = m_context.Widened(s);
    const SlcOperand varyingT = m_context.Widened(t);
    std::array<SlcOperand, 8> corners;
    for (SlcOperand& corner : corners)
        corner = m_list.GenTempVar(SlcTypeNode::AFloat(), SlcDetailNode::AVarying());
    m_list.AddICode(MakeShared<SlcTextureSTPointsICode>(varyingS, varyingT, corners,
                                                        m_conditions.SimdCondition()));
    return {corners.begin(), corners.end()};
}

SlcOperand SlcTextureLowering::GenPointAccess(SlcTextureExprNode* node,
                                              const std::deque<SlcOperand>& args)
{
    const bool isShadow = node->GetKind()->IsShadow();
    const std::size_t positional = CountPositional(args);
    if (positional == 0 || !args[k_nameAndChannel]->GetType()->IsPointType())
        m_errors->FatalError(node, isShadow ? "shadow(...) needs a point parameter."
                                            : "environment(...) needs a point parameter.");
    const SlcTextureParameters parameters(args, k_nameAndChannel + positional);
    std::deque<SlcOperand> call(args.begin(), args.begin() + k_nameAndChannel);
    const auto firstPoint = args.begin() + k_nameAndChannel;
    const auto points = positional == 4 ? std::deque<SlcOperand>(firstPoint, firstPoint + 4)
                                        : FootprintOf(*firstPoint);
    call.insert(call.end(), points.begin(), points.end());
    AppendParameters(call, parameters, k_common);
    if (!isShadow) {
        AppendParameters(call, parameters, k_ofEnvironment);
        return GenAccessCall(node, Source::Point, std::move(call), 4);
    }
    AppendParameters(call, parameters, k_ofShadow);
    if (parameters.HasSource())
        AppendSource(node, call, parameters.GetSourcePoints());
    return GenAccessCall(node, parameters.HasSource() ? Source::Area : Source::Point,
                         std::move(call), 4);
}

std::deque<SlcOperand> SlcTextureLowering::FootprintOf(const SlcOperand& point)
{
    const SlcOperand varyingPoint = m_context.Widened(point);
    std::array<SlcOperand, 4> corners;
    for (SlcOperand& corner : corners)
        corner = m_list.GenTempVar(SlcTypeNode::APoint(), SlcDetailNode::AVarying());
    m_list.AddICode(
        MakeShared<SlcTexturePointsICode>(varyingPoint, corners, m_conditions.SimdCondition()));
    return {corners.begin(), corners.end()};
}

void SlcTextureLowering::AppendParameters(std::deque<SlcOperand>& call,
                                          const SlcTextureParameters& parameters,
                                          std::span<const std::string_view> keys)
{
    for (const std::string_view key : keys)
        call.push_back(parameters.Get(key));
}

/// Appends the number of given points, and then four points: the last given point stands for the
/// missing ones.
void SlcTextureLowering::AppendSource(SlcTextureExprNode* node, std::deque<SlcOperand>& call,
                                      const std::deque<SlcOperand>& points)
{
    if (points.size() < k_fewestSourcePoints)
        m_errors->FatalError(node, "No enough points for area shadow.");
    call.push_back(SlcLexType::Int(static_cast<int>(points.size()), true));
    for (std::size_t i = 0; i < k_sourcePlaces; ++i)
        call.push_back(points[std::min(i, points.size() - 1)]);
}

SqxPrimitive SlcTextureLowering::PrimitiveOf(const SlcTextureExprNode* node, Source source,
                                             const SlcShaderTypeNode* shaderType)
{
    using enum SqxPrimitive;
    const SlcTextureTypeNode* kind = node->GetKind();
    const bool isColor = SlcLoweringContext::TypeOf(node)->IsColorType();
    if (kind->IsTexture())
        return isColor ? CALL_TEXTURE_3D : CALL_TEXTURE_1D;
    if (kind->IsEnvironment())
        return isColor ? CALL_ENVIRONMENT_3D : CALL_ENVIRONMENT_1D;
    const bool inLight = shaderType && shaderType->IsLight();
    if (source == Source::Area) {
        if (inLight)
            return isColor ? CALL_AREASHADOW_3D_LIGHT : CALL_AREASHADOW_1D_LIGHT;
        return isColor ? CALL_AREASHADOW_3D : CALL_AREASHADOW_1D;
    }
    if (inLight)
        return isColor ? CALL_SHADOW_3D_LIGHT : CALL_SHADOW_1D_LIGHT;
    return isColor ? CALL_SHADOW_3D : CALL_SHADOW_1D;
}

/// The first `corners` arguments after the name and the channel are the footprint.
SlcOperand SlcTextureLowering::GenAccessCall(SlcTextureExprNode* node, Source source,
                                             std::deque<SlcOperand> args, std::size_t corners)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const bool isColor = SlcLoweringContext::TypeOf(node)->IsColorType();
    // The whole-grid form takes one file and one channel. If nothing varies, the plain form saves
    // the copies of all corners that the whole-grid form would need.
    const bool canUseGrid = !SlcConditions::UniformIfAll(args)->IsUniform() &&
                            args[0]->IsUniform() && args[1]->IsUniform();
    const SlcGridForm form = canUseGrid ? m_conditions.GridForm() : SlcGridForm::Plain();
    if (form.simd)
        for (std::size_t i = 0; i < corners; ++i)
            // Corners given in the source may be uniform, but the whole-grid form needs one for
            // each point.
            args[k_nameAndChannel + i] = m_context.Widened(args[k_nameAndChannel + i]);
    const SlcOperand result =
        m_list.GetResultVar(node, isColor ? SlcTypeNode::AColor() : SlcTypeNode::AFloat(), varying);
    const SqxPrimitive primitive = PrimitiveOf(node, source, m_context.m_shaderType);
    m_conditions.AddInForm(form, MakeShared<SlcCallICode>(primitive, std::move(args), result,
                                                          SlcCallICode::ArgumentList::Fixed, form,
                                                          nullptr));
    return result;
}
