#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

/// Hashes that are part of the contract: the same on every machine and with every version of every library,
/// so they are written out here rather than borrowed.
namespace Vell {

/// Mixes one 64-bit value into a seed: the multiply and shift step of the 64-bit Murmur family.
constexpr std::uint64_t combineHash(std::uint64_t seed, std::uint64_t value) {
    constexpr std::uint64_t multiplier = 0xc6a4a7935bd1e995;
    constexpr std::uint64_t increment = 0xe6546b64; // keeps a run of zeros from hashing to zero
    value *= multiplier;
    value ^= value >> 47;
    value *= multiplier;
    return (seed ^ value) * multiplier + increment;
}

namespace HashDetails {

/// Of an infinity or of what is no number.
constexpr std::uint64_t hashUnbounded(float value) {
    constexpr auto top = std::numeric_limits<std::uint64_t>::max();
    if (value > 0) {
        return top;
    }
    return value < 0 ? top - 1 : top - 2;
}

} // namespace HashDetails

/// Equal numbers hash alike: +0 and -0 give 0. Infinities and NaN have values of their own outside 32 bits;
/// every other number gives its IEEE 754 bit pattern.
inline std::uint64_t hashFloat(float value) {
    constexpr std::uint32_t exponent = 0x7F800000;
    std::uint32_t bits = 0;
    static_assert(sizeof(bits) == sizeof(value), "IEEE 754 single precision");
    std::memcpy(&bits, &value, sizeof(bits));
    if ((bits & exponent) == exponent) {
        return HashDetails::hashUnbounded(value);
    }
    return value == 0.0F ? 0 : bits;
}

} // namespace Vell
