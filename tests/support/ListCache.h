#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <list>
#include <vector>

namespace Vell::Testing {

/// A plain model of MRUCache, written without regard to speed: a list from the most to the least recently
/// used entry, searched from end to end.
class ListCache {
public:
    struct Entry {
        unsigned int key;
        std::uint32_t value;
        std::uint64_t bytes;
    };

    ListCache(std::uint64_t maxEntries, std::uint64_t maxBytes)
        : _maxEntries(maxEntries)
        , _maxBytes(maxBytes) {}

    const Entry* get(unsigned int key) {
        const auto found = find(key);
        if (found == _entries.end()) {
            return nullptr;
        }
        _entries.splice(_entries.begin(), _entries, found);
        return &_entries.front();
    }

    const Entry* put(const Entry& entry) {
        _lastEvicted.clear();
        if (find(entry.key) != _entries.end()) {
            return nullptr;
        }
        _entries.push_front(entry);
        while (_entries.size() > 1 && isOverLimit()) {
            _lastEvicted.push_back(_entries.back().key);
            _entries.pop_back();
            ++_evictedCount;
        }
        return &_entries.front();
    }

    void clear() {
        _entries.clear();
        _evictedCount = 0;
    }

    const std::list<Entry>& getEntries() const { return _entries; }
    std::uint64_t countBytes() const {
        std::uint64_t sum = 0;
        for (const Entry& entry : _entries) {
            sum += entry.bytes;
        }
        return sum;
    }
    /// The keys that the last put has evicted.
    const std::vector<unsigned int>& getLastEvicted() const { return _lastEvicted; }
    std::uint64_t getEvictedCount() const { return _evictedCount; }
    std::uint64_t getMaxEntries() const { return _maxEntries; }
    std::uint64_t getMaxBytes() const { return _maxBytes; }

private:
    std::list<Entry>::iterator find(unsigned int key) {
        return std::find_if(_entries.begin(), _entries.end(),
                            [key](const Entry& entry) { return entry.key == key; });
    }
    bool isOverLimit() const {
        return (_maxEntries != 0 && _entries.size() > _maxEntries) ||
               (_maxBytes != 0 && countBytes() > _maxBytes);
    }

    std::list<Entry> _entries;
    std::uint64_t _maxEntries;
    std::uint64_t _maxBytes;
    std::uint64_t _evictedCount = 0;
    std::vector<unsigned int> _lastEvicted;
};

} // namespace Vell::Testing
