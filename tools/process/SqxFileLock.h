#pragma once

#include <filesystem>

/// A lock on a file that is made for it, held against other processes for the life of the object.
class SqxFileLock {
public:
    enum class IfTaken { Wait, GiveUp };
    enum class State { Held, Taken, Failed };

    /// Makes the file if it is not there.
    SqxFileLock(const std::filesystem::path& path, IfTaken ifTaken);
    ~SqxFileLock();
    SqxFileLock(const SqxFileLock&) = delete;
    SqxFileLock& operator=(const SqxFileLock&) = delete;

    /// `Taken`: another process holds it. `Failed`: the file can neither be made nor locked.
    [[nodiscard]] State Found() const { return m_state; }

private:
    int m_file;
    State m_state = State::Failed;
};
