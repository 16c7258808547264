#pragma once

#include <string>
#include <string_view>
#include <vector>

// Values as JSON (RFC 8259), which the page reads. Texts may hold any bytes: what is no UTF-8 the
// reader of the page replaces.

/// With its quotes.
[[nodiscard]] std::string SqxJsonText(std::string_view text);
/// In the fewest digits that give it back; what is no number is null.
[[nodiscard]] std::string SqxJsonNumber(float number);
/// `values` are JSON themselves.
[[nodiscard]] std::string SqxJsonArray(const std::vector<std::string>& values);
[[nodiscard]] std::string SqxJsonNumbers(const std::vector<float>& numbers);

/// An object, filled member by member, which stand in that order. No name may be given twice.
class SqxJsonObject {
public:
    /// `value` is JSON itself.
    SqxJsonObject& Add(std::string_view name, std::string_view value);
    SqxJsonObject& AddText(std::string_view name, std::string_view text);
    SqxJsonObject& AddBool(std::string_view name, bool value);

    [[nodiscard]] std::string Whole() const { return "{" + m_members + "}"; }

private:
    std::string m_members;
};
