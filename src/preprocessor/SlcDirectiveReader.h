#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/SlcIncludedFiles.h"
#include "preprocessor/SlcMacroExpander.h"
#include "preprocessor/SlcMacroTable.h"
#include "preprocessor/SlcPreprocessedText.h"
#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceLexer.h"

/// Reads a source and the files that it includes, executes the directives, and returns the tokens
/// of all other lines, without the parts that conditions exclude.
class SlcDirectiveReader : public SlcTokenSource {
public:
    using Tokens = std::vector<SlcSourceToken>;

    SlcDirectiveReader(SlcPreprocessorRun& run, SlcMacroTable& macros, SlcIncludedFiles& files,
                       SlcPreprocessedText& output);

    /// Inserts a text before the rest of the input, like an included file.
    void Enter(const SlcSourceText& text);
    /// Removes the text that was entered last. Call it after that text has been read to its end.
    void Leave() { m_open.pop_back(); }

    [[nodiscard]] SlcSourceToken NextToken() override;
    [[nodiscard]] bool ParenthesisFollows() override;
    void BeginArguments() override { ++m_openCalls; }
    void EndArguments() override { --m_openCalls; }
    [[nodiscard]] std::string ValueOf(SlcBuiltInMacro macro, const SlcSourceToken& use) override;

    /// Returns the expander, which replaces macros in the tokens of this reader.
    [[nodiscard]] SlcMacroExpander& Expander() { return m_expander; }
    /// Adds the place of `token` to `report`: the file that is being read and its including files,
    /// line, column and length, and the source line if the token is in that file.
    void CompleteReport(const SlcSourceToken& token, SlcPreprocessorReport& report) const;

private:
    /// A part of a file between `#if` and `#endif`.
    struct Group {
        SlcSourceToken start;      // the name of the directive that began it
        bool isActive = false;     // the lines of its current branch are read
        bool wasActive = false;    // one of its branches is or was active
        bool isInSkipped = false;  // the enclosing part is skipped
        bool hasElse = false;
    };
    struct OpenFile {
        const SlcSourceText* text = nullptr;
        SlcSourceLexer lexer;
        std::string name;  // for reports and line markers; `#line` can change it
        std::vector<Group> groups;
        int includeLine = 0;  // line of the `#include` in the including file
    };
    /// A directive and the function that executes it after its name has been read.
    struct Row;
    using Effect = void (SlcDirectiveReader::*)(const SlcSourceToken& name);

    [[nodiscard]] OpenFile& File() { return m_open.back(); }
    [[nodiscard]] bool IsSkipping() const
    {
        return !m_open.back().groups.empty() && !m_open.back().groups.back().isActive;
    }
    void SkipLine();
    /// Consumes the rest of the line and returns its tokens.
    [[nodiscard]] Tokens RestOfLine();
    /// Returns to the including file, after a report if an `#endif` is missing. False at the end of
    /// a text that is not included.
    [[nodiscard]] bool LeaveFile();

    void Directive();
    void Define(const SlcSourceToken& name);
    void Undefine(const SlcSourceToken& name);
    void Include(const SlcSourceToken& name);
    // The next five, `NoteUse`, `Condition` and `BeginGroup` are in SlcConditionDirectives.cpp.
    void If(const SlcSourceToken& name);
    void IfDefined(const SlcSourceToken& name);
    void Elif(const SlcSourceToken& name);
    void Else(const SlcSourceToken& name);
    void EndIf(const SlcSourceToken& name);

    void Line(const SlcSourceToken& name);
    void Pragma(const SlcSourceToken& name);
    void Identify(const SlcSourceToken& name);
    void Error(const SlcSourceToken& name);
    void Warning(const SlcSourceToken& name);

    /// Records the use in the trace if the name is that of a defined macro.
    void NoteUse(const SlcSourceToken& name, SlcPreprocessorTrace::UseKind kind);
    [[nodiscard]] bool Condition(const SlcSourceToken& name);
    void BeginGroup(const SlcSourceToken& name, bool isActive);
    void IncludeFile(const SlcSourceToken& place, const std::string& header);
    /// Reads the name of the included file and the rest of the line. Returns the name with its
    /// quotes or angle brackets; empty if there is none. Sets `place` to the token to report.
    [[nodiscard]] std::string HeaderOf(const SlcSourceToken& name, SlcSourceToken& place);
    void SetPlace(const SlcSourceToken& place, const Tokens& line);

    SlcPreprocessorRun& m_run;
    SlcMacroTable& m_macros;
    SlcIncludedFiles& m_files;
    SlcPreprocessedText& m_output;
    SlcMacroExpander m_expander;
    SlcSourceLexer::Listener m_listener;
    std::vector<OpenFile> m_open;  // each file includes the next one
    int m_openCalls = 0;           // macro calls whose arguments are being read
    int m_counter = 0;
};
