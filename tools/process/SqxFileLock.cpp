// Tested by tests/make/run.sh.

#include "process/SqxFileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SqxFileLock::SqxFileLock(const std::filesystem::path& path, IfTaken ifTaken)
    : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644))
{
    if (m_file < 0)
        return;
    const int operation = ifTaken == IfTaken::Wait ? LOCK_EX : LOCK_EX | LOCK_NB;
    int result = 0;
    do
        result = flock(m_file, operation);
    while (result != 0 && errno == EINTR);
    if (result == 0)
        m_state = State::Held;
    else if (errno == EWOULDBLOCK)
        m_state = State::Taken;
}

SqxFileLock::~SqxFileLock()
{
    if (m_file >= 0)
        close(m_file);
}
