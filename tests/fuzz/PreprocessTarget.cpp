// Runs the preprocessor on any source. The first files that the source includes contain its own
// text. Later files are short, since a source that includes itself twice would grow without limit.

#include <optional>
#include <string>
#include <string_view>

#include "fuzz/FuzzTarget.h"
#include "preprocessor/SlcPreprocessor.h"

namespace {

constexpr std::string_view k_included = "#pragma once\n";
constexpr int k_mostCopies = 2;  // of the source among the included files

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    SlcPreprocessorOptions options;
    options.macros = {{"OMBRIUM"}, {"f(x)=x x"}};
    options.folders = {"folder"};
    int copies = 0;
    options.provider = [&](const std::string& path) {
        if (++copies > k_mostCopies)
            return std::optional(path);
        return std::optional(std::string(size % 2 == 0 ? k_included : "") + text + path);
    };
    int errors = 0;
    options.report = [&](const SlcPreprocessorReport& report) {
        errors += report.isError ? 1 : 0;
        if (SlcReportText(report).size() + SlcIncludersText(report).size() < report.text.size())
            FuzzFault("a report lost its text");
    };
    const SlcPreprocessed first = SlcPreprocessText("a.sl", text, options);
    if (first.succeeded != (errors == 0))
        FuzzFault("refused without an error, or accepted with one");
    std::size_t last = 0;
    for (const SlcColumnChange& change : first.columns) {
        if (change.offset < last || change.offset >= first.text.size() || change.column < 1)
            FuzzFault("a column lies outside of the text");
        last = change.offset;
    }
    return 0;
}
