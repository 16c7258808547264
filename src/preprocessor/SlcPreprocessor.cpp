// Stages, from the bottom up: the lexer makes tokens, the directive reader executes the lines that
// begin with "#", the expander replaces macros in the remaining tokens, and SlcPreprocessedText
// writes the result.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcPreprocessor.h"

#include <utility>

#include "preprocessor/SlcDirectiveReader.h"
#include "preprocessor/SlcMacroTable.h"
#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcQuotedText.h"

namespace {

using enum SlcSourceTokenKind;

/// Returns the directives that define and undefine the macros of the command line.
std::string DirectivesOf(const std::vector<SlcPreprocessorOptions::Macro>& macros)
{
    std::string text;
    for (const auto& macro : macros) {
        // Drop the rest after a line break, which would be read as a separate line, such as a
        // directive.
        std::string word = macro.text.substr(0, macro.text.find('\n'));
        const std::size_t sign = word.find('=');
        if (macro.isDefined && sign == std::string::npos)
            word += " 1";
        else if (macro.isDefined)
            word[sign] = ' ';
        text += (macro.isDefined ? "#define " : "#undef ") + word + "\n";
    }
    return text;
}

class Preprocessor {
public:
    explicit Preprocessor(const SlcPreprocessorOptions& options)
        : m_options(options),
          m_run(
              [this](const SlcSourceToken& token, SlcPreprocessorReport report) {
                  m_reader.CompleteReport(token, report);
                  if (m_options.report)
                      m_options.report(report);
              },
              options.trace),
          m_macros(m_run),
          m_output(options.trace),
          m_files(options.folders, options.provider),
          m_reader(m_run, m_macros, m_files, m_output)
    {
    }

    [[nodiscard]] SlcPreprocessed Run(const std::string& path, std::optional<std::string> contents)
    {
        try {
            RunAll(path, std::move(contents));
        } catch (const SlcPreprocessorStop&) {
            // The error has been reported by the code that threw.
        }
        m_output.Finish();
        if (m_options.trace)
            m_options.trace->Finish(m_output.Text());
        return {m_run.IsGood(), std::move(m_output.Text()), std::move(m_output.Columns()),
                m_files.Read(), m_files.Missing()};
    }

private:
    void RunAll(const std::string& path, std::optional<std::string> contents)
    {
        const SlcSourceText commandLine("<command line>", DirectivesOf(m_options.macros));
        m_reader.Enter(commandLine);
        while (m_reader.NextToken().kind != End) {
        }
        m_reader.Leave();
        const SlcSourceText* text = nullptr;
        if (contents)
            text = &m_files.Add(path, std::move(*contents));
        else
            text = m_files.Open(path).text;
        if (!text)
            m_run.Stop({}, "Cannot read '" + path + "'");
        m_run.AllowFor(static_cast<std::size_t>(text->End() - text->Begin()));
        m_reader.Enter(*text);
        if (m_options.trace)
            m_options.trace->EnterFile(*text);
        m_output.EnterFile(path);
        for (SlcSourceToken token = Next(); token.kind != End; token = Next())
            m_output.Add(token);
    }

    /// Returns the next token for the preprocessed text. Writes each `_Pragma("...")` before that
    /// token as a separate line.
    [[nodiscard]] SlcSourceToken Next()
    {
        SlcSourceToken token = m_reader.Expander().Next();
        while (token.Is(Name, "_Pragma")) {
            if (!TakePragma(token))
                m_run.Error(token, "'_Pragma' needs a text in parentheses");
            token = m_reader.Expander().Next();
        }
        return token;
    }

    [[nodiscard]] bool TakePragma(const SlcSourceToken& word)
    {
        if (!m_reader.Expander().Next().IsSign("("))
            return false;
        const SlcSourceToken text = m_reader.Expander().Next();
        if (text.kind != Text || !m_reader.Expander().Next().IsSign(")"))
            return false;
        m_output.AddLine("#pragma " + SlcUnquoted(text.text), word.line);
        return true;
    }

    const SlcPreprocessorOptions& m_options;
    SlcPreprocessorRun m_run;
    SlcMacroTable m_macros;
    SlcPreprocessedText m_output;
    SlcIncludedFiles m_files;
    SlcDirectiveReader m_reader;
};

}  // namespace

SlcPreprocessed SlcPreprocess(const std::string& path, const SlcPreprocessorOptions& options)
{
    return Preprocessor(options).Run(path, std::nullopt);
}

SlcPreprocessed SlcPreprocessText(const std::string& path, std::string text,
                                  const SlcPreprocessorOptions& options)
{
    return Preprocessor(options).Run(path, std::move(text));
}
