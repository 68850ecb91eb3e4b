#pragma once

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

namespace Vell::Testing {

/// A terminal that records what is written to it. It reads all the time, because a full terminal would block
/// the writer.
class PseudoTerminal {
public:
    explicit PseudoTerminal(unsigned short columns) {
        termios raw{};
        cfmakeraw(&raw);
        const winsize size{24, columns, 0, 0};
        if (openpty(&_controller, &_terminal, nullptr, &raw, &size) != 0) {
            throw std::runtime_error("openpty failed");
        }
        fcntl(_controller, F_SETFD, FD_CLOEXEC);
        fcntl(_terminal, F_SETFD, FD_CLOEXEC);
        _reader = std::thread([this] { readAll(); });
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() {
        hangUp();
        close(_controller);
    }

    int getDescriptor() const { return _terminal; }
    /// The file through which a process opens the terminal.
    std::string getPath() const { return ttyname(_terminal); }

    /// Waits until this part is written; false after a time that is long enough for any test.
    bool waitFor(const std::string& part) {
        constexpr std::chrono::seconds patience(60);
        std::unique_lock<std::mutex> lock(_mutex);
        return _changed.wait_for(lock, patience, [&] { return _text.find(part) != std::string::npos; });
    }

    /// Everything that was written. Call it when nobody else has the terminal open; afterwards the terminal
    /// is gone.
    std::string take() {
        hangUp();
        return _text;
    }

private:
    /// Reading fails when nobody has the other end open any more.
    void readAll() {
        char buffer[4096];
        for (;;) {
            const ssize_t count = read(_controller, buffer, sizeof(buffer));
            if (count <= 0) {
                return;
            }
            const std::lock_guard<std::mutex> lock(_mutex);
            _text.append(buffer, static_cast<std::size_t>(count));
            _changed.notify_all();
        }
    }

    void hangUp() {
        if (_reader.joinable()) {
            close(_terminal);
            _reader.join();
        }
    }

    int _controller = -1;
    int _terminal = -1;
    std::mutex _mutex;
    std::condition_variable _changed;
    std::string _text; // guarded by the mutex until the reader is joined
    std::thread _reader;
};

} // namespace Vell::Testing
