#include "host/cli/cli_CommandLine.h"

int main(int argumentCount, char** arguments) { return cli_Run(argumentCount, arguments); }
