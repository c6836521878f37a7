#pragma once

/// Runs the script `arguments[0]` with the `count` - 1 arguments behind it; answers its exit
/// status.
using cli_ScriptRunner = int (*)(int count, char** arguments);

/// Runs the program with its command line; scripts by `runScript`. Returns the exit status: 0 done,
/// 2 bad input or wrong usage, with one line on standard error, or that of the script.
[[nodiscard]] int cli_Run(int argumentCount, char** arguments, cli_ScriptRunner runScript);
