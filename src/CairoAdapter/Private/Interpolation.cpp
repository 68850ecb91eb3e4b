#include <CairoAdapter/Private/Interpolation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace Vell::CairoAdapter::Internal {

namespace {

constexpr int weightBits = 7;
constexpr unsigned int allWeight = 1U << weightBits;

/// Sums of two weighted coverages each.
using Sums = std::array<std::uint16_t, maxInterpolatedWidth>;

/// Adds up the neighbours in a row; beside the bitmap, above it and below it there is nothing.
class ColumnMixer {
public:
    ColumnMixer(const BitmapView& coverage, const PixelBox& part, unsigned int ofRight)
        : _coverage(coverage)
        , _firstColumn(part.left - 1)
        , _width(part.right - part.left)
        , _ofRight(ofRight) {}

    void mix(int row, Sums& sums) {
        if (row < 0 || row >= _coverage.rows) {
            std::fill_n(sums.data(), _width, std::uint16_t{0});
            return;
        }
        copy(_coverage.top + row * _coverage.pitch);
        const unsigned char* const columns = _columns.data();
        const unsigned int ofLeft = allWeight - _ofRight;
        for (std::ptrdiff_t x = 0; x < _width; ++x) {
            sums.data()[x] = static_cast<std::uint16_t>(columns[x] * ofLeft + columns[x + 1] * _ofRight);
        }
    }

private:
    void copy(const unsigned char* row) {
        const int begin = std::max(_firstColumn, 0);
        const int end = std::min(_firstColumn + _width + 1, _coverage.width);
        if (begin < end) {
            std::memcpy(_columns.data() + (begin - _firstColumn), row + begin,
                        static_cast<std::size_t>(end - begin));
        }
    }

    BitmapView _coverage;
    int _firstColumn;
    int _width;
    unsigned int _ofRight;
    std::array<unsigned char, maxInterpolatedWidth + 1> _columns{};
};

void mixRows(const Sums& upper, const Sums& lower, unsigned int ofLower, std::ptrdiff_t width,
             unsigned char* to) {
    const unsigned int ofUpper = allWeight - ofLower;
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        to[x] = static_cast<unsigned char>((upper.data()[x] * ofUpper + lower.data()[x] * ofLower) >>
                                           (2 * weightBits));
    }
}

/// pixman's coordinates are numbers of 16.16 bits; they lead from the image to the bitmap.
struct Coordinate {
    explicit Coordinate(double corner) {
        constexpr int fractionBits = 16;
        const auto toBitmap = static_cast<int>(std::lrint(-corner * (1 << fractionBits)));
        first = -1 - (toBitmap >> fractionBits);
        ofSecond = static_cast<unsigned int>(toBitmap >> (fractionBits - weightBits)) % allWeight;
    }

    int first;
    unsigned int ofSecond;
};

} // namespace

Displacement displace(double x, double y) {
    const Coordinate column(x);
    const Coordinate row(y);
    return {column.first, row.first, column.ofSecond, row.ofSecond};
}

void interpolate(const BitmapView& coverage, const Displacement& displacement, const PixelBox& part,
                 unsigned char* to) {
    ColumnMixer mixer(coverage, part, displacement.ofRight);
    Sums buffers[2];
    Sums* upper = &buffers[0];
    Sums* lower = &buffers[1];
    mixer.mix(part.top - 1, *upper);
    const std::ptrdiff_t width = part.right - part.left;
    for (int row = part.top; row < part.bottom; ++row, to += width) {
        mixer.mix(row, *lower);
        mixRows(*upper, *lower, displacement.ofBottom, width, to);
        std::swap(upper, lower);
    }
}

} // namespace Vell::CairoAdapter::Internal
