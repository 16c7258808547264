#pragma once

#include <fstream>
#include <string>
#include <string_view>

#include "support/SlcPtr.h"
#include "support/SlcUnfinishedFile.h"

class SlcSemanticError;

/// A file that appears under its name whole or not at all: it is written beside its place, under a
/// name that no other run has, and `Finish` moves it there. Without `Finish` it is removed again,
/// also by a signal that ends the process.
class SlcFileInProgress {
public:
    /// A file that cannot be opened is fatal, "Cannot open `name` for `purpose`"; a name that is
    /// too long for one is reported, and throws `SlcCompilationError`. `name`: what reports call
    /// it.
    SlcFileInProgress(SlcPtr<SlcSemanticError> errors, const std::string& path, std::string name,
                      std::string_view purpose);

    /// Who writes need not ask whether it worked: `Finish` does.
    [[nodiscard]] std::ostream& Out() { return m_file; }

    /// Throws `SlcCompilationError` if an error has been reported, or if the file cannot be
    /// completed, which it reports.
    void Finish();

private:
    [[noreturn]] void ReportUnwritten() const;

    SlcPtr<SlcSemanticError> m_errors;
    std::string m_name;
    SlcUnfinishedFile m_unfinished;
    std::ofstream m_file;
};
