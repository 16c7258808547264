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

/// The source of the expander's tokens, and of the values of built-in macros.
class SlcTokenSource {
public:
    virtual ~SlcTokenSource() = default;

    /// The next token of the text, whose directives are carried out on the way. While arguments of
    /// a macro are read, the end of an included file is an end.
    [[nodiscard]] virtual SlcSourceToken NextToken() = 0;
    /// True if the next token of the text is "(". Directives are not carried out: one in between
    /// makes it false.
    [[nodiscard]] virtual bool ParenthesisFollows() = 0;
    /// Around the arguments of a call. Calls nest: a directive between arguments may call a macro.
    virtual void BeginArguments() = 0;
    virtual void EndArguments() = 0;
    /// The replacement of a macro that depends on its place.
    [[nodiscard]] virtual std::string ValueOf(SlcBuiltInMacro macro, const SlcSourceToken& use) = 0;
};

/// Replaces macros in a stream of tokens.
///
/// The algorithm is Dave Prosser's (X3J11/86-196), from which the wording of the C standard was
/// made: each token has a hide set of the macros that led to it, and none of them replaces it
/// again. Ours departs from it in form: instead of a whole list, tokens are replaced as they are
/// taken, with a stack of the bodies that are being read.
class SlcMacroExpander {
public:
    using Tokens = std::vector<SlcSourceToken>;

    SlcMacroExpander(SlcPreprocessorRun& run, SlcMacroTable& macros, SlcTokenSource& source)
        : m_run(run),
          m_macros(macros),
          m_source(source)
    {
    }

    /// The next token of the text after replacement; `End` at its end.
    [[nodiscard]] SlcSourceToken Next() { return Next(0); }

    /// These tokens by themselves, replaced.
    [[nodiscard]] Tokens Expand(Tokens tokens);
    /// The same for a condition: `defined NAME` becomes 1 or 0.
    [[nodiscard]] Tokens ExpandCondition(Tokens tokens);

private:
    struct Context {
        Tokens tokens;
        std::size_t next = 0;
    };
    /// An argument of a call, as written and, once it has been wanted, replaced.
    struct Argument {
        Tokens raw;
        Tokens expanded;
        bool isExpanded = false;
        bool isMissing = false;  // an optional one that the call leaves out
    };
    using Arguments = std::vector<Argument>;

    // Only the contexts above `base` are read; those below are not part of the argument that is
    // expanded by itself. At base 0 the source follows.
    [[nodiscard]] SlcSourceToken Next(std::size_t base);
    [[nodiscard]] SlcSourceToken Raw(std::size_t base);
    [[nodiscard]] bool ParenthesisFollows(std::size_t base);
    [[nodiscard]] SlcSourceToken Defined(const SlcSourceToken& word, std::size_t base);

    /// Inserts the replacement of a macro's use before the rest of the input. False if it is not a
    /// use.
    [[nodiscard]] bool Replace(const SlcSourceToken& use, const SlcMacroTable::Entry& entry,
                               std::size_t base);
    /// For the trace.
    void NoteUse(const SlcSourceToken& use, const SlcSourceToken& end);
    void ReplaceBuiltIn(const SlcSourceToken& use, SlcBuiltInMacro macro);
    /// False after a report. `close` becomes the closing parenthesis.
    [[nodiscard]] bool ReadArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                     std::size_t base, Arguments& arguments, SlcSourceToken& close);
    /// The same, while the source knows of the call. False if the parenthesis is missing.
    [[nodiscard]] bool CollectArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                        std::size_t base, Arguments& arguments,
                                        SlcSourceToken& close);
    [[nodiscard]] bool MatchArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                      Arguments& arguments);
    /// The body with its parameters replaced.
    [[nodiscard]] Tokens Substitute(const SlcMacro& macro, Arguments& arguments,
                                    const SlcSourceToken& use);
    [[nodiscard]] Tokens PartOf(const SlcMacro& macro, std::size_t index, Arguments& arguments);
    [[nodiscard]] Tokens Expanded(Argument& argument);
    [[nodiscard]] SlcSourceToken Quote(const SlcSourceToken& hash, const Tokens& argument);
    /// Joins the last token of `result` and the first one of `part`.
    void Join(Tokens& result, const Tokens& part, const SlcSourceToken& use);
    void PushBody(Tokens body, const SlcSourceToken& use, SlcHideSet hidden);
    void Spend(const SlcSourceToken& use, const SlcSourceToken& token);

    SlcPreprocessorRun& m_run;
    SlcMacroTable& m_macros;
    SlcTokenSource& m_source;
    SlcHideSets m_hideSets;
    std::vector<Context> m_contexts;
    int m_depth = 0;             // of arguments in arguments that are being expanded
    bool m_inCondition = false;  // `defined` is an operator
};
