#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "sqxview/SqxViewSource.h"

/// The byte-code of one source at each level of optimization. It is compiled when a client asks for
/// it and kept until the source changes. May be used by several threads.
class SqxViewCode {
public:
    /// `path` is that of the source; `options` must not contain a level of optimization.
    SqxViewCode(std::string path, SqxViewCompileOptions options);

    static constexpr int k_levels = 4;  // of optimization, from 0

    /// Returns the main block at a level, and counts at all levels, as JSON:
    ///
    ///     {"version":3, "level":2, "fault":"", "counts":[{"instructions":..}, ..], "text":".."}
    ///
    /// `version` is the version of the source. If it differs from that of the last call, all levels
    /// are compiled while other threads wait. A compile ends when `isOver` returns true or a time
    /// limit is reached. If there is no code, "fault" says why; nothing is thrown.
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
    std::mutex m_mutex;           // guards the fields below; held while compiling
    unsigned long m_version = 0;  // of the compiled source; 0 if nothing is compiled
    std::vector<Block> m_blocks;  // by level
    std::string m_fault;          // why there are no blocks
};
