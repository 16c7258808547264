#pragma once

#include <functional>
#include <string>
#include <vector>

/// Consecutive lines of a file, around one or more places that a report of the compiler names.
struct SqxViewExcerpt {
    struct Line {
        int number;
        std::string text;
        bool marked;  // the report names it
    };
    std::string file;
    std::vector<Line> lines;
};

/// Returns the lines around each place `file:line: ...` of a report. Files have the order in which
/// the report first names them, and lines ascend; places that are close together share an excerpt.
/// `read` must store the text of a file and return true, or return false if the compile has not
/// read that file: any text of a report may look like a place. Only the first places of a long
/// report are used.
[[nodiscard]] std::vector<SqxViewExcerpt>
SqxViewExcerptsOf(const std::string& report,
                  const std::function<bool(const std::string& file, std::string& text)>& read);
