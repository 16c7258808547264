#pragma once

#include <string>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

/// The codes by which the renderer's library knows types and details.
class SlcInterfaceQxLib {
public:
    /// The code of a type; an array has none of its own, its element is asked for. A type that
    /// the library does not know is named on standard error and gives 0.
    [[nodiscard]] static int SlcTypeNodeToQxType(const SlcTypeNode* type);
    /// The code of a detail; any but uniform counts as varying.
    [[nodiscard]] static int SlcDetailNodeToQxClass(const SlcDetailNode* detail);
    /// "uniform float[3]" and the like. A type that no parameter can have is fatal.
    [[nodiscard]] static std::string SlcConstructDetailTypeStr(const SlcDetailNode* detail,
                                                               const SlcTypeNode* type);
};
