#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// A set of byte offsets of a text, its end included. Costs a bit a byte.
class OffsetSet {
public:
    /// An empty set of offsets up to and including `last`.
    explicit OffsetSet(std::uint32_t last)
        : _words(last / wordBits + 1) {}

    void insert(std::uint32_t offset) { _words[offset / wordBits] |= getBit(offset); }

    bool contains(std::uint32_t offset) const { return (_words[offset / wordBits] & getBit(offset)) != 0; }

    /// The last member that is not greater than `offset`; 0 if there is none.
    std::uint32_t findUpTo(std::uint32_t offset) const;

    /// The first member that is not less than `offset`; `none` if there is no such member.
    std::uint32_t findFrom(std::uint32_t offset, std::uint32_t none) const;

    /// How many members are at least `begin` and less than `end`.
    std::uint32_t count(std::uint32_t begin, std::uint32_t end) const;

private:
    static constexpr std::uint32_t wordBits = 64;

    static std::uint64_t getBit(std::uint32_t offset) { return std::uint64_t{1} << offset % wordBits; }

    std::vector<std::uint64_t> _words;
};

} // namespace Vell::TextLayout
