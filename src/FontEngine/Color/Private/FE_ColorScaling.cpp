#include <FontEngine/Color/Private/FE_ColorScaling.h>

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Utils/Public/NumCast.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::FontEngine::Internal {

namespace {

constexpr std::size_t channels = 4;

/// Pixels along one axis, from the glyph's origin in the direction of the image's rows or columns.
struct Range {
    int begin;
    unsigned int count;
};

std::optional<Range> scaleRange(const Range& source, float scale) {
    constexpr double negligible = 1.0 / 1024; // of a pixel: a quarter of a step of a channel
    const double margin = scale > 1.0F ? 0.5 : 0.0;
    const double begin = std::floor((source.begin - margin) * scale + negligible);
    const double sourceEnd = static_cast<double>(source.begin) + source.count;
    const double end = std::max(std::ceil((sourceEnd + margin) * scale - negligible), begin + 1.0);
    const auto wholeBegin = tryTruncate<int>(begin);
    const auto count = tryTruncate<unsigned int>(end - begin);
    if (!wholeBegin || !count || !tryTruncate<int>(end)) {
        return std::nullopt;
    }
    return Range{*wholeBegin, *count};
}

/// The integral from minus infinity to `x` of a square that is 1 from -1/2 to 1/2.
double integrateSquare(double x) {
    return std::clamp(x + 0.5, 0.0, 1.0);
}

/// The integral from minus infinity to `x` of a triangle that falls from 1 at 0 to 0 at -1 and 1.
double integrateTriangle(double x) {
    const double rise = std::clamp(x + 1.0, 0.0, 1.0);
    const double fall = 1.0 - std::clamp(x, 0.0, 1.0);
    return 0.5 * rise * rise + 0.5 - 0.5 * fall * fall;
}

/// The weights with which pixels of the source enter each pixel of the result, along one axis.
class Weights {
public:
    struct Span {
        std::size_t first; ///< pixel of the source
        std::size_t count;
        const float* weights;
    };

    Weights(const Range& source, const Range& result, float scale)
        : _isEnlarging(scale > 1.0F) {
        _spans.reserve(result.count);
        const double length = 1.0 / scale; // of a pixel of the result, in pixels of the source
        for (unsigned int i = 0; i != result.count; ++i) {
            const double begin = (static_cast<double>(result.begin) + i) * length - source.begin;
            add(begin, begin + length, source.count);
        }
    }

    Span operator[](std::size_t i) const {
        const Place& place = _spans[i];
        return {place.first, place.count, _weights.data() + place.weight};
    }

private:
    struct Place {
        std::size_t first;
        std::size_t count;
        std::size_t weight;
    };

    void add(double begin, double end, unsigned int sourceCount) {
        const double reach = _isEnlarging ? 0.5 : 0.0; // beyond the pixel itself
        const double count = sourceCount;
        const auto first = static_cast<std::size_t>(std::clamp(std::floor(begin - reach), 0.0, count));
        const auto last = static_cast<std::size_t>(std::clamp(std::ceil(end + reach), 0.0, count));
        _spans.push_back({first, last - std::min(first, last), _weights.size()});
        for (std::size_t i = first; i < last; ++i) {
            const double center = static_cast<double>(i) + 0.5;
            _weights.push_back(
                static_cast<float>((integrate(end - center) - integrate(begin - center)) / (end - begin)));
        }
    }

    double integrate(double x) const { return _isEnlarging ? integrateTriangle(x) : integrateSquare(x); }

    bool _isEnlarging;
    std::vector<Place> _spans;
    std::vector<float> _weights;
};

/// Adds up the rows of a span.
void mixRows(const ColorGlyphImage& image, const Weights::Span& span, std::vector<float>& line) {
    std::fill(line.begin(), line.end(), 0.0F);
    for (std::size_t i = 0; i != span.count; ++i) {
        const unsigned char* const row =
            image.buffer + (span.first + i) * static_cast<std::size_t>(image.pitch);
        const float weight = span.weights[i];
        for (std::size_t k = 0; k != line.size(); ++k) {
            line[k] += weight * static_cast<float>(row[k]);
        }
    }
}

void mixPixels(const std::vector<float>& line, const Weights::Span& span, unsigned char* pixel) {
    std::array<float, channels> sum{};
    const float* source = line.data() + span.first * channels;
    for (std::size_t i = 0; i != span.count; ++i) {
        for (std::size_t channel = 0; channel != channels; ++channel) {
            sum[channel] += span.weights[i] * *source++;
        }
    }
    for (std::size_t channel = 0; channel != channels; ++channel) {
        constexpr float max = 255.0F;
        constexpr float half = 0.5F; // the sum is not negative, so truncation rounds it
        const float raised = std::min(sum[channel], max) + half;
        pixel[channel] = static_cast<unsigned char>(raised);
    }
}

} // namespace

std::shared_ptr<ColorGlyphImage> makeColorImage(const ColorBox& box) {
    if (box.width == 0 || box.rows == 0) {
        return nullptr;
    }
    auto image = std::make_shared<ColorGlyphImage>();
    const std::size_t pitch = box.width * channels;
    image->buffer = new unsigned char[pitch * box.rows];
    image->pixelMode = FT_PIXEL_MODE_BGRA;
    image->pitch = static_cast<int>(pitch);
    image->width = box.width;
    image->rows = box.rows;
    image->left = box.left;
    image->top = box.top;
    return image;
}

std::optional<ColorBox> scaleColorBox(const ColorBox& box, const ColorScale& scale) {
    const auto columns = scaleRange({box.left, box.width}, scale.x);
    const auto rows = scaleRange({-box.top, box.rows}, scale.y);
    if (box.width == 0 || box.rows == 0 || !columns || !rows ||
        std::uint64_t{columns->count} * rows->count > maxColorGlyphPixels) {
        return std::nullopt;
    }
    return ColorBox{columns->begin, -rows->begin, columns->count, rows->count};
}

std::shared_ptr<ColorGlyphImage> scaleColorImage(const ColorGlyphImage& image, const ColorScale& scale) {
    const ColorBox source{image.left, image.top, image.width, image.rows};
    const std::optional<ColorBox> box = scaleColorBox(source, scale);
    if (!box) {
        return nullptr;
    }
    const Weights columns({source.left, source.width}, {box->left, box->width}, scale.x);
    const Weights rows({-source.top, source.rows}, {-box->top, box->rows}, scale.y);
    std::shared_ptr<ColorGlyphImage> result = makeColorImage(*box);
    std::vector<float> line(source.width * channels);
    unsigned char* pixel = result->buffer;
    for (unsigned int y = 0; y != box->rows; ++y) {
        mixRows(image, rows[y], line);
        for (unsigned int x = 0; x != box->width; ++x) {
            mixPixels(line, columns[x], pixel);
            pixel += channels;
        }
    }
    return result;
}

} // namespace Vell::FontEngine::Internal
