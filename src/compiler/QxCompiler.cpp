// One compile: a compilation that the thread enters, the stages in their order, and what they
// leave.
//
// Tested by tests/compiler.

#include "compiler/QxCompiler.h"

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>
#include <utility>

#include "backends/SlcGenByteCode.h"
#include "backends/SlcGenCCode.h"
#include "compiler/SlcOptimizationLevel.h"
#include "compiler/SlcPreprocessorMacros.h"
#include "frontend/SlcParseCode.h"
#include "icode/SlcInterForm.h"
#include "preprocessor/SlcPreprocessor.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

namespace {

using Options = QxCompileOptions;
using Report = QxCompileReport;

Report PublicReport(const SlcReport& report)
{
    return {report.isError ? Report::Severity::Error : Report::Severity::Warning,
            report.level,
            report.file,
            report.line,
            report.column,
            report.length,
            report.text,
            report.advice};
}

/// Takes the tree apart whether or not a stage has failed: its nodes and annotations may hold each
/// other. The compiled shader must be gone before.
struct DeleteTree {
    void operator()(SlcDefinitionsNode* tree) const
    {
        SlcDeleteTree()(tree);
        delete tree;
    }
};

class Compile {
public:
    explicit Compile(const Options& options) : m_options(options)
    {
        SetOptimizationLevel(options.optimizationLevel, m_record);
        m_record.m_checkArrayBounds = m_record.m_checkArrayBounds && options.checksArrayBounds;
        m_record.m_strict = options.isStrict;
        m_record.m_useShadeops = options.usesShadeops;
        m_record.m_generateDSO = options.output == Options::Output::Cpp;
        // Byte-code has no registers to keep a temporary in.
        m_record.m_convertTmpVarDetail = m_record.m_convertTmpVarDetail && m_record.m_generateDSO;
        m_record.m_searchDirs.insert(m_record.m_searchDirs.end(), options.folders.begin(),
                                     options.folders.end());
    }

    [[nodiscard]] QxCompileResult Run(const std::string& path, std::optional<std::string> text)
    {
        const SlcCompilation::Entered entered(m_compilation);
        const SlcEndsByException ends;
        SetReports(m_messages);
        SetWarningLevel(m_options.warningLevel);
        ShowAdvice(m_options.showsAdvice);
        try {
            RunStages(path, std::move(text));
        } catch (const SlcCompilationError&) {
            // Reported where it was thrown, as the next ones.
        } catch (const SlcCompilationSevereError&) {
        } catch (const SlcCompilationEnd&) {
        }
        if (!m_result.succeeded)
            m_result.output.clear();
        for (const SlcReport& report : SlcReportsSoFar())
            m_result.reports.push_back(PublicReport(report));
        m_result.messages = m_messages.str();
        return std::move(m_result);
    }

private:
    void RunStages(const std::string& path, std::optional<std::string> text)
    {
        const std::string source = Preprocess(path, std::move(text));
        std::unique_ptr<SlcDefinitionsNode, DeleteTree> tree(
            ParseCode(std::string_view(source), m_record.m_strict).release());
        m_result.shaderName = SlcShaderName();
        SlcSemantics(tree.get(), m_record);
        SlcInterForm shader(m_record);
        shader.GenInterForm(tree.get());
        shader.Optimize();
        Write(shader);
        m_result.succeeded = true;
    }

    [[nodiscard]] std::string Preprocess(const std::string& path, std::optional<std::string> text)
    {
        SlcReportPrinter printer(m_messages, m_options.warningLevel);
        SlcPreprocessorOptions wanted;
        wanted.macros = SlcPreprocessorMacros();
        for (const std::string& macro : m_options.macros)
            wanted.macros.push_back({macro});
        wanted.folders = m_options.folders;
        wanted.provider = m_options.readFile;
        wanted.report = [&](const SlcPreprocessorReport& report) {
            printer.Print(report);
            if (report.isError || report.level <= m_options.warningLevel)
                m_result.reports.push_back(
                    {report.isError ? Report::Severity::Error : Report::Severity::Warning,
                     report.level, report.file, report.line, report.column, report.length,
                     report.text, ""});
        };
        SlcPreprocessed result =
            text ? SlcPreprocessText(path, std::move(*text), wanted) : SlcPreprocess(path, wanted);
        m_result.files = std::move(result.files);
        m_result.searchedPlaces.assign(result.missing.begin(), result.missing.end());
        if (!result.succeeded)
            throw SlcCompilationError();
        SetColumns(std::move(result.text), std::move(result.columns));
        return std::move(m_text);
    }

    /// Reports of the parser stand at places of the preprocessed text.
    void SetColumns(std::string text, std::vector<SlcColumnChange> columns)
    {
        m_text = std::move(text);
        SetColumnOfOffset([columns = std::move(columns)](std::size_t offset, int column) {
            const std::size_t line = offset - static_cast<std::size_t>(column - 1);
            auto change = std::upper_bound(
                columns.begin(), columns.end(), offset,
                [](std::size_t place, const SlcColumnChange& c) { return place < c.offset; });
            if (change == columns.begin() || (--change)->offset < line)
                return column;
            return change->column +
                   (change->isFixed ? 0 : static_cast<int>(offset - change->offset));
        });
    }

    void Write(SlcInterForm& shader)
    {
        std::set<std::string> libraries;
        for (const auto& function : shader.m_dsoFunctions)
            libraries.insert(function->GetLibraryPath());
        m_result.shadeopLibraries.assign(libraries.begin(), libraries.end());
        std::ostringstream out;
        if (m_record.m_generateDSO)
            SlcGenCCode(shader.m_errors, &m_record, out).GenCCode(shader);
        else
            SlcGenByteCode(shader.m_errors, out).GenByteCode(shader);
        if (!shader.m_errors->NoError())
            throw SlcCompilationError();
        m_result.output = std::move(out).str();
    }

    const Options& m_options;
    SlcOptionsControl m_record;
    std::ostringstream m_messages;
    QxCompileResult m_result;
    std::string m_text;
    SlcCompilation m_compilation;  // last, since its parts go before what they refer to
};

}  // namespace

QxCompileResult QxCompileFile(const std::string& path, const QxCompileOptions& options)
{
    return Compile(options).Run(path, std::nullopt);
}

QxCompileResult QxCompileText(const std::string& path, std::string text,
                              const QxCompileOptions& options)
{
    return Compile(options).Run(path, std::move(text));
}
