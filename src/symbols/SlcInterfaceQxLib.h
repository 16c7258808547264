#pragma once

#include <string>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

/// Maps types and details to their codes and words in compiled files.
class SlcInterfaceQxLib {
public:
    /// Returns the code of a type; for an array, pass its element type. For a type without a code,
    /// prints its name to the stream of reports and returns 0.
    [[nodiscard]] static int SlcTypeNodeToQxType(const SlcTypeNode* type);
    /// Returns the code of a detail; every detail except uniform counts as varying.
    [[nodiscard]] static int SlcDetailNodeToQxClass(const SlcDetailNode* detail);
    /// Formats a detail and a type, such as "uniform float[3]". Fatal for a type that no parameter
    /// can have.
    [[nodiscard]] static std::string SlcConstructDetailTypeStr(const SlcDetailNode* detail,
                                                               const SlcTypeNode* type);
};
