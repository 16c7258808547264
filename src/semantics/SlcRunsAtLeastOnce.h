#pragma once

class SlcForStmtNode;

/// True if the body of the loop certainly runs: its variable starts at a number that meets the
/// condition, as in `for (i = 0; i < 3; i += 1)`. The loop has been checked.
[[nodiscard]] bool SlcRunsAtLeastOnce(const SlcForStmtNode* loop);
