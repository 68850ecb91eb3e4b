#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>
#include <limits>
#include <mutex>

/// Hash functions, and two ways to keep the hash of an immutable object.
///
/// The hash values are part of the contract: they are the same on every machine and with every version of
/// every library. Therefore the functions are written out here and not borrowed.
namespace Vell {

/// Mixes one 64-bit value into a seed: the multiply-and-shift step of the 64-bit Murmur family.
constexpr std::uint64_t combineHash(std::uint64_t seed, std::uint64_t value) {
    constexpr std::uint64_t multiplier = 0xc6a4a7935bd1e995;
    constexpr std::uint64_t increment = 0xe6546b64; // keeps a run of zeros from hashing to zero
    value *= multiplier;
    value ^= value >> 47;
    value *= multiplier;
    return (seed ^ value) * multiplier + increment;
}

namespace HashDetails {

/// Hashes an infinity or a NaN.
constexpr std::uint64_t hashNonFinite(float value) {
    constexpr auto top = std::numeric_limits<std::uint64_t>::max();
    if (value > 0) {
        return top;
    }
    return value < 0 ? top - 1 : top - 2;
}

} // namespace HashDetails

/// Equal numbers have equal hashes: +0 and -0 both give 0. The infinities and NaN have values of their own,
/// which do not fit in 32 bits. Every other number gives its IEEE 754 bit pattern.
inline std::uint64_t hashFloat(float value) {
    constexpr std::uint32_t exponent = 0x7F800000;
    std::uint32_t bits = 0;
    static_assert(sizeof(bits) == sizeof(value), "IEEE 754 single precision");
    std::memcpy(&bits, &value, sizeof(bits));
    if ((bits & exponent) == exponent) {
        return HashDetails::hashNonFinite(value);
    }
    return value == 0.0F ? 0 : bits;
}

/// Keeps the hash of an immutable object, which is computed on first use.
///
/// Any thread may ask. The first one computes the hash under the mutex, and the others wait for it. After
/// that, reading the hash takes no mutex. Copying and assigning transfer nothing: a copy has a mutex of its
/// own and computes its hash again. If the computation throws, nothing is kept.
class MemoizedHash {
public:
    MemoizedHash() = default;
    MemoizedHash(const MemoizedHash&) noexcept {}
    MemoizedHash& operator=(const MemoizedHash&) noexcept {
        _isComputed.store(false, std::memory_order_relaxed);
        return *this;
    }

    template <class Compute>
    std::uint64_t get(const Compute& compute) {
        return _isComputed.load(std::memory_order_acquire) ? _hash : computeOnce(compute);
    }

private:
    template <class Compute>
    std::uint64_t computeOnce(const Compute& compute) {
        const std::lock_guard<std::recursive_mutex> lock(_mutex);
        return _isComputed.load(std::memory_order_relaxed) ? _hash : store(compute());
    }

    std::uint64_t store(std::uint64_t hash) {
        _hash = hash;
        _isComputed.store(true, std::memory_order_release);
        return hash;
    }

    std::atomic<bool> _isComputed = false;
    std::uint64_t _hash = 0;
    std::recursive_mutex _mutex; // recursive: the computation may itself ask for this hash
};

/// Like MemoizedHash, but without a mutex and in eight bytes: two threads may both compute the hash. For
/// objects whose parts keep their own hashes, so that computing it twice costs little.
class LockFreeMemoizedHash {
public:
    LockFreeMemoizedHash() = default;
    LockFreeMemoizedHash(const LockFreeMemoizedHash&) noexcept {}
    LockFreeMemoizedHash& operator=(const LockFreeMemoizedHash&) noexcept {
        _hash.store(unknown, std::memory_order_relaxed);
        return *this;
    }

    template <class Compute>
    std::uint64_t get(const Compute& compute) {
        std::uint64_t hash = _hash.load(std::memory_order_relaxed);
        if (hash == unknown) {
            hash = compute();
            _hash.store(hash, std::memory_order_relaxed);
        }
        return hash;
    }

private:
    static constexpr std::uint64_t unknown = 0; // an object that hashes to this computes its hash every time

    std::atomic<std::uint64_t> _hash = unknown;
};

} // namespace Vell
