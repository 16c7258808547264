#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "sqxls/SqxLsText.h"

using SqxJson = nlohmann::json;

/// The codes of errors that the protocol defines.
enum class SqxLsErrorCode {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    ServerNotInitialized = -32002,
    RequestFailed = -32803,
    RequestCancelled = -32800,
};

/// A request that is refused; its answer holds code and text.
class SqxLsError : public std::runtime_error {
public:
    SqxLsError(SqxLsErrorCode code, const std::string& text)
        : std::runtime_error(text),
          m_code(code)
    {
    }
    [[nodiscard]] SqxLsErrorCode Code() const { return m_code; }

private:
    SqxLsErrorCode m_code;
};

/// The member at a path such as "textDocument/uri"; null if it or a part of the path is missing.
[[nodiscard]] const SqxJson& SqxLsMember(const SqxJson& object, std::string_view path);
/// The same, which must be there as a text. Throws `SqxLsError`.
[[nodiscard]] const std::string& SqxLsTextMember(const SqxJson& object, std::string_view path);
[[nodiscard]] bool SqxLsFlag(const SqxJson& object, std::string_view path);

/// Throws `SqxLsError` for what is no place.
[[nodiscard]] SqxLsPosition SqxLsReadPosition(const SqxJson& json);
[[nodiscard]] SqxLsSpan SqxLsReadRange(const SqxJson& json, const SqxLsText& text);

[[nodiscard]] SqxJson SqxLsWritePosition(const SqxLsPosition& position);
[[nodiscard]] SqxJson SqxLsWriteRange(const SqxLsText& text, const SqxLsSpan& span);
