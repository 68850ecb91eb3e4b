#pragma once

#include <csignal>

/// How SIGINT (Ctrl-C), SIGTERM and SIGHUP end the tool: what is unfinished is undone first.
///
///     const Undo undo([](void* path) { unlink(static_cast<const char*>(path)); }, path);
///
/// Everything here belongs to the main thread, the only one that the tool has.
namespace Vell::Tool {

/// From now on these signals run every Undo that lives, the newest first, and then end the process as they
/// would have done anyway: the shell sees the status that it expects. A signal that the process was started
/// with as ignored stays ignored.
void undoOnInterruption();

/// An action to run when the process is interrupted while this object lives. The action may call only what
/// signal handlers may call.
class Undo {
public:
    using Action = void (*)(void* context);

    Undo(Action action, void* context);
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;
    ~Undo();

    static void runAll();

private:
    Action _action;
    void* _context;
    Undo* _older;
};

/// Makes interruptions wait as long as it lives, for steps that belong together.
class InterruptionPause {
public:
    InterruptionPause();
    InterruptionPause(const InterruptionPause&) = delete;
    InterruptionPause& operator=(const InterruptionPause&) = delete;
    ~InterruptionPause();

private:
    sigset_t _before;
};

} // namespace Vell::Tool
