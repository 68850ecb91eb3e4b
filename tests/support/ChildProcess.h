#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <exception>
#include <stdexcept>
#include <string>

namespace Vell::Testing {

/// Calls a function in a copy of this process and returns the text that it gives. So it finds libraries in
/// the state in which this process has left them, and leaves no state behind. Throws if the copy crashes or
/// its function throws.
template <class Function>
std::string callInChild(const Function& function) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("pipe() failed");
    }
    const pid_t child = fork();
    if (child == 0) {
        try {
            const std::string text = function();
            const auto written = write(ends[1], text.data(), text.size());
            _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
        } catch (const std::exception&) {
            _exit(1);
        }
    }
    close(ends[1]);
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 1; count > 0;) {
        count = read(ends[0], buffer.data(), buffer.size());
        text.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    close(ends[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("the child process failed with status " + std::to_string(status));
    }
    return text;
}

} // namespace Vell::Testing
