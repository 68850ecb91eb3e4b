#pragma once

#include <mutex>

/// Annotations for clang's thread safety analysis (-Wthread-safety). Other compilers ignore them.
#if defined(__clang__)
#define VELL_THREAD_SAFETY(attribute) __attribute__((attribute))
#else
#define VELL_THREAD_SAFETY(attribute)
#endif

#define VELL_CAPABILITY(name) VELL_THREAD_SAFETY(capability(name))
#define VELL_SCOPED_CAPABILITY VELL_THREAD_SAFETY(scoped_lockable)
/// Code may use the member only while it holds the lock.
#define VELL_GUARDED_BY(mutex) VELL_THREAD_SAFETY(guarded_by(mutex))
/// The caller holds the lock.
#define VELL_REQUIRES(mutex) VELL_THREAD_SAFETY(requires_capability(mutex))
#define VELL_ACQUIRE(...) VELL_THREAD_SAFETY(acquire_capability(__VA_ARGS__))
#define VELL_RELEASE(...) VELL_THREAD_SAFETY(release_capability(__VA_ARGS__))
#define VELL_RETURN_CAPABILITY(mutex) VELL_THREAD_SAFETY(lock_returned(mutex))
/// The analysis skips the function, for the reason given beside it.
#define VELL_NO_THREAD_SAFETY_ANALYSIS VELL_THREAD_SAFETY(no_thread_safety_analysis)

namespace Vell::FontEngine::Internal {

/// A recursive mutex for the thread safety analysis. While another thread holds it, lock() retries for up to
/// a tenth of a millisecond before the thread sleeps. The guarded work rarely takes longer than that, but
/// waking up would.
class VELL_CAPABILITY("mutex") RecursiveMutex {
public:
    void lock() VELL_ACQUIRE() {
        if (!_mutex.try_lock()) {
            lockContended();
        }
    }
    void unlock() VELL_RELEASE() { _mutex.unlock(); }

private:
    void lockContended() {
        constexpr int attempts = 1000;
        for (int attempt = 0; attempt != attempts; ++attempt) {
            pause();
            if (_mutex.try_lock()) {
                return;
            }
        }
        _mutex.lock();
    }

    /// Leaves the core's other hardware thread and the memory bus to the thread that holds the lock.
    static void pause() {
#if defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        asm volatile("yield");
#endif
    }

    std::recursive_mutex _mutex;
};

/// Holds a RecursiveMutex as long as it lives.
class VELL_SCOPED_CAPABILITY RecursiveLock {
public:
    explicit RecursiveLock(RecursiveMutex& mutex) VELL_ACQUIRE(mutex)
        : _mutex(mutex) {
        _mutex.lock();
    }
    ~RecursiveLock() VELL_RELEASE() { _mutex.unlock(); }
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

private:
    RecursiveMutex& _mutex;
};

} // namespace Vell::FontEngine::Internal
