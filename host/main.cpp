#include "host/cli/cli_CommandLine.h"
#include "host/python/py_Run.h"

int main(int argumentCount, char** arguments) {
    return cli_Run(argumentCount, arguments, &py_RunScript);
}
