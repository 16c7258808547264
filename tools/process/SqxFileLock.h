#pragma once

#include <filesystem>

/// A lock against other processes, on a separate file. If it is obtained, it is held as long as the
/// object exists; the file stays.
class SqxFileLock {
public:
    enum class IfTaken { Wait, GiveUp };
    enum class State { Held, Taken, Failed };

    /// Creates the file if it does not exist. With `Wait`, waits until no other process holds the
    /// lock.
    SqxFileLock(const std::filesystem::path& path, IfTaken ifTaken);
    ~SqxFileLock();
    SqxFileLock(const SqxFileLock&) = delete;
    SqxFileLock& operator=(const SqxFileLock&) = delete;

    /// Returns whether the lock is held. `Taken`: another process holds it, only with `GiveUp`.
    /// `Failed`: the file cannot be created or locked.
    [[nodiscard]] State Found() const { return m_state; }

private:
    int m_file;
    State m_state = State::Failed;
};
