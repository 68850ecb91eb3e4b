#include "Tool.h"

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
    // A reader that closes the pipe early is an error of the write, not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    return Vell::Tool::runTool(argc, argv, std::cin, std::cout, std::cerr);
}
