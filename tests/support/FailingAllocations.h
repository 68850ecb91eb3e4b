#pragma once

#include <cstddef>

namespace Vell::Testing {

/// While it exists, makes the `number`-th allocation of this thread by operator new (1 is the next one) throw
/// std::bad_alloc, once. Works only in executables that link fontengine_allocation_hooks, which replaces the
/// global operators.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t number);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Returns whether that allocation has happened.
    bool hasFailed() const;
};

/// Counts the bytes that this thread has allocated by operator new and not released since the object was
/// made. Releasing older memory reduces the count.
class LiveBytes {
public:
    LiveBytes();
    std::size_t get() const;

private:
    long _atStart;
};

} // namespace Vell::Testing
