#pragma once

#include <csignal>

/// How SIGINT (Ctrl-C), SIGTERM and SIGHUP end the tool: they undo first what is unfinished.
///
///     const Undo undo([](void* path) { unlink(static_cast<const char*>(path)); }, path);
///
/// For the main thread, which is the only thread of the tool.
namespace Vell::Tool {

/// From now on these signals run every living Undo, the newest first, and then end the process by their
/// default action, so that a shell sees the usual status. A signal that was ignored when the process started
/// stays ignored.
void undoOnInterruption();

/// An action that an interruption runs while this object lives. It may call only async-signal-safe functions.
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

/// Delays interruptions while it lives, for steps that belong together.
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
