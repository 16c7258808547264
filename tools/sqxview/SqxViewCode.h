#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "sqxview/SqxViewSource.h"

/// The byte-code that one source compiles to at each level of optimization. Made when somebody asks
/// for it, and kept as long as the source stays; several threads may ask.
class SqxViewCode {
public:
    /// `path`: of the source. `options` without a level.
    SqxViewCode(std::string path, SqxViewCompileOptions options);

    static constexpr int k_levels = 4;  // from 0

    /// The main block at a level, and what is counted at all of them, as JSON:
    ///
    ///     {"version":3, "level":2, "fault":"", "counts":[{"instructions":..}, ..], "text":".."}
    ///
    /// `version` is that of the source: for another one than the last time all levels are compiled,
    /// while other threads that ask wait. A compile ends when `isOver` says so, or when it takes
    /// long. Throws nothing for a source that does not compile: "fault" says so then.
    [[nodiscard]] std::string Level(int level, unsigned long version,
                                    const std::function<bool()>& isOver);

private:
    struct Block {
        std::string text;
        std::size_t instructions = 0;
        std::size_t parallelRuns = 0;
        std::size_t locals = 0;
    };

    void CompileAll(const std::function<bool()>& isOver);
    [[nodiscard]] Block Compile(int level, const std::function<bool()>& isOver) const;

    std::string m_path;
    SqxViewCompileOptions m_options;
    std::mutex m_mutex;           // of the members below; its holder compiles
    unsigned long m_version = 0;  // that the blocks are of; 0: none
    std::vector<Block> m_blocks;  // by level
    std::string m_fault;          // why there are none
};
