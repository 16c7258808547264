#pragma once

/// Runs the program: compiles one source in the stages that the options select, each only if the
/// previous one succeeded. Returns the exit status: 0, 1, or 2 after a report of an overlong token
/// or line.
[[nodiscard]] int main_(int argumentCount, char** arguments);
