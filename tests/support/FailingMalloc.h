#pragma once

#include <cstddef>

namespace Vell::Testing {

/// While it exists, makes the `number`-th allocation of this thread (1 is the next one) return null, once:
/// malloc, calloc and realloc, by which C libraries allocate, and so does operator new. Works only in
/// executables that link fontengine_malloc_hooks, which replaces the functions of glibc.
class FailingMalloc {
public:
    explicit FailingMalloc(std::size_t number);
    ~FailingMalloc();
    FailingMalloc(const FailingMalloc&) = delete;
    FailingMalloc& operator=(const FailingMalloc&) = delete;

    /// Returns whether that allocation has happened.
    bool hasFailed() const;
};

/// Counts the blocks that this thread has allocated and not released since the object was made. Releasing
/// older blocks reduces the count.
class LiveBlocks {
public:
    LiveBlocks();
    long get() const;

private:
    long _atStart;
};

} // namespace Vell::Testing
