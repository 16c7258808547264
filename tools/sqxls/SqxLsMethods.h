#pragma once

#include <span>
#include <string_view>

#include "sqxls/SqxLsWorkspace.h"

/// A kind of request. `answer` returns the result of a request; it throws `SqxLsError` to refuse
/// the request.
struct SqxLsMethod {
    std::string_view name;
    SqxJson (*answer)(SqxLsWorkspace& workspace, const SqxJson& params);
};

/// Returns all kinds of requests except `initialize` and `shutdown`.
[[nodiscard]] std::span<const SqxLsMethod> SqxLsMethods();

/// Returns the capabilities of the server, for the answer to `initialize`.
[[nodiscard]] SqxJson SqxLsCapabilities();
