// Checks that docs/messages.md lists the reports of the compiler in the words of the sources, and
// no text that is not in the sources.
//
// A string in the sources counts as a report if it begins with a capital, after quotes or not, and
// contains a blank and a small letter. Excepted are arguments of `FatalError`, which reports bugs
// of the compiler, and the texts in `IsOther`. A report that a source composes of several strings
// is on the page with "…" between them.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Literal {
    std::string text;
    bool isFatal;  // an argument of `FatalError`, or part of one
};

/// Returns the string literals of a source, with escapes resolved and without a final line break.
/// Adjacent literals are one text.
std::vector<Literal> LiteralsOf(std::string source)
{
    source = std::regex_replace(source, std::regex("(^|\\s)//[^\\n]*"), "");
    static const std::regex literal(R"re("((?:[^"\\\n]|\\.)*)")re");
    std::vector<Literal> literals;
    std::size_t end = 0;
    for (std::sregex_iterator match(source.begin(), source.end(), literal), none; match != none;
         ++match) {
        const auto begin = static_cast<std::size_t>(match->position());
        const std::string between = source.substr(end, begin - end);
        const bool continues =
            !literals.empty() && between.find_first_not_of(" \n") == std::string::npos;
        if (!continues) {
            const std::size_t statement = source.find_last_of(";{}", begin);
            const bool isFatal =
                statement != std::string::npos &&
                source.substr(statement, begin - statement).find("FatalError") != std::string::npos;
            literals.push_back({"", isFatal});
        }
        literals.back().text += (*match)[1];
        end = begin + static_cast<std::size_t>(match->length());
    }
    for (Literal& l : literals) {
        l.text = std::regex_replace(l.text, std::regex(R"(\\n$)"), "");
        l.text = std::regex_replace(l.text, std::regex(R"(\\(.))"), "$1");
    }
    return literals;
}

bool IsSource(const fs::path& path)
{
    static const std::set<std::string> extensions = {".cpp", ".h", ".y", ".l"};
    return extensions.count(path.extension().string()) != 0;
}

/// True for texts that have the form of a report but do not report anything about a shader.
bool IsOther(const std::string& text)
{
    static const char* const others[] = {
        "Usage: ",
        "Jul 30 2003",
        "Received signal",
        "Illegal instruction",
        "Trace trap",
        "Floating point exception",
        "Bus error",
        "Segmentation violation",
        "Bad argument to system call",
        // dumps of the intermediate code
        "Begin Block ",
        "End Block ",
        "Nb iterations: ",
        "Block ",
        "The dump of ",
        "Bad SIMD info",
        "Var defs stmt",
        "Func def stmt",
        // internal faults in tables
        "Illuminance catch: ",
        "Symbol entry not a variable",
        "Illuminate illegal here",
        "Solar illegal here",
        "Def expr id not found",
        "Error in AddVar",
        "Maybe not ",
        "Id not in ",
        "The first argument of 'set",
        "C++ code generation",
        "Cannot generate C++ code",
        // generated C++
        "QxToken",
        "QX_",
        "Functions 'setcomp' may not",
    };
    if (text.find("Slc") != std::string::npos || text.find("CALL_PRIM_") != std::string::npos)
        return true;  // faults inside the compiler, and rows of the library
    return std::any_of(std::begin(others), std::end(others),
                       [&](const char* other) { return text.starts_with(other); });
}

bool LooksLikeAReport(const Literal& literal)
{
    const std::string& text = literal.text;
    const std::size_t first = text.find_first_not_of('\'');
    // A string without small letters, such as "WARNING", is not a report, but can begin one.
    if (std::none_of(text.begin(), text.end(),
                     [](unsigned char c) { return std::islower(c) != 0; }))
        return false;
    return !literal.isFatal && first != std::string::npos && std::isupper(text[first]) != 0 &&
           text.find(' ') != std::string::npos && !IsOther(text);
}

/// Returns the reports of the page: the first cell of each row, between backquotes.
std::vector<std::string> ReportsOf(const std::string& page)
{
    static const std::regex row("\n\\| `([^\n]*?)`( \\([W12, always]*\\)| \\(advice\\))? \\|");
    std::vector<std::string> reports;
    for (std::sregex_iterator match(page.begin(), page.end(), row), none; match != none; ++match)
        reports.push_back((*match)[1]);
    return reports;
}

std::vector<std::string> PiecesOf(std::string report)
{
    constexpr std::string_view gap = "…";
    std::vector<std::string> pieces;
    while (true) {
        const std::size_t at = report.find(gap);
        pieces.push_back(report.substr(0, at));
        if (at == std::string::npos)
            return pieces;
        report.erase(0, at + gap.size());
    }
}

TEST(MessagesPage, ListsExactlyTheReportsOfTheSources)
{
    const std::string page = Read(SLC_SOURCE_FOLDER "/docs/messages.md");
    const auto reports = ReportsOf(page);
    ASSERT_GT(reports.size(), 150U);
    std::string onPage;
    for (const std::string& report : reports)
        onPage += report + '\n';

    std::string inSources;
    for (const auto& entry : fs::recursive_directory_iterator(SLC_SOURCE_FOLDER "/src")) {
        if (!IsSource(entry.path()))
            continue;
        for (const Literal& literal : LiteralsOf(Read(entry.path()))) {
            inSources += literal.text + '\n';
            // A text that is followed by a value may end in a blank, which the page may omit.
            const std::string text = literal.text.substr(0, literal.text.find_last_not_of(' ') + 1);
            if (!LooksLikeAReport(literal))
                continue;
            EXPECT_NE(onPage.find(text), std::string::npos)
                << entry.path().filename() << ": \"" << literal.text
                << "\" is missing in docs/messages.md";
        }
    }
    for (const std::string& report : reports) {
        for (std::string piece : PiecesOf(report)) {
            piece.erase(0, piece.find_first_not_of(' '));
            piece.erase(piece.find_last_not_of(" (") + 1);
            EXPECT_NE(inSources.find(piece), std::string::npos)
                << "no source says \"" << piece << "\" of \"" << report << "\"";
        }
    }
}

}  // namespace
