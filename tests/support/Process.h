#pragma once

#include <support/TemporaryFolder.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace Vell::Testing {

struct ProcessResult {
    int status;
    std::string out;
    std::string err;
};

/// Quotes a text as one word for the shell.
inline std::string quote(const std::string& argument) {
    std::string quoted = "'";
    for (const char c : argument) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

/// Runs a shell command line and returns its exit status.
inline int runShell(const std::string& command) {
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Runs a program with the given bytes as its standard input.
inline ProcessResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                                const std::string& input = "") {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("in"), input);
    std::string command = quote(program);
    for (const std::string& argument : arguments) {
        command += " " + quote(argument);
    }
    command += " <" + quote(folder.getPath("in")) + " >" + quote(folder.getPath("out")) + " 2>" +
               quote(folder.getPath("err"));
    const int status = runShell(command);
    return {status, readBytes(folder.getPath("out")), readBytes(folder.getPath("err"))};
}

} // namespace Vell::Testing
