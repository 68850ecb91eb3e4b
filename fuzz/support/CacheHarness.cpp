#include <fuzz/support/CacheHarness.h>

#include <fuzz/support/Harness.h>

#include <algorithm>
#include <numeric>

namespace Vell::Fuzz {

const ListCache::Entry* ListCache::get(unsigned int key) {
    const auto found = std::find_if(_entries.begin(), _entries.end(),
                                    [key](const Entry& entry) { return entry.key == key; });
    if (found == _entries.end()) {
        return nullptr;
    }
    _entries.splice(_entries.begin(), _entries, found);
    return &_entries.front();
}

const ListCache::Entry* ListCache::put(const Entry& entry) {
    _lastEvicted.clear();
    for (const Entry& held : _entries) {
        if (held.key == entry.key) {
            return nullptr;
        }
    }
    _entries.push_front(entry);
    while (_entries.size() > 1 && ((_maxEntries != 0 && _entries.size() > _maxEntries) ||
                                   (_maxBytes != 0 && countBytes() > _maxBytes))) {
        _lastEvicted.push_back(_entries.back().key);
        _entries.pop_back();
        ++_evictedCount;
    }
    return &_entries.front();
}

void ListCache::clear() {
    _entries.clear();
    _evictedCount = 0;
}

std::uint64_t ListCache::countBytes() const {
    return std::accumulate(_entries.begin(), _entries.end(), std::uint64_t(0),
                           [](std::uint64_t sum, const Entry& entry) { return sum + entry.bytes; });
}

CacheOperation takeCacheOperation(ByteReader& reader) {
    // Clearing and limiting empty the cache: they are rare, or there would never be much in it.
    constexpr CacheOperation::Kind kinds[] = {CacheOperation::Kind::Get, CacheOperation::Kind::Put,
                                              CacheOperation::Kind::GetOrPut};
    const unsigned int choice = reader.takeU8();
    const unsigned int key = reader.takeU8() % 32;
    const unsigned int number = reader.takeU8();
    switch (choice) {
    case 0xFF:
        return {CacheOperation::Kind::Clear, key, number};
    case 0xFE:
        return {CacheOperation::Kind::Limit, key, number};
    case 0xFD:
        return {CacheOperation::Kind::FailedGetOrPut, key, number};
    default:
        return {kinds[choice % 3], key, number};
    }
}

std::uint64_t toWeight(unsigned int number) {
    constexpr unsigned int firstPower = 216;
    return number < firstPower ? number : std::uint64_t(1) << (number - firstPower) % 41;
}

void runCache(const Bytes& input) {
    ByteReader reader(input);
    CacheDuel<FuzzedCache>(reader).run();
}

} // namespace Vell::Fuzz
