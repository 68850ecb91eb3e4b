#pragma once

#include "output/Interruption.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace Vell::Tool {

/// A progress bar for work that takes a while, on standard error if that is a terminal. Writes nothing to a
/// pipe or a file.
///
///     Progress progress("pages", pages.size());
///     for (const Page& page : pages) { draw(page); progress.advance(); }
///
/// The bar stands on the terminal's current line and is redrawn a few times a second at most. Its destructor
/// clears it, and so does an interruption (Interruption.h): what is printed next begins on an empty line.
/// Print nothing else while it stands. It never fails: a bar that cannot be written is not seen. One thread.
class Progress {
public:
    /// `total` is the number of steps, in any unit.
    explicit Progress(std::string label, std::size_t total, int descriptor = STDERR_FILENO);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Steps beyond the total do not count.
    void advance(std::size_t steps = 1);

private:
    using Clock = std::chrono::steady_clock;

    void draw();
    void clear();
    void write(std::string_view text);

    std::string _label;
    std::size_t _total;
    std::size_t _done = 0;
    int _descriptor;
    bool _isVisible;
    std::atomic<std::size_t> _columns = 0; // that are in use on the line
    Clock::time_point _drawn;
    Undo _undo;
};

/// The bar as a line of fewer than `columns` characters; without the bar if there is no room for it. The
/// label is ASCII.
std::string formatProgress(std::string_view label, std::size_t done, std::size_t total, std::size_t columns);

} // namespace Vell::Tool
