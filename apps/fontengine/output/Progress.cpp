#include "output/Progress.h"

#include <fmt/format.h>

#include <sys/ioctl.h>

#include <algorithm>
#include <utility>

namespace Vell::Tool {

namespace {

/// Often enough to look alive, and seldom enough to cost nothing.
constexpr std::chrono::milliseconds drawingInterval{100};

/// For terminals that do not report their width.
constexpr std::size_t usualColumns = 80;

std::size_t getColumns(int descriptor) {
    winsize size{};
    const bool isKnown = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usualColumns;
}

/// Rounded down, so that 100 means that all is done.
std::size_t getPercent(std::size_t done, std::size_t total) {
    return total == 0 ? 100
                      : static_cast<std::size_t>(100.0L * static_cast<long double>(done) /
                                                 static_cast<long double>(total));
}

} // namespace

std::string formatProgress(std::string_view label, std::size_t done, std::size_t total, std::size_t columns) {
    constexpr std::size_t leastBar = 4;
    constexpr std::size_t greatestBar = 40;
    const std::size_t percent = getPercent(done, total);
    const std::size_t room = columns - std::min<std::size_t>(columns, 1); // the last column would wrap
    const std::string plain = fmt::format("{} {:3}%", label, percent);
    constexpr std::size_t frame = 3; // the brackets and a space
    if (plain.size() + frame + leastBar > room) {
        return plain.substr(0, room);
    }
    const std::size_t bar = std::min(room - plain.size() - frame, greatestBar);
    const std::size_t filled = bar * percent / 100;
    return fmt::format("{} [{}{}] {:3}%", label, std::string(filled, '#'), std::string(bar - filled, '.'),
                       percent);
}

Progress::Progress(std::string label, std::size_t total, int descriptor)
    : _label(std::move(label))
    , _total(total)
    , _descriptor(descriptor)
    , _isVisible(isatty(descriptor) == 1)
    , _undo([](void* progress) { static_cast<Progress*>(progress)->clear(); }, this) {
    if (_isVisible) {
        draw();
    }
}

Progress::~Progress() {
    clear();
}

void Progress::advance(std::size_t steps) {
    _done += std::min(steps, _total - _done);
    if (_isVisible && Clock::now() - _drawn >= drawingInterval) {
        draw();
    }
}

void Progress::draw() {
    const std::string line = formatProgress(_label, _done, _total, getColumns(_descriptor));
    _columns = std::max<std::size_t>(_columns, line.size());
    write(fmt::format("\r{:<{}}", line, _columns));
    _drawn = Clock::now();
}

/// Writes spaces, which every terminal understands. Runs in a signal handler, too, which must not allocate.
void Progress::clear() {
    constexpr std::string_view spaces = "                                        ";
    if (_columns == 0) {
        return;
    }
    write("\r");
    for (std::size_t left = _columns; left > 0; left -= std::min(left, spaces.size())) {
        write(spaces.substr(0, left));
    }
    write("\r");
}

void Progress::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(_descriptor, text.data(), text.size());
        if (written <= 0) {
            _isVisible = false;
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace Vell::Tool
