#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/SlcHideSets.h"
#include "preprocessor/SlcMacroTable.h"
#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceToken.h"

/// The source of the expander's tokens and of the values of built-in macros.
class SlcTokenSource {
public:
    virtual ~SlcTokenSource() = default;

    /// Returns the next token of the text, and executes directives before it. While the arguments
    /// of a macro are read, the end of an included file counts as the end of the text.
    [[nodiscard]] virtual SlcSourceToken NextToken() = 0;
    /// True if the next token of the text is "(". Executes no directives: a directive before the
    /// "(" makes the result false.
    [[nodiscard]] virtual bool ParenthesisFollows() = 0;
    /// Enclose the reading of a call's arguments. Calls can nest, since a directive between the
    /// arguments may call a macro.
    virtual void BeginArguments() = 0;
    virtual void EndArguments() = 0;
    /// Returns the value of a built-in macro for the use `use`.
    [[nodiscard]] virtual std::string ValueOf(SlcBuiltInMacro macro, const SlcSourceToken& use) = 0;
};

/// Replaces macros in a stream of tokens.
///
/// Dave Prosser's algorithm (X3J11/86-196), on which the wording of the C standard is based: each
/// token has a hide set of the macros that led to it, and none of these macros replaces it again.
/// Unlike the original, which works list by list, this class replaces tokens as they are consumed,
/// using a stack of the bodies being read.
class SlcMacroExpander {
public:
    using Tokens = std::vector<SlcSourceToken>;

    SlcMacroExpander(SlcPreprocessorRun& run, SlcMacroTable& macros, SlcTokenSource& source)
        : m_run(run),
          m_macros(macros),
          m_source(source)
    {
    }

    /// Returns the next token of the text after replacement; `End` at the end of the text.
    [[nodiscard]] SlcSourceToken Next() { return Next(0); }

    /// Replaces macros in these tokens, without reading the source.
    [[nodiscard]] Tokens Expand(Tokens tokens);
    /// Does the same for a condition: `defined NAME` becomes 1 or 0.
    [[nodiscard]] Tokens ExpandCondition(Tokens tokens);

private:
    /// The body of a macro, or tokens that are expanded separately. They are read before the
    /// contexts below them in `m_contexts`, and before the source.
    struct Context {
        Tokens tokens;
        std::size_t next = 0;
    };
    /// An argument of a call: as written, and with macros replaced once that is needed.
    struct Argument {
        Tokens raw;
        Tokens expanded;
        bool isExpanded = false;
        bool isMissing = false;  // the optional last argument was omitted
    };
    using Arguments = std::vector<Argument>;

    // These functions read only the contexts above `base`, since those below do not belong to the
    // tokens that are expanded separately. At base 0 they continue with the source.
    [[nodiscard]] SlcSourceToken Next(std::size_t base);
    [[nodiscard]] SlcSourceToken Raw(std::size_t base);
    [[nodiscard]] bool ParenthesisFollows(std::size_t base);
    [[nodiscard]] SlcSourceToken Defined(const SlcSourceToken& word, std::size_t base);

    /// Inserts the replacement of a macro's use before the rest of the input. False if the name
    /// must be left as it is: no "(" follows, or the arguments have been reported.
    [[nodiscard]] bool Replace(const SlcSourceToken& use, const SlcMacroTable::Entry& entry,
                               std::size_t base);
    /// Records the use in the trace.
    void NoteUse(const SlcSourceToken& use, const SlcSourceToken& end);
    void ReplaceBuiltIn(const SlcSourceToken& use, SlcBuiltInMacro macro);
    /// False after a report. Sets `close` to the closing parenthesis.
    [[nodiscard]] bool ReadArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                     std::size_t base, Arguments& arguments, SlcSourceToken& close);
    /// Reads the arguments, between `BeginArguments` and `EndArguments`. False if ")" is missing.
    [[nodiscard]] bool CollectArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                        std::size_t base, Arguments& arguments,
                                        SlcSourceToken& close);
    [[nodiscard]] bool MatchArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                      Arguments& arguments);
    /// Returns the body with its parameters replaced by the arguments.
    [[nodiscard]] Tokens Substitute(const SlcMacro& macro, Arguments& arguments,
                                    const SlcSourceToken& use);
    [[nodiscard]] Tokens PartOf(const SlcMacro& macro, std::size_t index, Arguments& arguments);
    [[nodiscard]] Tokens Expanded(Argument& argument);
    [[nodiscard]] SlcSourceToken Quote(const SlcSourceToken& hash, const Tokens& argument);
    /// Joins the last token of `result` with the first one of `part`, and appends the others.
    void Join(Tokens& result, const Tokens& part, const SlcSourceToken& use);
    void PushBody(Tokens body, const SlcSourceToken& use, SlcHideSet hidden);
    void Spend(const SlcSourceToken& use, const SlcSourceToken& token);

    SlcPreprocessorRun& m_run;
    SlcMacroTable& m_macros;
    SlcTokenSource& m_source;
    SlcHideSets m_hideSets;
    std::vector<Context> m_contexts;
    int m_depth = 0;             // nesting depth of arguments being expanded
    bool m_inCondition = false;  // `defined` is an operator
};
