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

/// Reads a source with the files that it includes, carries out the directives, and gives the tokens
/// of all other lines.
class SlcDirectiveReader : public SlcTokenSource {
public:
    using Tokens = std::vector<SlcSourceToken>;

    SlcDirectiveReader(SlcPreprocessorRun& run, SlcMacroTable& macros, SlcIncludedFiles& files,
                       SlcPreprocessedText& output);

    /// Inserts a text before the rest of the input, like an included file.
    void Enter(const SlcSourceText& text);
    /// Forgets the text that was entered last, which has been read.
    void Leave() { m_open.pop_back(); }

    [[nodiscard]] SlcSourceToken NextToken() override;
    [[nodiscard]] bool ParenthesisFollows() override;
    void BeginArguments() override { ++m_openCalls; }
    void EndArguments() override { --m_openCalls; }
    [[nodiscard]] std::string ValueOf(SlcBuiltInMacro macro, const SlcSourceToken& use) override;

    /// Replaces macros in what this reader reads.
    [[nodiscard]] SlcMacroExpander& Expander() { return m_expander; }
    /// The file, the source line and the includers of a place in what is being read.
    void CompleteReport(const SlcSourceToken& token, SlcPreprocessorReport& report) const;

private:
    /// A part of a file between `#if` and `#endif`.
    struct Group {
        SlcSourceToken start;      // the name of the directive that began it
        bool isActive = false;     // its lines count
        bool wasActive = false;    // a branch has been taken
        bool isInSkipped = false;  // it is in a skipped part
        bool hasElse = false;
    };
    struct OpenFile {
        const SlcSourceText* text = nullptr;
        SlcSourceLexer lexer;
        std::string name;  // as `#line` has it
        std::vector<Group> groups;
        int includeLine = 0;  // in the file that includes it
    };
    /// A directive and the function that executes it, once its name has been read.
    struct Row;
    using Effect = void (SlcDirectiveReader::*)(const SlcSourceToken& name);

    [[nodiscard]] OpenFile& File() { return m_open.back(); }
    [[nodiscard]] bool IsSkipping() const
    {
        return !m_open.back().groups.empty() && !m_open.back().groups.back().isActive;
    }
    void SkipLine();
    /// The tokens up to the end of the line, which is taken.
    [[nodiscard]] Tokens RestOfLine();
    /// False if the source has ended.
    [[nodiscard]] bool LeaveFile();

    void Directive();
    void Define(const SlcSourceToken& name);
    void Undefine(const SlcSourceToken& name);
    void Include(const SlcSourceToken& name);
    // SlcConditionDirectives.cpp
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

    /// For the trace, if the name is that of a macro.
    void NoteUse(const SlcSourceToken& name, SlcPreprocessorTrace::UseKind kind);
    [[nodiscard]] bool Condition(const SlcSourceToken& name);
    void BeginGroup(const SlcSourceToken& name, bool isActive);
    void IncludeFile(const SlcSourceToken& place, const std::string& header);
    /// The name with its quotes or angle brackets; empty after a report.
    [[nodiscard]] std::string HeaderOf(const SlcSourceToken& name, SlcSourceToken& place);
    void SetPlace(const SlcSourceToken& place, const Tokens& line);

    SlcPreprocessorRun& m_run;
    SlcMacroTable& m_macros;
    SlcIncludedFiles& m_files;
    SlcPreprocessedText& m_output;
    SlcMacroExpander m_expander;
    SlcSourceLexer::Listener m_listener;
    std::vector<OpenFile> m_open;  // each includes the next
    int m_openCalls = 0;           // whose arguments are being read
    int m_counter = 0;
};

/// A text between quotes without them and without its escapes.
[[nodiscard]] std::string SlcUnquoted(std::string_view text);
/// A text in quotes, with escapes for quotes and backslashes.
[[nodiscard]] std::string SlcQuoted(std::string_view text);
