#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frontend/SlcSyntaxNode.h"
#include "support/SlcPtr.h"

class SlcCommentICode;
class SlcIdentNode;

/// Reports the messages of the passes after parsing. The passes of semantics share one object, the
/// lowering and the back ends another. Some messages without a place are reported by the functions
/// of SlcDiagnostics.h instead.
///
/// A message about a node contains the node's file and line. A line "file: In function name"
/// precedes the reports of a function or shader. An error is counted and the pass continues; a
/// fatal error ends the compilation with status 1.
class SlcSemanticError : public SlcCollectable {
public:
    /// Sets the function or shader whose body is being checked; the pointers are not owned.
    void SetFuncName(const SlcIdentNode* function, const std::string* file);

    /// The function whose body is being checked, and whether its heading has been printed.
    struct Heading {
        const SlcIdentNode* function = nullptr;
        const std::string* file = nullptr;  // file of the function's definition
        bool isPrinted = false;
    };
    [[nodiscard]] const Heading& GetHeading() const { return m_heading; }
    /// Resumes the body of a function after an inner function. Its heading is printed again only if
    /// the inner function has printed one.
    void ResumeFunc(Heading outer);

    /// False once this object has reported an error.
    [[nodiscard]] bool NoError() const { return m_noError; }

    /// While an object of this class exists, errors, warnings and advice at nodes are neither
    /// printed nor counted, for example because another walk over the same code reports them.
    class Quiet {
    public:
        explicit Quiet(SlcSemanticError& errors) : m_errors(errors) { ++m_errors.m_quiet; }
        ~Quiet() { --m_errors.m_quiet; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        SlcSemanticError& m_errors;
    };
    [[nodiscard]] bool IsQuiet() const { return m_quiet > 0; }

    /// Quiet if the error count has grown beyond `before` (an earlier `NbErrors()`): further
    /// reports about the same expression would only follow from that error.
    class QuietAfterError {
    public:
        QuietAfterError(SlcSemanticError& errors, int before);

    private:
        std::optional<Quiet> m_quiet;
    };

    /// Reports an error. In all forms of `Error`, `node` may be null: the message is then printed
    /// alone, without a position.
    void Error(const SlcSyntaxNode* node, std::string_view message);
    void Error(const SlcSyntaxNode* node, std::string_view message, std::string_view detail);
    /// Adds an excerpt of `nearby` to the message, unless `node` or `nearby` is null.
    void Error(const SlcSyntaxNode* node, std::string_view message, SlcSyntaxNode* nearby);
    /// Reports an error at the position of `comment`, which must not be null. Prints no heading,
    /// and reports in quiet mode too; so does `FatalErrorICode`.
    void ErrorICode(const SlcPtr<SlcCommentICode>& comment, std::string_view message);

    /// In both forms of `Warning`, the warning is printed and counted only if the warning level is
    /// at least `level`, 1 or 2. `node` may be null.
    void Warning(const SlcSyntaxNode* node, std::string_view message, int level);
    void Warning(const SlcSyntaxNode* node, std::string_view message, std::string_view detail,
                 int level);

    /// Adds a line of advice to the last report if advice is shown and no `Quiet` exists; never
    /// counted. `node` may be null.
    void Advise(const SlcSyntaxNode* node, std::string_view text);

    /// Reports and counts a fault of the compiler, or code that earlier passes should have
    /// rejected, also in quiet mode: prints the message and the contact address, and calls
    /// `EndCompilation` with status 1. `node` may be null.
    [[noreturn]] void FatalError(const SlcSyntaxNode* node, std::string_view message);
    [[noreturn]] void FatalError(std::string_view message);
    [[noreturn]] void FatalErrorICode(const SlcPtr<SlcCommentICode>& comment,
                                      std::string_view message);

    /// The place of a report. An empty range means that the column is unknown.
    struct Place {
        std::string_view file;
        int line = 0;
        SlcTextRange range;
    };
    /// Records the report and prints the line `file:line: kind: text`; counts nothing. `level` is
    /// the level of a warning.
    static void PrintAt(const Place& place, std::string_view kind, std::string_view text,
                        int level = 0);

private:
    void CountError();
    /// Prints the heading unless it has been printed or no function is known.
    void PrintHeading();

    bool m_noError = true;
    Heading m_heading;
    int m_quiet = 0;  // nesting depth of `Quiet`
};
