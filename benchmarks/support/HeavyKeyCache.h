#pragma once

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

namespace Vell::Benchmarks {

/// A minimal locked cache of shared values whose keys each own a mutex and a reference. Keys are compared and
/// hashed by a plain number.
class HeavyKeyCache {
public:
    std::shared_ptr<const int> getOrMake(std::uint64_t id) {
        const Key key(_owner, id);
        const std::lock_guard<std::recursive_mutex> lock(_mutex);
        const auto found = _entries.get<1>().find(key);
        if (found == _entries.get<1>().end()) {
            return _entries.get<0>().emplace_front(key, std::make_shared<const int>(0)).first->second;
        }
        _entries.get<0>().relocate(_entries.get<0>().begin(), _entries.project<0>(found));
        return found->second;
    }

private:
    struct Key {
        Key(std::shared_ptr<const int> keyOwner, std::uint64_t keyId)
            : owner(std::move(keyOwner))
            , id(keyId) {}
        Key(const Key& other)
            : owner(other.owner)
            , id(other.id) {}

        bool operator==(const Key& other) const { return id == other.id; }

        mutable std::recursive_mutex mutex;
        std::shared_ptr<const int> owner;
        std::uint64_t id;
    };

    struct Hash {
        std::size_t operator()(const Key& key) const {
            const std::lock_guard<std::recursive_mutex> lock(key.mutex);
            return key.id * 0x9E3779B97F4A7C15U;
        }
    };

    using Entry = std::pair<const Key, std::shared_ptr<const int>>;
    using Entries = boost::multi_index_container<
        Entry, boost::multi_index::indexed_by<
                   boost::multi_index::sequenced<>,
                   boost::multi_index::hashed_unique<
                       boost::multi_index::member<Entry, const Key, &Entry::first>, Hash>>>;

    std::recursive_mutex _mutex;
    Entries _entries;
    std::shared_ptr<const int> _owner = std::make_shared<const int>(0);
};

} // namespace Vell::Benchmarks
