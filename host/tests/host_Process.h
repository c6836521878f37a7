#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "host/tests/host_TestModels.h"

/// What came of a run of the program.
struct host_Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

/// Starts the program with `arguments`, its output in the files "out" and "err" of the folder as a
/// pipe would take it.
inline pid_t host_Start(const std::vector<std::string>& arguments,
                        const host_TemporaryFolder& folder) {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<char*> list = {const_cast<char*>(KTSOVU_PROGRAM)};
        for (const std::string& argument : arguments) {
            list.push_back(const_cast<char*>(argument.c_str()));
        }
        list.push_back(nullptr);
        if (!std::freopen(folder.Path("out").c_str(), "w", stdout) ||
            !std::freopen(folder.Path("err").c_str(), "w", stderr)) {
            _exit(126);
        }
        execv(KTSOVU_PROGRAM, list.data());
        _exit(127);
    }
    return child;
}

/// Runs the program to its end.
inline host_Outcome host_Run(const std::vector<std::string>& arguments) {
    const host_TemporaryFolder folder;
    const pid_t child = host_Start(arguments, folder);
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, host_ReadFile(folder.Path("out")),
            host_ReadFile(folder.Path("err"))};
}
