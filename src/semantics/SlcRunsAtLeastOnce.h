#pragma once

class SlcForStmtNode;

/// True if the body of the loop certainly runs: the loop begins with an assignment, after which the
/// condition compares two known numbers and is true, as in `for (i = 0; i < 3; i += 1)`. False if
/// this is not known. The loop must have been checked, so that its variables have symbol entries.
[[nodiscard]] bool SlcRunsAtLeastOnce(const SlcForStmtNode* loop);
