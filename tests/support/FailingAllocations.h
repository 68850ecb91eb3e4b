#pragma once

#include <cstddef>

namespace Vell::Testing {

/// Lets the `number`-th allocation of this thread through operator new (1 is the next one) throw
/// std::bad_alloc, once, while it lives. Only in executables that link fontengine_allocation_hooks, which
/// replace the global operators.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t number);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Whether that allocation has come.
    bool hasFailed() const;
};

/// The bytes that this thread has allocated through operator new and not released since the object was made;
/// what it releases of others counts against it.
class LiveBytes {
public:
    LiveBytes();
    std::size_t get() const;

private:
    long _atStart;
};

} // namespace Vell::Testing
