#pragma once

#include <cerrno>

namespace Vell::TextLayout {

/// Notices that an allocation of this thread has failed. HarfBuzz reports few such failures: it goes on
/// without a table, and keeps that answer in its face. ICU goes on without its dictionaries. The functions of
/// the C library set errno.
class AllocationWatch {
public:
    AllocationWatch() { errno = 0; }
    ~AllocationWatch() { errno = _before; }
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    bool hasFailed() const { return errno == ENOMEM; }

private:
    int _before = errno;
};

} // namespace Vell::TextLayout
