#pragma once

#include <string_view>
#include <vector>

#include "frontend/SlcTextureNodes.h"
#include "support/reports/SlcSemanticError.h"

/// Checks one call of `texture`, `environment` or `shadow` and determines the types of its
/// arguments: coordinates first, then names and values. The arguments must have their sets of
/// types; the caller then resolves their parts.
///
///     texture("a"[1], s, t, "blur", 0.1)      s, t: coordinates; "blur": a name, of a float
class SlcResolveTexture {
public:
    explicit SlcResolveTexture(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// Sets the unique types of all arguments, of the texture's name and of the channel, and
    /// replaces that of `texture` if it is not in its set. Reports faults; an argument whose
    /// meaning is then unclear gets the first type of its set.
    void Resolve(SlcTextureExprNode* texture);

private:
    using Args = std::vector<SlcExprNode*>;
    struct KindTexts;

    [[nodiscard]] static const KindTexts& TextsOf(const SlcTextureTypeNode& kind);

    /// Checks the texture's name, which is missing only after a syntax error.
    void ResolveFilename(const SlcTextureExprNode* texture);
    /// Returns the number of arguments that are coordinates; -1 after a fault that leaves the
    /// meaning of all arguments unclear. The next two functions return the same.
    [[nodiscard]] int ResolveCoordinates(SlcTextureExprNode* texture);
    /// Checks the coordinates of `texture`: none, s and t, or those of four corners.
    [[nodiscard]] int ResolveFloats(SlcTextureExprNode* texture);
    /// Checks the coordinates of `environment` and `shadow`: a point, or four corners.
    [[nodiscard]] int ResolvePoints(SlcTextureExprNode* texture);
    /// Checks names and values, from the argument `first` on; stops at a fault that leaves the
    /// meaning of the rest unclear.
    void ResolveParameters(std::size_t first);
    /// Checks the name at `position` and its value. Returns the number of arguments that belong to
    /// them; 0 after a fault that leaves the meaning of the rest unclear.
    [[nodiscard]] std::size_t CheckTextureAccessParameter(std::size_t position);
    /// Checks the points of an area light, from `first` on. Returns their number, at most 4. Fewer
    /// than two are a fault; the result is then 1.
    [[nodiscard]] std::size_t ResolveSource(std::size_t first);
    /// Checks the value of the float parameter `name`; the next function checks that of "filter".
    void ResolveFloatValue(std::string_view name, SlcExprNode* value);
    void ResolveStringValue(SlcExprNode* value);

    /// Reports a fault that depends on the meaning of all arguments, unless one of them is faulty.
    void ErrorOfPlace(const SlcSyntaxNode* node, std::string_view message);

    SlcPtr<SlcSemanticError> m_errors;
    const SlcTextureTypeNode* m_kind = nullptr;
    Args m_args;              // after the name of the texture
    bool m_hasFault = false;  // an argument is faulty, so its meaning is unknown
};
