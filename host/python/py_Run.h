#pragma once

/// Runs the script `arguments[0]` in an interpreter of this process, which knows the module
/// `ktsovu`, with the other arguments of `count`, all as `python3 SCRIPT ARGS...` would:
/// `sys.argv`, `sys.path`, the environment, the traceback. Returns the exit status. Once in a
/// process.
[[nodiscard]] int py_RunScript(int count, char** arguments);
