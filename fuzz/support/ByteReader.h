#pragma once

#include <support/ByteWriter.h>

#include <cstddef>

namespace Vell::Fuzz {

/// Reads the bytes at the front of an input that steer a harness. Beyond the end, it reads zeros.
class ByteReader {
public:
    explicit ByteReader(const Testing::Bytes& bytes)
        : _bytes(bytes) {}

    bool isAtEnd() const { return _position >= _bytes.size(); }

    unsigned char takeU8() { return isAtEnd() ? static_cast<unsigned char>(0) : _bytes[_position++]; }

    unsigned int takeU16() {
        const unsigned int high = takeU8();
        return high << 8 | takeU8();
    }

    /// A length from two bytes. The first byte decides:
    ///   00..BF  a usual length: both bytes make a number from 0 to 191.996 in steps of 1/256
    ///   C0..DF  the second byte chooses one of the absurd numbers in ByteReader.cpp
    ///   E0..FF  a number of any magnitude; it is negative if the second byte is odd
    float takeMeasure() { return takeNumber(1.0F / 256); }

    /// Like takeMeasure, but usual factors are 0 to 2.9999 in steps of 1/16384: their products stay usual.
    float takeFactor() { return takeNumber(1.0F / 16384); }

    Testing::Bytes takeRest() {
        const auto first = _bytes.begin() + static_cast<std::ptrdiff_t>(_position);
        _position = _bytes.size();
        return Testing::Bytes(first, _bytes.end());
    }

private:
    float takeNumber(float usualStep);

    const Testing::Bytes& _bytes;
    std::size_t _position = 0;
};

} // namespace Vell::Fuzz
