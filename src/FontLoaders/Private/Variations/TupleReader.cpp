#include <FontLoaders/Private/Variations/TupleReader.h>

#include <FontLoaders/Public/Exceptions.h>

#include <cstdlib>

namespace Vell::FontLoaders::Internal {

namespace {

[[noreturn]] void throwDamaged() {
    throw FontLoaderException("the variable font is damaged: a tuple cannot be read");
}

int toSigned(unsigned int value, unsigned int bits) {
    const unsigned int sign = 1U << (bits - 1);
    return static_cast<int>(value ^ sign) - static_cast<int>(sign);
}

float divide(int part, int whole) {
    return static_cast<float>(part) / static_cast<float>(whole);
}

float measureBetween(int start, int peak, int end, int at) {
    const bool isValid = start <= peak && peak <= end && (start >= 0 || end <= 0);
    if (!isValid) {
        return 1.0F;
    }
    if (at < start || at > end) {
        return 0.0F;
    }
    return at < peak ? divide(at - start, peak - start) : divide(end - at, end - peak);
}

float measureFromZero(int peak, int at) {
    const bool isBeyond = (at < 0) != (peak < 0) || std::abs(at) > std::abs(peak);
    return at == 0 || isBeyond ? 0.0F : divide(at, peak);
}

} // namespace

int TupleCursor::takeI8() {
    return toSigned(takeU8(), 8);
}

int TupleCursor::takeI16() {
    return toSigned(takeU16(), 16);
}

Coordinates TupleCursor::takeCoordinates(std::size_t axisCount) {
    Coordinates coordinates(axisCount);
    for (int& coordinate : coordinates) {
        coordinate = takeI16();
    }
    return coordinates;
}

BigEndianBytes TupleCursor::takeBytes(std::uint64_t count) {
    const std::optional<BigEndianBytes> taken = _bytes.slice(_at, count);
    if (!taken) {
        throwDamaged();
    }
    _at += count;
    return *taken;
}

unsigned int TupleCursor::pass(const std::optional<unsigned int>& number, std::uint64_t size) {
    if (!number) {
        throwDamaged();
    }
    _at += size;
    return *number;
}

/// Runs of differences between neighbours.
TupleSelection takeSelection(TupleCursor& cursor) {
    constexpr unsigned int isWide = 0x80;
    constexpr unsigned int rest = 0x7F;
    const unsigned int first = cursor.takeU8();
    const std::size_t count = (first & isWide) != 0 ? (first & rest) << 8U | cursor.takeU8() : first;
    if (count == 0) {
        return std::nullopt;
    }
    std::vector<unsigned int> numbers;
    unsigned int number = 0;
    while (numbers.size() < count) {
        const unsigned int control = cursor.takeU8();
        for (unsigned int i = 0; i <= (control & rest) && numbers.size() < count; ++i) {
            number += (control & isWide) != 0 ? cursor.takeU16() : cursor.takeU8();
            numbers.push_back(number);
        }
    }
    return numbers;
}

int TupleDeltas::take() {
    constexpr unsigned int areZero = 0x80;
    constexpr unsigned int areWords = 0x40;
    constexpr unsigned int rest = 0x3F;
    if (_left == 0) {
        _control = _cursor.takeU8();
        _left = (_control & rest) + 1;
    }
    --_left;
    if ((_control & areZero) != 0) {
        return 0;
    }
    return (_control & areWords) != 0 ? _cursor.takeI16() : _cursor.takeI8();
}

float TupleRegion::measure(const Coordinates& place) const {
    float share = 1.0F;
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (peak[i] != 0 && place[i] != peak[i]) {
            share *= start.empty() ? measureFromZero(peak[i], place[i])
                                   : measureBetween(start[i], peak[i], end[i], place[i]);
        }
    }
    return share;
}

TupleHeader takeHeader(TupleCursor& cursor, std::size_t axisCount) {
    constexpr unsigned int hasPeak = 0x8000;
    constexpr unsigned int hasEnds = 0x4000;
    constexpr unsigned int hasSelection = 0x2000;
    TupleHeader header;
    header.size = cursor.takeU16();
    const unsigned int flags = cursor.takeU16();
    if ((flags & hasPeak) == 0) {
        throwDamaged();
    }
    header.region.peak = cursor.takeCoordinates(axisCount);
    if ((flags & hasEnds) != 0) {
        header.region.start = cursor.takeCoordinates(axisCount);
        header.region.end = cursor.takeCoordinates(axisCount);
    }
    header.hasOwnSelection = (flags & hasSelection) != 0;
    return header;
}

} // namespace Vell::FontLoaders::Internal
