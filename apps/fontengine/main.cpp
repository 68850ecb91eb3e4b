#include "Tool.h"
#include "output/Interruption.h"

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
    // A reader that closes the pipe early is an error of the write, not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    Vell::Tool::undoOnInterruption();
    return Vell::Tool::runTool(argc, argv, std::cin, std::cout, std::cerr);
}
