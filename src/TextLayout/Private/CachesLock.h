#pragma once

#include <mutex>

namespace Vell::TextLayout {

/// The lock of the caches of a shaper. A text holds it while it looks up what they know.
using CachesLock = std::unique_lock<std::mutex>;

/// Lets go of the lock for what takes long and for what clients implement.
class Unlocked {
public:
    explicit Unlocked(CachesLock& lock)
        : _lock(lock) {
        _lock.unlock();
    }
    ~Unlocked() { _lock.lock(); }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

private:
    CachesLock& _lock;
};

} // namespace Vell::TextLayout
