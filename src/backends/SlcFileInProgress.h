#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/SlcFiles.h"
#include "support/SlcPtr.h"
#include "support/SlcUnfinishedFile.h"

class SlcSemanticError;

/// A file that appears under its name either complete or not at all. It is written next to its
/// final place, in a private folder, and `Finish` moves it into place. Without `Finish` it is
/// removed, even if a signal that can be caught ends the process.
class SlcFileInProgress {
public:
    /// Opens a file for writing; `path` is its final place, and reports call it `name`. A file that
    /// cannot be opened is fatal: "Cannot open `name` for `purpose`". A file name that is too long
    /// is an error, which is reported before `SlcCompilationError` is thrown.
    SlcFileInProgress(SlcPtr<SlcSemanticError> errors, const std::string& path, std::string name,
                      std::string_view purpose);

    /// Writes the contents and moves the file into place. Throws `SlcCompilationError` if an error
    /// has been reported before, or if the file cannot be completed, which it reports.
    void Finish(std::string_view contents);

private:
    [[noreturn]] void ReportUnwritten() const;

    SlcPtr<SlcSemanticError> m_errors;
    std::string m_name;
    SlcUnfinishedFile m_unfinished;
    std::optional<SlcFile> m_file;
};
