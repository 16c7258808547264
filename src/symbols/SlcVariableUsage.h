#pragma once

/// Whether an event has happened to a variable.
enum class SlcUsageState {
    Always,  // on every path
    Never,
    Maybe,  // on some path
};

/// The usage of a variable on the paths to a point of the code. Initially no event has happened.
class SlcVariableUsage {
public:
    [[nodiscard]] SlcUsageState GetModified() const { return m_modified; }
    /// Returns whether the variable was read before it was set.
    [[nodiscard]] SlcUsageState GetRead() const { return m_read; }

    /// Record a write and a read. `maybe` means that the event may not happen on this path. A read
    /// after a write that always happens has no effect.
    void SetModifiedInScope(bool maybe);
    void SetAccessedInScope(bool maybe);

    /// Returns the state where this path meets another one.
    [[nodiscard]] SlcVariableUsage Meet(const SlcVariableUsage& other) const;

private:
    SlcUsageState m_modified = SlcUsageState::Never;
    SlcUsageState m_read = SlcUsageState::Never;
};
