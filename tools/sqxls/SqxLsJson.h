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

/// Thrown to refuse a message. The answer to a request contains the code and the text; for a
/// notification, which has no answer, the text is logged.
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

/// Returns the member at a path such as "textDocument/uri"; JSON's null if any part of the path is
/// missing.
[[nodiscard]] const SqxJson& SqxLsMember(const SqxJson& object, std::string_view path);
/// Returns the member at a path as a string. Throws `SqxLsError` if it is not a string.
[[nodiscard]] const std::string& SqxLsTextMember(const SqxJson& object, std::string_view path);
/// True if the member at a path is `true`.
[[nodiscard]] bool SqxLsFlag(const SqxJson& object, std::string_view path);

/// Reads a position. Throws `SqxLsError` if `json` is not a position.
[[nodiscard]] SqxLsPosition SqxLsReadPosition(const SqxJson& json);
/// Reads a range as a range of bytes of `text`. Throws `SqxLsError` if `json` is not a valid range.
[[nodiscard]] SqxLsSpan SqxLsReadRange(const SqxJson& json, const SqxLsText& text);

/// Returns a position in the form of the protocol.
[[nodiscard]] SqxJson SqxLsWritePosition(const SqxLsPosition& position);
/// Returns a range of bytes of `text` in the form of the protocol.
[[nodiscard]] SqxJson SqxLsWriteRange(const SqxLsText& text, const SqxLsSpan& span);
