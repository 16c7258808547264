#pragma once

#include <span>
#include <string_view>

#include "sqxls/SqxLsWorkspace.h"

/// A request about open documents. The answer is a function of the workspace and the parameters; it
/// throws `SqxLsError` for a request that is refused.
struct SqxLsMethod {
    std::string_view name;
    SqxJson (*answer)(SqxLsWorkspace& workspace, const SqxJson& params);
};

[[nodiscard]] std::span<const SqxLsMethod> SqxLsMethods();

/// Returns the capabilities of the server.
[[nodiscard]] SqxJson SqxLsCapabilities();
