#pragma once

#include <string_view>
#include <vector>

#include "frontend/SlcTextureNodes.h"
#include "support/reports/SlcSemanticError.h"

/// Checks one call of `texture`, `environment` or `shadow` and decides the types of its arguments:
/// coordinates first, then names and values. The arguments have their sets of types; their own
/// operands are left to the caller.
///
///     texture("a"[1], s, t, "blur", 0.1)      s, t: coordinates; "blur": a name, of a float
class SlcResolveTexture {
public:
    explicit SlcResolveTexture(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// The name of the texture and the channel have their types by this as well. A fault leaves
    /// every argument with some type.
    void Resolve(SlcTextureExprNode* texture);

private:
    using Args = std::vector<SlcExprNode*>;
    struct KindTexts;

    [[nodiscard]] static const KindTexts& TextsOf(const SlcTextureTypeNode& kind);

    /// The number of arguments that the coordinates take; -1 after a report.
    [[nodiscard]] int ResolveCoordinates(SlcTextureExprNode* texture);
    /// The coordinates of `texture`: none, s and t, or those of four corners.
    [[nodiscard]] int ResolveFloats(SlcTextureExprNode* texture);
    /// The coordinates of `environment` and `shadow`: a point, or those of four corners.
    [[nodiscard]] int ResolvePoints(SlcTextureExprNode* texture);
    /// Stops after a report if an argument may be a name or a value.
    void ResolveParameters(std::size_t first);
    /// The name at `position` and its value: how many arguments they take, 0 after a report that
    /// leaves what follows unclear.
    [[nodiscard]] std::size_t CheckTextureAccessParameter(std::size_t position);
    /// The points of an area light, from `first` on: how many there are, or 1 after a report.
    [[nodiscard]] std::size_t ResolveSource(std::size_t first);
    /// The value of the parameter `name`, and of "filter" below.
    void ResolveFloatValue(std::string_view name, SlcExprNode* value);
    void ResolveStringValue(SlcExprNode* value);

    /// A report that depends on the meaning of each argument; suppressed after a faulty one.
    void ErrorOfPlace(const SlcSyntaxNode* node, std::string_view message);

    SlcPtr<SlcSemanticError> m_errors;
    const SlcTextureTypeNode* m_kind = nullptr;
    Args m_args;              // after the name of the texture
    bool m_hasFault = false;  // of an argument, whose meaning is then unknown
};
