#pragma once

/// Runs the program: one source, through the stages that its options select, each only if the
/// previous one succeeded. Returns the exit status, 0 or 1.
[[nodiscard]] int main_(int argumentCount, char** arguments);
