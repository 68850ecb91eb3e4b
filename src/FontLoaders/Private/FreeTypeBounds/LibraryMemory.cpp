#include <FontLoaders/Private/FreeTypeBounds/LibraryMemory.h>

#include <FontLoaders/Private/FreeTypeBounds/FreeTypeMemoryInternal.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <thread>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

/// The alignment of blocks from malloc, if they have at least this many bytes.
constexpr std::size_t heapAlignment = alignof(std::max_align_t);

/// The alignment of listed blocks. It is enough for FreeType, which stores pointers and 64-bit numbers.
constexpr std::size_t listedAlignment = heapAlignment / 2;

std::size_t toBytes(long size) {
    return static_cast<std::size_t>(size); // a negative size becomes one beyond every bound
}

} // namespace

/// Spins, because it guards only four assignments. Loading a glyph of a PostScript font allocates and frees
/// five blocks; with a mutex it took 2.5 percent longer.
class LibraryMemory::RingLock {
public:
    explicit RingLock(std::atomic_flag& isTaken)
        : _isTaken(isTaken) {
        while (_isTaken.test_and_set(std::memory_order_acquire)) {
            std::this_thread::yield();
        }
    }
    ~RingLock() { _isTaken.clear(std::memory_order_release); }
    RingLock(const RingLock&) = delete;
    RingLock& operator=(const RingLock&) = delete;

private:
    std::atomic_flag& _isTaken;
};

/// An odd multiple of half the heap's alignment. So listed blocks have addresses that blocks without a header
/// never have, and isListed needs only the address.
std::size_t LibraryMemory::getHeaderSize() {
    constexpr std::size_t halves = (sizeof(Header) + listedAlignment - 1) / listedAlignment;
    return (halves | 1U) * listedAlignment;
}

bool LibraryMemory::isListed(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block) % heapAlignment != 0;
}

LibraryMemory::Header* LibraryMemory::getHeader(void* block) {
    return reinterpret_cast<Header*>(static_cast<unsigned char*>(block) - getHeaderSize());
}

LibraryMemory::LibraryMemory()
    : _record{this, allocate, release, reallocate}
    , _ring{&_ring, &_ring, nullptr} {}

LibraryMemory::~LibraryMemory() {
    while (_ring.next != &_ring) {
        Header* const header = _ring.next;
        unlist(header);
        delete header->reader;
        freeBounded(header);
    }
}

GlyfReader* LibraryMemory::findReader(FT_Face face) {
    return face->memory->free == release && isListed(face) ? getHeader(face)->reader : nullptr;
}

void LibraryMemory::setReader(FT_Face face, std::unique_ptr<GlyfReader> reader) {
    if (face->memory->free == release && isListed(face)) {
        delete std::exchange(getHeader(face)->reader, reader.release());
    }
}

void* LibraryMemory::allocate(FT_Memory record, long size) {
    if (isAllocatingForGlyphs()) {
        return allocateBounded(std::max(toBytes(size), heapAlignment), 0);
    }
    void* const header = allocateBounded(toBytes(size), getHeaderSize());
    return header != nullptr ? static_cast<LibraryMemory*>(record->user)->list(new (header) Header) : nullptr;
}

void* LibraryMemory::reallocate(FT_Memory record, long, long newSize, void* block) {
    if (block == nullptr) {
        return allocate(record, newSize);
    }
    return isListed(block)
               ? static_cast<LibraryMemory*>(record->user)->resize(getHeader(block), toBytes(newSize))
               : reallocateBounded(block, std::max(toBytes(newSize), heapAlignment), 0);
}

void LibraryMemory::release(FT_Memory record, void* block) {
    if (!isListed(block)) {
        freeBounded(block);
        return;
    }
    auto* const memory = static_cast<LibraryMemory*>(record->user);
    Header* const header = getHeader(block);
    memory->unlist(header);
    delete header->reader;
    freeBounded(header);
    if (block == memory->_library) {
        delete memory;
    }
}

void* LibraryMemory::list(Header* header) {
    const RingLock lock(_isRingTaken);
    header->previous = &_ring;
    header->next = _ring.next;
    header->next->previous = header;
    _ring.next = header;
    return reinterpret_cast<unsigned char*>(header) + getHeaderSize();
}

void LibraryMemory::unlist(Header* header) {
    const RingLock lock(_isRingTaken);
    header->previous->next = header->next;
    header->next->previous = header->previous;
}

void* LibraryMemory::resize(Header* header, std::size_t bytes) {
    unlist(header);
    auto* const moved = static_cast<Header*>(reallocateBounded(header, bytes, getHeaderSize()));
    void* const block = list(moved != nullptr ? moved : header);
    return moved != nullptr ? block : nullptr;
}

} // namespace Vell::FontLoaders::Internal
