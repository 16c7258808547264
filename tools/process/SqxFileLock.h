#pragma once

#include <filesystem>

/// A lock against other processes, on a file created for it, held as long as the object exists.
class SqxFileLock {
public:
    enum class IfTaken { Wait, GiveUp };
    enum class State { Held, Taken, Failed };

    /// Creates the file if it does not exist.
    SqxFileLock(const std::filesystem::path& path, IfTaken ifTaken);
    ~SqxFileLock();
    SqxFileLock(const SqxFileLock&) = delete;
    SqxFileLock& operator=(const SqxFileLock&) = delete;

    /// `Taken`: another process holds the lock. `Failed`: the file cannot be created or locked.
    [[nodiscard]] State Found() const { return m_state; }

private:
    int m_file;
    State m_state = State::Failed;
};
