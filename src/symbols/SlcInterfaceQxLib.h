#pragma once

#include <string>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

/// The codes of types and details in the renderer's library.
class SlcInterfaceQxLib {
public:
    /// The code of a type; for an array, ask for its element type. An unknown type is named on
    /// standard error and yields 0.
    [[nodiscard]] static int SlcTypeNodeToQxType(const SlcTypeNode* type);
    /// The code of a detail; any but uniform counts as varying.
    [[nodiscard]] static int SlcDetailNodeToQxClass(const SlcDetailNode* detail);
    /// Formats "uniform float[3]" and the like. Fatal for a type that no parameter can have.
    [[nodiscard]] static std::string SlcConstructDetailTypeStr(const SlcDetailNode* detail,
                                                               const SlcTypeNode* type);
};
