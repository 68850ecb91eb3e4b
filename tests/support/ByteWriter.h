#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Testing {

using Bytes = std::vector<unsigned char>;

/// Appends big-endian numbers, the format of font files.
class ByteWriter {
public:
    void addU8(unsigned int value) { _bytes.push_back(static_cast<unsigned char>(value & 0xFFU)); }
    void addU16(unsigned int value) {
        addU8(value >> 8);
        addU8(value);
    }
    void addU32(std::uint32_t value) {
        addU16(value >> 16);
        addU16(value);
    }
    void addI16(int value) { addU16(static_cast<unsigned int>(value)); }
    void addZeros(std::size_t count) { _bytes.insert(_bytes.end(), count, 0); }
    void addText(const std::string& text) { _bytes.insert(_bytes.end(), text.begin(), text.end()); }
    void addBytes(const Bytes& bytes) { _bytes.insert(_bytes.end(), bytes.begin(), bytes.end()); }
    void padTo4() { addZeros((4 - _bytes.size() % 4) % 4); }

    void setU8(std::size_t position, unsigned int value) {
        _bytes[position] = static_cast<unsigned char>(value & 0xFFU);
    }
    void setU32(std::size_t position, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            _bytes[position + i] = static_cast<unsigned char>(value >> (24 - 8 * i) & 0xFFU);
        }
    }

    std::size_t size() const { return _bytes.size(); }
    const Bytes& getBytes() const { return _bytes; }

private:
    Bytes _bytes;
};

} // namespace Vell::Testing
