#pragma once

/// How far something has happened to a variable.
enum class SlcUsageState {
    Always,  // on every path
    Never,
    Maybe,  // on some path
};

/// What has happened to a variable on the way to a point of the code that sees it. At first
/// nothing.
class SlcVariableUsage {
public:
    [[nodiscard]] SlcUsageState GetModified() const { return m_modified; }
    /// Read before being set.
    [[nodiscard]] SlcUsageState GetRead() const { return m_read; }

    /// `maybe`: it may also not happen.
    void SetModifiedInScope(bool maybe);
    void SetAccessedInScope(bool maybe);

    /// Where this path meets another one.
    [[nodiscard]] SlcVariableUsage Meet(const SlcVariableUsage& other) const;

private:
    SlcUsageState m_modified = SlcUsageState::Never;
    SlcUsageState m_read = SlcUsageState::Never;
};
