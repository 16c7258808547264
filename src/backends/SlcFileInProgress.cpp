// An output is written under a name of its own beside its place and moved there when it is whole,
// so that nobody, not even a run that is killed, leaves half a file that looks like a good one.
//
// Tested by tests/backends/GenByteCodeTest.cpp and tests/golden/unwritable_output.sl.

#include "backends/SlcFileInProgress.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "support/QxDebug.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

namespace {

/// Makes an empty file in the folder of `path`, under a name that no other run has, and gives the
/// name; empty, with the error in `errno`, if that fails. The name does not grow with that of
/// the target, which may be as long as a name can be.
std::string MakeUnfinished(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
    std::string name = folder + ".unfinished-XXXXXX";
    const int file = ::mkstemp(name.data());
    if (file < 0)
        return {};
    // It gets the rights that any new file has.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    static_cast<void>(::fchmod(file, 0666 & ~mask));
    ::close(file);
    return name;
}

}  // namespace

SlcFileInProgress::SlcFileInProgress(SlcPtr<SlcSemanticError> errors, std::string path,
                                     std::string_view purpose)
    : m_errors(std::move(errors)),
      m_path(std::move(path)),
      m_unfinished(MakeUnfinished(m_path))
{
    if (!m_unfinished.empty()) {
        QxDebug::RemoveOnSignal(m_unfinished.c_str());
        m_file.open(m_unfinished, std::ios::binary | std::ios::trunc);
    }
    if (m_file.is_open())
        return;
    if (errno == ENAMETOOLONG)
        ReportUnwritten();
    m_errors->FatalError("Cannot open " + m_path + " for " + std::string(purpose));
}

SlcFileInProgress::~SlcFileInProgress()
{
    if (m_unfinished.empty())
        return;
    std::remove(m_unfinished.c_str());
    QxDebug::KeepOnSignal(m_unfinished.c_str());
}

void SlcFileInProgress::Finish()
{
    m_file.close();
    if (!m_errors->NoError())
        throw SlcCompilationError();
    // The source chooses its shader's name, so that one too long for a file is its own fault.
    if (!m_file || std::rename(m_unfinished.c_str(), m_path.c_str()) != 0)
        ReportUnwritten();
    QxDebug::KeepOnSignal(m_unfinished.c_str());
    m_unfinished.clear();
}

void SlcFileInProgress::ReportUnwritten() const
{
    m_errors->Error(nullptr, "Cannot write " + m_path + ": " + std::strerror(errno));
    throw SlcCompilationError();
}
