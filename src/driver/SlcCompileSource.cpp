// The stages of one compile, from the preprocessed text to the output, and what is left behind when
// one of them fails: nothing that looks like an output. The file under the source's name goes
// before the parse, that under the shader's name once the parser has told it.
//
// Tested by tests/driver/SlcCompileSourceTest.cpp.

#include "driver/SlcCompileSource.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <unistd.h>

#include "driver/SlcExternalCommands.h"
#include "driver/SlcProgramName.h"
#include "frontend/SlcParseCode.h"
#include "icode/SlcInterForm.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcDiagnostics.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

namespace {

using Tree = std::unique_ptr<SlcDefinitionsNode>;
using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

/// Parses what the preprocessor made, in memory or in a file.
[[nodiscard]] Tree Parse(const SlcCommandLine& line, const SlcRunFiles& files)
{
    if (!line.m_preprocessCommand)
        return ParseCode(files.m_preprocessedText, line.m_options.m_strict);
    const File file(std::fopen(files.m_preprocessed->Path().c_str(), "r"), &std::fclose);
    if (!file) {
        SlcReports() << "Cannot open input file: " << line.m_preprocessedFile << "\n";
        throw SlcCompilationSevereError();
    }
    return ParseCode(file.get(), line.m_options.m_strict);
}

/// The name of the shader is known once it has been parsed; an earlier output under it would be
/// taken for that of the refused source.
void RemoveOutput(const SlcCommandLine& line)
{
    if (!SlcShaderName().empty())
        unlink((line.m_outputDirectory + "/" + SlcShaderName() + ".sqx").c_str());
}

/// For build systems, as they were found: a shader is to be compiled anew when one changes. Written
/// before the output, so that a failure leaves none.
void WriteLibraries(const SlcInterForm& shader, const SlcCommandLine& line)
{
    std::set<std::string> libraries;
    for (const auto& function : shader.m_dsoFunctions)
        libraries.insert(function->GetLibraryPath());
    std::ofstream file(line.m_librariesFile);
    for (const std::string& library : libraries)
        file << library << '\n';
    file.close();
    if (!file) {
        SeverError(k_programName, "Cannot write " + line.m_librariesFile);
        RemoveOutput(line);
        throw SlcCompilationSevereError();
    }
}

/// A C++ file that the compiler is to read gets a name of its own until then.
void WriteCCode(SlcInterForm& shader, const SlcCommandLine& line, SlcRunFiles& files)
{
    if (line.m_runCCBuild)
        files.m_cc.emplace(SlcShaderName() + ".cpp");
    const bool hasFolder = files.m_cc && !files.m_cc->Folder().empty();
    shader.GenCCode(hasFolder ? files.m_cc->Folder() : ".");
}

/// The tree must outlive the compiled shader, whose operands point into it, and the caller takes
/// it apart whether or not this throws.
void RunStages(SlcCommandLine& line, SlcRunFiles& files, Tree& tree)
{
    tree = Parse(line, files);
    SlcSemantics(tree.get(), line.m_options);

    SlcInterForm shader(line.m_options);
    shader.GenInterForm(tree.get());
    shader.Optimize();
    if (!line.m_librariesFile.empty())
        WriteLibraries(shader, line);
    if (line.m_options.m_generateDSO)
        WriteCCode(shader, line, files);
    else
        shader.GenByteCode(line.m_outputDirectory);
}

void ReportAborted(const std::string& inputFile)
{
    SlcReports() << "Compilation of " << inputFile << " aborted due to errors: " << NbErrors()
                 << " errors, " << NbWarnings() << " warnings.\n";
}

}  // namespace

bool CompileSource(SlcCommandLine& line, SlcRunFiles& files)
{
    DeleteSQX(line);
    Tree tree;
    bool compiled = false;
    try {
        RunStages(line, files, tree);
        compiled = true;
    } catch (const SlcCompilationError&) {
        RemoveOutput(line);
        ReportAborted(line.m_inputFile);
    } catch (const SlcCompilationSevereError&) {
        // Reported where it was thrown.
    }
    if (line.m_keepPreprocessedFile)
        compiled = KeepFile(*files.m_preprocessed, line.m_preprocessedFile) && compiled;
    SlcDeleteTree()(tree.get());
    return compiled;
}

void DeleteSQX(SlcCommandLine& line)
{
    line.m_inputFile.resize(line.m_inputFile.find('.'));
    const std::string stem = line.m_inputFile.substr(line.m_inputFile.rfind('/') + 1);
    unlink((line.m_outputDirectory + "/" + stem + ".sqx").c_str());
}
