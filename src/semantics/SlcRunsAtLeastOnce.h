#pragma once

class SlcForStmtNode;

/// True if the body of the loop certainly runs: its variable starts at a number that satisfies the
/// condition, as in `for (i = 0; i < 3; i += 1)`. The loop must have been checked.
[[nodiscard]] bool SlcRunsAtLeastOnce(const SlcForStmtNode* loop);
