#include "backends/SlcFileInProgress.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

SlcFileInProgress::SlcFileInProgress(SlcPtr<SlcSemanticError> errors, std::string path,
                                     std::string_view purpose)
    : m_errors(std::move(errors)),
      m_path(std::move(path)),
      m_unfinished(m_path + ".tmp"),
      m_file(m_unfinished, std::ios::binary | std::ios::trunc)
{
    if (m_file)
        return;
    // The source chooses its shader's name, so that one too long for a file is its own fault.
    if (errno == ENAMETOOLONG)
        ReportUnwritten();
    m_errors->FatalError("Cannot open " + m_path + " for " + std::string(purpose));
}

SlcFileInProgress::~SlcFileInProgress()
{
    if (!m_unfinished.empty())
        std::remove(m_unfinished.c_str());
}

void SlcFileInProgress::Finish()
{
    m_file.close();
    if (!m_errors->NoError())
        throw SlcCompilationError();
    if (!m_file || std::rename(m_unfinished.c_str(), m_path.c_str()) != 0)
        ReportUnwritten();
    m_unfinished.clear();
}

void SlcFileInProgress::ReportUnwritten() const
{
    m_errors->Error(nullptr, "Cannot write " + m_path + ": " + std::strerror(errno));
    throw SlcCompilationError();
}
