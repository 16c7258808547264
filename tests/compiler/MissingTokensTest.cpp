// Removes or changes single brackets and separators of the examples. Checks that for each kind of
// token, in at least 80 of 100 syntax errors after a removal, the first error or its advice names
// the missing token. Checks that at most 5 of 100 errors after a change of one of the parentheses
// before a "{" are followed by a second error. SLC_ALL_SLIPS=1 tries all places, and prints the
// rates and the exceptions.

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "compiler/QxCompiler.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view k_signs = "(),;{}";  // brackets and separators

struct Source {
    std::string path;
    std::string text;
    std::vector<std::size_t> signs;  // places of brackets and separators
};

/// Returns the places of brackets and separators outside of comments, strings and directives.
std::vector<std::size_t> SignsOf(const std::string& text)
{
    std::vector<std::size_t> signs;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsLine = at == 0 || text[at - 1] == '\n';
        if (startsLine && text[at] == '#')
            at = text.find('\n', at);
        else if (text.compare(at, 2, "/*") == 0)
            at = text.find("*/", at) + 1;
        else if (text.compare(at, 2, "//") == 0)
            at = text.find('\n', at);
        else if (text[at] == '"')
            at = text.find('"', at + 1);
        else if (k_signs.find(text[at]) != std::string_view::npos)
            signs.push_back(at);
    }
    return signs;
}

QxCompileResult Check(const Source& source, const std::string& text)
{
    QxCompileOptions options;
    options.output = QxCompileOptions::Output::Nothing;
    options.showsAdvice = true;
    options.folders = {SLC_EXAMPLES_FOLDER "/include", SLC_PATTERNS_FOLDER};
    return QxCompileText(source.path, text, options);
}

/// Returns the examples that compile without errors, sorted by path.
std::vector<Source> Examples()
{
    std::vector<Source> sources;
    for (const auto& entry : fs::recursive_directory_iterator(SLC_EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".sl")
            continue;
        std::ifstream file(entry.path());
        Source source = {entry.path().string(), {std::istreambuf_iterator<char>(file), {}}, {}};
        source.signs = SignsOf(source.text);
        if (Check(source, source.text).succeeded)
            sources.push_back(std::move(source));
    }
    std::sort(sources.begin(), sources.end(),
              [](const Source& a, const Source& b) { return a.path < b.path; });
    return sources;
}

bool TriesAll()
{
    return std::getenv("SLC_ALL_SLIPS") != nullptr;
}

std::vector<QxCompileReport> Errors(const QxCompileResult& result)
{
    std::vector<QxCompileReport> errors;
    for (const QxCompileReport& report : result.reports)
        if (report.severity == QxCompileReport::Severity::Error)
            errors.push_back(report);
    return errors;
}

bool Names(const QxCompileReport& report, char token)
{
    const auto says = [&report](const std::string& words) {
        return report.text.find(words) != std::string::npos ||
               report.advice.find(words) != std::string::npos;
    };
    const std::string quoted = std::string("'") + token + "'";
    if (says(quoted + " expected") || says("a " + quoted + " is missing") ||
        says("a " + quoted + " may be missing"))
        return true;
    if (token == '(')
        return says("no '(' is open");
    return (token == '{' || token == '}') &&
           (says("the brace of line") || says("no brace is open"));
}

TEST(MissingTokens, AreNamed)
{
    struct Rate {
        int tries = 0;
        int named = 0;
    };
    std::map<char, Rate> rates;
    std::size_t number = 0;
    for (const Source& source : Examples()) {
        for (const std::size_t place : source.signs) {
            if (number++ % 7 != 0 && !TriesAll())
                continue;
            std::string text = source.text;
            const char token = std::exchange(text[place], ' ');
            const auto errors = Errors(Check(source, text));
            const bool isSyntax = !errors.empty() && (errors[0].text == "parse error" ||
                                                      errors[0].text.find("expected") < 20);
            if (!isSyntax)
                continue;
            Rate& rate = rates[token];
            ++rate.tries;
            rate.named += Names(errors[0], token) ? 1 : 0;
            if (!Names(errors[0], token) && TriesAll())
                std::cout << source.path.substr(source.path.rfind('/')) << ":" << errors[0].line
                          << " " << token << " " << errors[0].text << " -- " << errors[0].advice
                          << "\n";
        }
    }
    for (const char token : k_signs) {
        const Rate& rate = rates[token];
        EXPECT_GE(rate.tries, 15) << token;
        EXPECT_GE(rate.named * 100, rate.tries * 80) << token << " of " << rate.tries;
        if (TriesAll())
            std::cout << token << ": " << rate.named << " of " << rate.tries << "\n";
    }
}

/// Returns the place of the parenthesis that closes the one at `open`.
std::size_t Closing(const Source& source, std::size_t open)
{
    int depth = 0;
    for (const std::size_t place : source.signs) {
        if (place < open)
            continue;
        depth += source.text[place] == '(' ? 1 : source.text[place] == ')' ? -1 : 0;
        if (depth == 0)
            return place;
    }
    return std::string::npos;
}

/// Returns variants of the text in which the parenthesis at `open` or the one at `close` is
/// removed, replaced by a square bracket, or doubled.
std::vector<std::string> WrongHeads(const std::string& text, std::size_t open, std::size_t close)
{
    std::vector<std::string> wrong;
    for (const std::size_t place : {open, close})
        for (const std::string_view slip :
             {std::string_view(" "), std::string_view("[]"), std::string_view("(())")}) {
            const std::size_t half = slip.size() / 2;
            const std::string_view other =
                slip == " " ? slip : slip.substr(place == open ? 0 : half, half);
            wrong.push_back(text.substr(0, place) + std::string(other) + text.substr(place + 1));
        }
    return wrong;
}

TEST(MissingTokens, InHeadsRarelyGiveASecondReport)
{
    int tries = 0;
    int further = 0;
    std::size_t number = 0;
    for (const Source& source : Examples()) {
        for (const std::size_t open : source.signs) {
            if (source.text[open] != '(')
                continue;
            const std::size_t close = Closing(source, open);
            const std::size_t next = source.text.find_first_not_of(" \t\n", close + 1);
            if (next == std::string::npos || source.text[next] != '{')
                continue;
            for (const std::string& text : WrongHeads(source.text, open, close)) {
                if (number++ % 5 != 0 && !TriesAll())
                    continue;
                const auto errors = Errors(Check(source, text));
                tries += errors.empty() ? 0 : 1;
                further += errors.size() > 1 ? 1 : 0;
                if (errors.size() > 1 && TriesAll())
                    std::cout << source.path.substr(source.path.rfind('/')) << ":" << errors[0].line
                              << " then " << errors[1].line << " " << errors[1].text << " -- "
                              << errors[1].advice << "\n";
            }
        }
    }
    EXPECT_GT(tries, 30);
    EXPECT_LE(further * 100, tries * 5) << "of " << tries;
    if (TriesAll())
        std::cout << further << " of " << tries << " gave a second report\n";
}

}  // namespace
