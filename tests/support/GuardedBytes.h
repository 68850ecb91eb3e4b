#pragma once

#include <support/ByteWriter.h>

#include <algorithm>
#include <cstddef>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

namespace Vell::Testing {

/// A copy of some bytes, followed by protected memory: reading a byte too many crashes the process, with and
/// without a sanitizer.
class GuardedBytes {
public:
    explicit GuardedBytes(const Bytes& bytes)
        : _size(bytes.size()) {
        const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t room = (bytes.size() + pageSize - 1) / pageSize * pageSize;
        _mappedSize = room + pageSize;
        _mapping = mmap(nullptr, _mappedSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (_mapping == MAP_FAILED) {
            throw std::bad_alloc();
        }
        auto* const end = static_cast<unsigned char*>(_mapping) + room;
        mprotect(end, pageSize, PROT_NONE);
        _data = end - bytes.size();
        std::copy(bytes.begin(), bytes.end(), _data);
    }
    ~GuardedBytes() { munmap(_mapping, _mappedSize); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    const unsigned char* data() const { return _data; }
    std::size_t size() const { return _size; }

private:
    std::size_t _size;
    std::size_t _mappedSize;
    void* _mapping;
    unsigned char* _data;
};

} // namespace Vell::Testing
