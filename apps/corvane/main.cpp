#include "apps/corvane/CommandLine.h"

int main(int argumentCount, char** arguments) { return corvane::runCommandLine(argumentCount, arguments); }
