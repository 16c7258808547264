#pragma once

/// The whole run of the program: one source, through the stages that its options ask for, each
/// only if the one before succeeded. Returns the exit status, 0 or 1.
[[nodiscard]] int main_(int argumentCount, char** arguments);
