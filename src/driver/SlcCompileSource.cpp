// The library compiles, see compiler/QxCompiler.h. This file manages the output, and removes
// earlier output that would look like a result of a failed compile: first the file named after the
// source, then, if the source is rejected after the shader's name is parsed, the one named after
// the shader.
//
// Tested by tests/driver/SlcCompileSourceTest.cpp.

#include "driver/SlcCompileSource.h"

#include <optional>
#include <string>
#include <unistd.h>
#include <utility>

#include "driver/SlcExternalCommands.h"
#include "driver/SlcProgramName.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcFiles.h"

namespace {

using Failure = QxCompileResult::Failure;
using Output = QxCompileOptions::Output;

/// Returns the preprocessed text, from memory or from a command's file. Returns nothing if the file
/// cannot be opened, which is reported. `files` keeps the text, which is written to its file after
/// a fatal error.
[[nodiscard]] std::optional<std::string> PreprocessedText(const SlcCommandLine& line,
                                                          const SlcRunFiles& files)
{
    if (!line.m_preprocessCommand)
        return files.m_preprocessedText;
    auto text = SlcReadFile(files.m_preprocessed->Path());
    if (!text)
        PrintReport("Cannot open input file: " + line.m_preprocessedFile + "\n");
    return text;
}

/// Removes an earlier output under the shader's name, which is known after parsing: it would be
/// mistaken for the output of the rejected source.
void RemoveOutput(const SlcCommandLine& line, const std::string& shaderName)
{
    if (!shaderName.empty())
        unlink((line.m_outputDirectory + "/" + shaderName + ".sqx").c_str());
}

/// Writes the library paths for build systems, which recompile a shader when a library changes.
/// False if that failed.
[[nodiscard]] bool WriteLibraries(const QxCompileResult& result, const SlcCommandLine& line)
{
    std::string lines;
    for (const std::string& library : result.shadeopLibraries)
        lines += library + '\n';
    return SlcWriteFile(line.m_librariesFile, lines);
}

/// Returns the folder for the output: the output directory for byte-code, a private folder for a
/// C++ file that the C++ compiler will read, and the working directory for any other C++ file.
[[nodiscard]] std::string OutputFolder(const SlcCommandLine& line, SlcRunFiles& files,
                                       const QxCompileResult& result)
{
    if (line.m_compile.output == Output::ByteCode)
        return line.m_outputDirectory;
    if (line.m_runCCBuild)
        files.m_cc.emplace(result.fileName);
    const bool hasFolder = files.m_cc && !files.m_cc->Folder().empty();
    return hasFolder ? files.m_cc->Folder() : ".";
}

/// Writes the list of libraries before the output, so that a failure leaves no output.
void WriteOutput(const SlcCommandLine& line, SlcRunFiles& files, QxCompileResult& result)
{
    const bool isListed = line.m_librariesFile.empty() || WriteLibraries(result, line);
    if (isListed)
        QxWriteOutput(result, OutputFolder(line, files, result));
    PrintReport(result.messages);
    if (isListed)
        return;
    SeverError(k_programName, "Cannot write " + line.m_librariesFile);
    result.succeeded = false;
}

void ReportFaults(const SlcCommandLine& line, const QxCompileResult& result)
{
    PrintReport("Compilation of " + SlcCutPath(line.m_inputFile) +
                " aborted due to errors: " + std::to_string(result.errors) + " errors, " +
                std::to_string(result.warnings) + " warnings.\n");
}

/// Throws `SlcCompilationEnd` if the compile could not continue.
[[nodiscard]] bool Compile(const SlcCommandLine& line, SlcRunFiles& files)
{
    auto text = PreprocessedText(line, files);
    if (!text)
        return false;
    QxCompileOptions options = line.m_compile;
    options.isPreprocessed = true;
    options.keepsMemory = true;
    QxCompileResult result = QxCompileText(line.m_inputFile, std::move(*text), options);
    files.m_shaderName = result.shaderName;
    if (result.succeeded)
        WriteOutput(line, files, result);
    else
        PrintReport(result.messages);
    if (!result.succeeded)
        RemoveOutput(line, result.shaderName);
    if (result.failure == Failure::Source)
        ReportFaults(line, result);
    if (result.failure == Failure::OverlongToken)
        throw SlcCompilationEnd{2};
    if (result.failure == Failure::Compiler)
        throw SlcCompilationEnd{1};
    return result.succeeded;
}

}  // namespace

bool CompileSource(const SlcCommandLine& line, SlcRunFiles& files)
{
    DeleteSQX(line);
    bool compiled = Compile(line, files);
    if (line.m_keepPreprocessedFile)
        compiled = KeepFile(*files.m_preprocessed, line.m_preprocessedFile) && compiled;
    return compiled;
}

std::string SlcCutPath(const std::string& inputFile)
{
    return inputFile.substr(0, inputFile.find('.'));
}

void DeleteSQX(const SlcCommandLine& line)
{
    const std::string path = SlcCutPath(line.m_inputFile);
    const std::string stem = path.substr(path.rfind('/') + 1);
    unlink((line.m_outputDirectory + "/" + stem + ".sqx").c_str());
}
