#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontLoaders::Testing {

/// Bytes in the order in which font files have them, the highest first.
class ByteWriter {
public:
    ByteWriter() = default;
    explicit ByteWriter(std::vector<unsigned char> bytes)
        : _bytes(std::move(bytes)) {}

    std::size_t size() const { return _bytes.size(); }
    std::size_t getU16(std::size_t at) const { return (std::size_t{_bytes.at(at)} << 8) | _bytes.at(at + 1); }

    ByteWriter& u16(std::size_t value) {
        _bytes.push_back(static_cast<unsigned char>(value >> 8));
        _bytes.push_back(static_cast<unsigned char>(value));
        return *this;
    }
    ByteWriter& u32(std::size_t value) { return u16(value >> 16).u16(value & 0xFFFF); }
    ByteWriter& tag(const std::string& text) {
        _bytes.insert(_bytes.end(), text.begin(), text.end());
        return *this;
    }
    ByteWriter& zeros(std::size_t count) {
        _bytes.resize(_bytes.size() + count);
        return *this;
    }
    ByteWriter& align(std::size_t unit) { return zeros((unit - size() % unit) % unit); }
    ByteWriter& append(const ByteWriter& other) {
        _bytes.insert(_bytes.end(), other._bytes.begin(), other._bytes.end());
        return *this;
    }
    void addToU32(std::size_t at, std::size_t summand) {
        const std::size_t sum = ((getU16(at) << 16) | getU16(at + 2)) + summand;
        for (std::size_t i = 0; i < 4; ++i) {
            _bytes.at(at + i) = static_cast<unsigned char>(sum >> (24 - 8 * i));
        }
    }

    std::vector<unsigned char> take() { return std::move(_bytes); }

private:
    std::vector<unsigned char> _bytes;
};

} // namespace Vell::FontLoaders::Testing
