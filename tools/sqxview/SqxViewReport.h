#pragma once

#include <functional>
#include <string>
#include <vector>

/// Lines of a source around places that the compiler's report names.
struct SqxViewExcerpt {
    struct Line {
        int number;
        std::string text;
        bool marked;  // the report names it
    };
    std::string file;
    std::vector<Line> lines;
};

/// The lines around each place that a report names, `file:line: ...`, as far as `read` gives the
/// file's text; in the order of the report, each file once, with one stretch for places that lie
/// close together. `read` gives false for what is no file that was compiled: a report may name
/// anything. Of a long report only the first places count.
[[nodiscard]] std::vector<SqxViewExcerpt>
SqxViewExcerptsOf(const std::string& report,
                  const std::function<bool(const std::string& file, std::string& text)>& read);
