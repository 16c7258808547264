#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frontend/SlcSyntaxNode.h"
#include "support/SlcPtr.h"

class SlcCommentICode;
class SlcIdentNode;

/// The sink for the messages of every pass after parsing, shared by the passes of one compile.
///
/// A message about a node carries the node's file and line. Reports of one function or shader
/// are headed once by the line "file: In function name". An error is counted and the pass goes
/// on; a fatal error ends the process with status 1.
class SlcSemanticError : public SlcCollectable {
public:
    /// The function or shader whose body is being checked from here on; neither is owned.
    void SetFuncName(const SlcIdentNode* function, const std::string* file);

    /// The function whose body is being checked, and whether its heading has been printed.
    struct Heading {
        const SlcIdentNode* function = nullptr;
        const std::string* file = nullptr;  // of the function's definition
        bool isPrinted = false;
    };
    [[nodiscard]] const Heading& GetHeading() const { return m_heading; }
    /// The body goes on behind a function inside it. Its heading comes again only if that function
    /// has printed one in between.
    void ResumeFunc(Heading outer);

    /// False once an error has been reported.
    [[nodiscard]] bool NoError() const { return m_noError; }

    /// While one lives, errors and warnings are neither printed nor counted: what is walked will be
    /// walked again.
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

    /// Quiet if an error has been reported since there were `before` (`NbErrors()`): what further
    /// checks of the same expression say would only follow from it.
    class QuietAfterError {
    public:
        QuietAfterError(SlcSemanticError& errors, int before);

    private:
        std::optional<Quiet> m_quiet;
    };

    /// `node` may be null in all forms of `Error`: the message then stands without a place.
    void Error(const SlcSyntaxNode* node, std::string_view message);
    void Error(const SlcSyntaxNode* node, std::string_view message, std::string_view detail);
    /// Shows an excerpt of `nearby`, which may be null.
    void Error(const SlcSyntaxNode* node, std::string_view message, SlcSyntaxNode* nearby);
    /// Placed by the comment of the code, which may not be null; so is `FatalErrorICode`.
    void ErrorICode(const SlcPtr<SlcCommentICode>& comment, std::string_view message);

    /// Printed and counted only if the warning level is at least `level`, 1 or 2.
    void Warning(const SlcSyntaxNode* node, std::string_view message, int level);
    /// `node` may be null.
    void Warning(const SlcSyntaxNode* node, std::string_view message, std::string_view detail,
                 int level);

    /// A line of advice below a report, where advice is shown; never counted.
    void Advise(const SlcSyntaxNode* node, std::string_view text);

    /// A fault of the compiler itself, or of what the passes before should have refused: prints the
    /// message and the contact address, and ends the process with status 1.
    [[noreturn]] void FatalError(const SlcSyntaxNode* node, std::string_view message);
    [[noreturn]] void FatalError(std::string_view message);
    [[noreturn]] void FatalErrorICode(const SlcPtr<SlcCommentICode>& comment,
                                      std::string_view message);

    /// Where a report stands. An empty range leaves the column open.
    struct Place {
        std::string_view file;
        int line = 0;
        SlcTextRange range;
    };
    /// The line `file:line: kind: text`; counts nothing. `level` is that of a warning.
    static void PrintAt(const Place& place, std::string_view kind, std::string_view text,
                        int level = 0);

private:
    void CountError();
    /// Once for each function, and only if it is known.
    void PrintHeading();

    bool m_noError = true;
    Heading m_heading;
    int m_quiet = 0;  // how many want it so
};
