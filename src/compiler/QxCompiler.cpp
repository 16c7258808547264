// One compile: the thread enters a compilation, runs the stages in order, and collects the results.
//
// Tested by tests/compiler.

#include "compiler/QxCompiler.h"

#include <atomic>
#include <memory>
#include <set>
#include <utility>

#include "backends/SlcFileInProgress.h"
#include "backends/SlcGenByteCode.h"
#include "backends/SlcGenCCode.h"
#include "compiler/SlcOptimizationLevel.h"
#include "compiler/SlcPreprocessorMacros.h"
#include "compiler/SlcSourceIndexer.h"
#include "compiler/SlcTextColumns.h"
#include "frontend/SlcParseCode.h"
#include "icode/SlcInterForm.h"
#include "preprocessor/SlcPreprocessor.h"
#include "preprocessor/SlcPreprocessorTrace.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcFiles.h"
#include "support/SlcText.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

namespace {

using Options = QxCompileOptions;
using Report = QxCompileReport;
using Failure = QxCompileResult::Failure;

constexpr int k_overlongToken = 2;  // exit status after a report about an overlong token

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

Report PublicReport(const SlcPreprocessorReport& report)
{
    return {report.isError ? Report::Severity::Error : Report::Severity::Warning,
            report.level,
            report.file,
            report.line,
            report.column,
            report.length,
            report.text,
            ""};
}

/// Takes the tree apart before deleting it, even after a failed stage, since nodes and annotations
/// may hold each other. The compiled shader must be destroyed before the tree.
struct DeleteTree {
    void operator()(SlcDefinitionsNode* tree) const
    {
        SlcDeleteTree()(tree);
        delete tree;
    }
};

/// Keeps the thread in a compilation. Runs stages, and adds their outcome, reports and counts to a
/// result.
class RunInCompilation {
public:
    /// `messages` must outlive the compilation.
    RunInCompilation(SlcCompilation& compilation, std::string& messages, QxCompileResult& result)
        : m_entered(compilation),
          m_messages(messages),
          m_result(result)
    {
        SetReports(messages);
    }

    template <class Stages>
    void operator()(const Stages& stages)
    {
        m_result.failure = Failure::Source;
        try {
            stages();
            m_result.failure = Failure::None;
        } catch (const SlcCompilationError&) {
            // Thrown after a report.
        } catch (const SlcCompilationSevereError&) {
            m_result.failure = Failure::Preprocessing;
        } catch (const SlcCompilationEnd& end) {
            m_result.failure =
                end.status == k_overlongToken ? Failure::OverlongToken : Failure::Compiler;
        }
        m_result.succeeded = m_result.failure == Failure::None;
        for (const SlcReport& report : SlcReportsSoFar())
            m_result.reports.push_back(PublicReport(report));
        m_result.messages += m_messages;
        m_result.errors += NbErrors();
        m_result.warnings += NbWarnings();
    }

private:
    SlcCompilation::Entered m_entered;
    SlcEndsByException m_ends;
    std::string& m_messages;
    QxCompileResult& m_result;
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
        // Byte-code has no registers that could hold a temporary.
        m_record.m_convertTmpVarDetail = m_record.m_convertTmpVarDetail && m_record.m_generateDSO;
        m_record.m_searchDirs.insert(m_record.m_searchDirs.end(), options.folders.begin(),
                                     options.folders.end());
    }

    [[nodiscard]] QxCompileResult Run(const std::string& path, std::optional<std::string> text)
    {
        RunInCompilation run(m_compilation, m_messages, m_result);
        SetWarningLevel(m_options.warningLevel);
        ShowAdvice(m_options.showsAdvice);
        run([&] { RunStages(path, std::move(text)); });
        m_result.shaderName = SlcShaderName();
        m_result.fileName = m_result.shaderName + (m_record.m_generateDSO ? ".cpp" : ".sqx");
        if (m_trace && !m_result.index)
            IndexFaultySource();
        if (!m_options.keepsMemory) {
            m_shader.reset();
            m_tree.reset();
        }
        return std::move(m_result);
    }

private:
    void RunStages(const std::string& path, std::optional<std::string> text)
    {
        if (m_options.isPreprocessed)
            Read(path, std::move(text));
        else
            Preprocess(path, std::move(text));
        if (m_options.output == Options::Output::Preprocessed) {
            m_result.output = m_text;
            return;
        }
        m_tree.reset(ParseFaultyCode(m_text).release());
        if (NbErrors() != 0)
            throw SlcCompilationError();
        Check();
        if (m_trace)
            MakeIndex();
        if (m_options.output != Options::Output::Nothing)
            MakeOutput();
    }

    void Check()
    {
        m_isChecked = true;
        SlcSemantics(m_tree.get(), m_record);
    }

    void MakeIndex()
    {
        m_result.index = SlcMakeIndex(*m_trace, m_text, m_tree.get(), m_record.m_strict);
    }

    /// Indexes a source with faults as far as they allow, or one that was only preprocessed. Does
    /// not collect the reports of this parse and these checks: for a source with faults, they would
    /// repeat earlier ones or be consequences of them.
    void IndexFaultySource()
    {
        try {
            if (!m_isChecked) {
                m_tree.reset();
                m_tree.reset(ParseForIndex(m_text).release());
            }
            if (m_tree && !m_isChecked)
                Check();
        } catch (const SlcCompilationError&) {
        } catch (const SlcCompilationEnd&) {
        }
        MakeIndex();
    }

    void MakeOutput()
    {
        m_shader.emplace(m_record);
        m_shader->GenInterForm(m_tree.get());
        m_shader->Optimize();
        Write(*m_shader);
    }

    void Read(const std::string& path, std::optional<std::string> text)
    {
        if (text) {
            m_text = std::move(*text);
            return;
        }
        text = SlcReadFile(path);
        if (!text) {
            PrintReport("Cannot open input file: " + path + "\n");
            throw SlcCompilationSevereError();
        }
        m_text = std::move(*text);
    }

    void Preprocess(const std::string& path, std::optional<std::string> text)
    {
        SlcReportPrinter printer(PrintReport, m_options.warningLevel);
        SlcPreprocessorOptions wanted;
        wanted.macros = SlcPreprocessorMacros();
        for (const std::string& macro : m_options.macros)
            wanted.macros.push_back({macro});
        wanted.folders = m_options.folders;
        wanted.provider = m_options.readFile;
        wanted.report = [&](const SlcPreprocessorReport& report) {
            printer.Print(report);
            if (report.isError || report.level <= m_options.warningLevel)
                m_result.reports.push_back(PublicReport(report));
        };
        if (m_options.makesIndex)
            wanted.trace = &m_trace.emplace();
        SlcPreprocessed result =
            text ? SlcPreprocessText(path, std::move(*text), wanted) : SlcPreprocess(path, wanted);
        m_result.files = std::move(result.files);
        m_result.searchedPlaces.assign(result.missing.begin(), result.missing.end());
        m_text = std::move(result.text);
        SetColumns(std::move(result.columns));
        if (result.succeeded)
            return;
        if (m_options.output == Options::Output::Preprocessed)
            m_result.output = m_text;
        throw SlcCompilationSevereError();
    }

    /// Makes reports contain columns in the files instead of columns in the preprocessed text.
    void SetColumns(std::vector<SlcColumnChange> changes)
    {
        m_columns.emplace(m_text, std::move(changes));
        SetColumnsOfText([this](std::size_t offset, int) { return m_columns->ColumnOf(offset); },
                         [this](std::size_t begin, std::size_t end, int line) {
                             return m_columns->ColumnsOf(begin, end, line);
                         });
    }

    void Write(SlcInterForm& shader)
    {
        std::set<std::string> libraries;
        for (const auto& function : shader.m_dsoFunctions)
            libraries.insert(function->GetLibraryPath());
        m_result.shadeopLibraries.assign(libraries.begin(), libraries.end());
        SlcText out;
        if (m_record.m_generateDSO)
            SlcGenCCode(shader.m_errors, &m_record, out).GenCCode(shader);
        else
            SlcGenByteCode(shader.m_errors, out).GenByteCode(shader);
        if (!shader.m_errors->NoError())
            throw SlcCompilationError();
        m_result.output = out.Take();
    }

    const Options& m_options;
    SlcOptionsControl m_record;
    std::string m_messages;
    QxCompileResult m_result;
    std::string m_text;  // preprocessed
    std::optional<SlcTextColumns> m_columns;
    std::optional<SlcPreprocessorTrace> m_trace;
    bool m_isChecked = false;
    SlcCompilation m_compilation;  // its parts refer to the members above
    std::unique_ptr<SlcDefinitionsNode, DeleteTree> m_tree;
    std::optional<SlcInterForm> m_shader;
};

QxCompileResult RunCompile(const std::string& path, std::optional<std::string> text,
                           const Options& options)
{
    auto compile = std::make_unique<Compile>(options);
    QxCompileResult result = compile->Run(path, std::move(text));
    if (options.keepsMemory) {
        // Leak checkers find the memory through this pointer.
        static std::atomic<Compile*> kept;
        kept = compile.release();
    }
    return result;
}

}  // namespace

QxCompileResult QxCompileFile(const std::string& path, const QxCompileOptions& options)
{
    return RunCompile(path, std::nullopt, options);
}

QxCompileResult QxCompileText(const std::string& path, std::string text,
                              const QxCompileOptions& options)
{
    return RunCompile(path, std::move(text), options);
}

void QxWriteOutput(QxCompileResult& result, const std::string& folder)
{
    if (!result.succeeded)
        return;
    const bool isCpp = result.fileName.ends_with(".cpp");
    const std::string path = folder + '/' + result.fileName;
    std::string messages;
    SlcCompilation compilation;
    RunInCompilation run(compilation, messages, result);
    run([&] {
        SlcFileInProgress file(MakeShared<SlcSemanticError>(), path, isCpp ? result.fileName : path,
                               isCpp ? "C++ code generation" : "byte-code generation");
        file.Finish(result.output);
    });
}
