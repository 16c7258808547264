#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "sqxview/SqxViewSource.h"

/// The byte-code of one source at each level of optimization. It is compiled when a page asks for
/// it, and kept until a page asks for another version of the source. May be used by several
/// threads.
class SqxViewCode {
public:
    /// `path` is that of the source. `options` need no level of optimization, since each compile
    /// adds one.
    SqxViewCode(std::string path, SqxViewCompileOptions options);

    static constexpr int k_levels = 4;  // of optimization, from 0

    /// Returns the main block at a level below `k_levels`, and counts at all levels, as JSON:
    ///
    ///     {"version":3, "level":2, "fault":"", "counts":[{"instructions":..}, ..], "text":".."}
    ///
    /// `version` is the number of the current version of the source, or 0 before the session has
    /// compiled it: then "text", "fault" and "counts" are empty. If it differs from that of the
    /// last call, or if the last compile was ended by `isOver`, all levels are compiled while other
    /// threads wait. A compile ends when `isOver` returns true or a time limit is reached. If
    /// a compile fails, there is no code and "fault" says why; nothing is thrown.
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
    unsigned long m_version = 0;  // of the compiled source; 0 for none, or a compile that was ended
    std::vector<Block> m_blocks;  // by level
    std::string m_fault;          // why there are no blocks
};
