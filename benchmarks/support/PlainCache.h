#pragma once

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Vell::Benchmarks {

struct PlainHash {
    std::size_t operator()(std::uint64_t key) const { return key * 0x9E3779B97F4A7C15U; }
};

/// A hashed list in the order of use, with plain numbers as keys: the cost of a hit without any guarantees.
template <typename Value>
class PlainCache {
public:
    const Value& getOrPut(std::uint64_t key, const Value& value) {
        auto& recency = _entries.template get<0>();
        const auto found = _entries.template get<1>().find(key);
        if (found == _entries.template get<1>().end()) {
            return recency.emplace_front(key, value).first->second;
        }
        recency.relocate(recency.begin(), _entries.template project<0>(found));
        return found->second;
    }

private:
    using Entry = std::pair<const std::uint64_t, Value>;
    using Entries = boost::multi_index_container<
        Entry, boost::multi_index::indexed_by<
                   boost::multi_index::sequenced<>,
                   boost::multi_index::hashed_unique<
                       boost::multi_index::member<Entry, const std::uint64_t, &Entry::first>, PlainHash>>>;

    Entries _entries;
};

} // namespace Vell::Benchmarks
