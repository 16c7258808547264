// All levels are compiled when the first one is asked for, since the page compares the counts of
// all levels.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewCode.h"

#include <chrono>

#include "compile/SqxSourceCompile.h"
#include "process/SqxScratchFolder.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"
#include "sqxview/SqxViewShorten.h"
#include "json/SqxOrderedJson.h"

namespace {

constexpr auto k_longest = std::chrono::seconds(20);  // for all levels together
constexpr std::size_t k_mostText = 2'000'000;         // bytes of text that are sent to a page

[[nodiscard]] std::size_t CountParallelRuns(const SqxBlock& block)
{
    std::size_t count = 0;
    for (const SqxInstruction& instruction : block.instructions)
        count += SqxBlock::Primitive(instruction) == SqxPrimitive::BEGIN_PARALLEL ? 1 : 0;
    return count;
}

[[nodiscard]] std::size_t CountLocals(const SqxShader& shader)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < shader.mainCount; ++i)
        count += shader.variables[i].kind == SqxVariableKind::Local ? 1 : 0;
    return count;
}

}  // namespace

SqxViewCode::SqxViewCode(std::string path, SqxViewCompileOptions options)
    : m_path(std::move(path)),
      m_options(std::move(options))
{
}

SqxViewCode::Block SqxViewCode::Compile(int level, const std::function<bool()>& isOver) const
{
    const SqxScratchFolder folder("sqxview");
    std::vector<std::string> words = m_options.words;
    words.push_back("-O" + std::to_string(level));
    SqxSourceCompile compile(m_path, std::move(words), folder.Path());
    if (!compile.RunApart(isOver))
        throw SqxCompileError(isOver() ? "The compile was ended" : "The source does not compile");
    SqxReader reader;
    if (!reader.ReadFile(compile.Output()))
        throw SqxCompileError(reader.Message());
    const SqxShader& shader = reader.Shader();
    Block block = {SqxDumpSection(shader, "main"), shader.main.instructions.size(),
                   CountParallelRuns(shader.main), CountLocals(shader)};
    SqxViewShorten(block.text, k_mostText);
    return block;
}

void SqxViewCode::CompileAll(const std::function<bool()>& isOver)
{
    const auto end = std::chrono::steady_clock::now() + k_longest;
    m_blocks.clear();
    m_fault.clear();
    try {
        for (int level = 0; level < k_levels; ++level)
            m_blocks.push_back(
                Compile(level, [&] { return isOver() || std::chrono::steady_clock::now() > end; }));
    } catch (const std::runtime_error& error) {
        m_blocks.clear();
        m_fault = error.what();
    }
}

std::string SqxViewCode::Level(int level, unsigned long version,
                               const std::function<bool()>& isOver)
{
    const std::lock_guard lock(m_mutex);
    if (m_version != version) {
        CompileAll(isOver);
        m_version = isOver() ? 0 : version;
    }
    SqxOrderedJson shown;
    shown["version"] = version;
    shown["level"] = level;
    shown["fault"] = m_fault;
    SqxOrderedJson& counts = shown["counts"] = SqxOrderedJson::array();
    for (const Block& block : m_blocks) {
        SqxOrderedJson& count = counts.emplace_back();
        count["instructions"] = block.instructions;
        count["parallelRuns"] = block.parallelRuns;
        count["locals"] = block.locals;
    }
    shown["text"] = m_blocks.empty() ? "" : m_blocks.at(level).text;
    return SqxJsonLine(shown);
}
