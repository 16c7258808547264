// An output is written in a private folder next to its final place and moved to that place when it
// is complete, so that not even a killed run leaves a partial file that looks like a good one.
//
// Tested by tests/backends/GenByteCodeTest.cpp and tests/golden/unwritable_output.sl.

#include "backends/SlcFileInProgress.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

SlcFileInProgress::SlcFileInProgress(SlcPtr<SlcSemanticError> errors, const std::string& path,
                                     std::string name, std::string_view purpose)
    : m_errors(std::move(errors)),
      m_name(std::move(name)),
      m_unfinished(path)
{
    if (!m_unfinished.Folder().empty())
        m_file.emplace(m_unfinished.Path(), SlcFile::For::Writing);
    if (m_file && m_file->IsOpen())
        return;
    if (errno == ENAMETOOLONG)
        ReportUnwritten();
    m_errors->FatalError("Cannot open " + m_name + " for " + std::string(purpose));
}

void SlcFileInProgress::Finish(std::string_view contents)
{
    if (!m_errors->NoError())
        throw SlcCompilationError();
    // Not fatal: the source determines the shader's name, so a name that is too long for a file is
    // a fault of the source.
    if (!m_file->Write(contents) || !m_file->Close() || !m_unfinished.MoveIntoPlace())
        ReportUnwritten();
}

void SlcFileInProgress::ReportUnwritten() const
{
    m_errors->Error(nullptr, "Cannot write " + m_name + ": " + std::strerror(errno));
    throw SlcCompilationError();
}
