#pragma once

#include <fstream>
#include <string>
#include <string_view>

#include "support/SlcPtr.h"

class SlcSemanticError;

/// A file that appears under its name whole or not at all: it is written beside its place, under a
/// name that no other run has, and `Finish` moves it there. Without `Finish` it is removed again,
/// also by a signal that ends the process.
class SlcFileInProgress {
public:
    /// A file that cannot be opened is fatal, "Cannot open `path` for `purpose`"; a name that is
    /// too long for one is reported, and throws `SlcCompilationError`.
    SlcFileInProgress(SlcPtr<SlcSemanticError> errors, std::string path, std::string_view purpose);
    ~SlcFileInProgress();
    SlcFileInProgress(const SlcFileInProgress&) = delete;
    SlcFileInProgress& operator=(const SlcFileInProgress&) = delete;

    /// Who writes need not ask whether it worked: `Finish` does.
    [[nodiscard]] std::ostream& Out() { return m_file; }

    /// Throws `SlcCompilationError` if an error has been reported, or if the file cannot be
    /// completed, which it reports.
    void Finish();

private:
    [[noreturn]] void ReportUnwritten() const;

    SlcPtr<SlcSemanticError> m_errors;
    std::string m_path;
    std::string m_unfinished;  // path of the file until it is whole
    std::ofstream m_file;
};
