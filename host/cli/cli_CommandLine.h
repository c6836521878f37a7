#pragma once

/// Runs the program with its command line. Returns the exit status: 0 done, 2 bad input or wrong
/// usage, with one line on standard error.
[[nodiscard]] int cli_Run(int argumentCount, char** arguments);
