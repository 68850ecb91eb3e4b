#include "output/Interruption.h"

#include <atomic>

namespace Vell::Tool {

namespace {

constexpr int interruptions[] = {SIGINT, SIGTERM, SIGHUP};

/// Changes only while interruptions are blocked.
std::atomic<Undo*> newestUndo = nullptr;

sigset_t getInterruptions() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : interruptions) {
        sigaddset(&set, signal);
    }
    return set;
}

/// The raised signal is blocked until the handler returns; then its default action ends the process.
void handle(int signal) {
    Undo::runAll();
    std::signal(signal, SIG_DFL);
    raise(signal);
}

} // namespace

void undoOnInterruption() {
    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_mask = getInterruptions();
    for (const int signal : interruptions) {
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

Undo::Undo(Action action, void* context)
    : _action(action)
    , _context(context)
    , _older(newestUndo) {
    const InterruptionPause pause;
    newestUndo = this;
}

Undo::~Undo() {
    const InterruptionPause pause;
    if (newestUndo == this) {
        newestUndo = _older;
        return;
    }
    for (Undo* undo = newestUndo; undo != nullptr; undo = undo->_older) {
        if (undo->_older == this) {
            undo->_older = _older;
        }
    }
}

void Undo::runAll() {
    for (const Undo* undo = newestUndo; undo != nullptr; undo = undo->_older) {
        undo->_action(undo->_context);
    }
}

InterruptionPause::InterruptionPause()
    : _before() {
    const sigset_t set = getInterruptions();
    pthread_sigmask(SIG_BLOCK, &set, &_before);
}

InterruptionPause::~InterruptionPause() {
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

} // namespace Vell::Tool
