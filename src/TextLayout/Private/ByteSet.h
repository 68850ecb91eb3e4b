#pragma once

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>

namespace Vell::TextLayout {

/// A set of byte offsets into a text, its end included. Costs a bit for each byte.
class ByteSet { // NOLINT(bugprone-exception-escape): small_vector moves into equal room, which cannot throw
public:
    /// What next() and previous() return if there is no such offset.
    static constexpr std::size_t none = SIZE_MAX;

    ByteSet() = default;

    /// An empty set of offsets up to `last`, inclusive.
    explicit ByteSet(std::size_t last)
        : _words(last / wordBits + 1) {}

    /// Makes the set an empty one of offsets up to `last`, inclusive.
    void reset(std::size_t last) { _words.assign(last / wordBits + 1, 0); }

    /// Requires an offset within the limit.
    bool test(std::size_t offset) const {
        return (_words[offset / wordBits] >> (offset % wordBits) & 1U) != 0;
    }

    /// The first offset of the set that is greater than `offset`.
    std::size_t next(std::size_t offset) const;

    /// The last offset of the set that is less than `offset`.
    std::size_t previous(std::size_t offset) const;

    /// How many offsets the set has. Costs a step for each word of the set.
    std::size_t count() const;

    /// How many offsets of the set are at least `begin` and less than `end`, which is within the limit.
    std::size_t count(std::size_t begin, std::size_t end) const;

    /// Requires an offset within the limit.
    void insert(std::size_t offset) { _words[offset / wordBits] |= std::uint64_t{1} << (offset % wordBits); }

    /// Inserts all offsets from `begin` up to, but not including, `end`, which is within the limit.
    void insertAll(std::size_t begin, std::size_t end);

private:
    static constexpr std::size_t wordBits = 64;

    boost::container::small_vector<std::uint64_t, 5> _words; // short texts need no allocation
};

} // namespace Vell::TextLayout
