#include "Tool.h"
#include "output/Interruption.h"

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
    // If the reader closes the pipe early, the write fails; the process goes on.
    std::signal(SIGPIPE, SIG_IGN);
    Vell::Tool::undoOnInterruption();
    return Vell::Tool::runTool(argc, argv, std::cin, std::cout, std::cerr);
}
