// Colours LCD bitmaps.

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <Utils/Public/NumCast.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <mutex>

namespace Vell::FontEngine::Internal {

namespace {

constexpr float textGamma = 1.2F;

unsigned int raise(unsigned int value, float exponent) {
    return static_cast<unsigned int>(
        truncateSaturated<int>(std::pow(static_cast<float>(value) / 255.0F, exponent) * 255.0F));
}

/// Blends a channel of the text colour over white, in gamma-encoded space.
unsigned int blend(unsigned int coverage, unsigned int encodedText, unsigned int encodedWhite) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    const float mixed =
        alpha * static_cast<float>(encodedText) + (1.0F - alpha) * static_cast<float>(encodedWhite);
    return decodeGamma(static_cast<unsigned int>(static_cast<int>(mixed)), textGamma);
}

constexpr std::size_t levels = 256;

/// One value of a colour channel, blended over white at every coverage.
class Channel {
public:
    /// Computes the colours on first use, with the expression for a single pixel. The source has no table of
    /// them, because the last bit of a power differs between machines.
    const unsigned char* getColors(unsigned int channel) {
        if (!_isComputed.load(std::memory_order_acquire)) {
            computeOnce(channel);
        }
        return _colors.data();
    }

private:
    void computeOnce(unsigned int channel) {
        static std::mutex mutex;
        const std::lock_guard<std::mutex> lock(mutex);
        if (_isComputed.load(std::memory_order_relaxed)) {
            return;
        }
        const unsigned int text = encodeGamma(channel, textGamma);
        const unsigned int white = encodeGamma(255, textGamma);
        for (unsigned int coverage = 0; coverage < levels; ++coverage) {
            _colors[coverage] = static_cast<unsigned char>(blend(coverage, text, white));
        }
        _isComputed.store(true, std::memory_order_release);
    }

    std::atomic<bool> _isComputed = false;
    std::array<unsigned char, levels> _colors{}; // by coverage
};

/// Returns the blended values of a channel, indexed by coverage.
const unsigned char* getColors(unsigned char channel) {
    static std::array<Channel, levels> channels;
    return channels[channel].getColors(channel);
}

struct TextColor {
    const unsigned char* r;
    const unsigned char* g;
    const unsigned char* b;
};

/// The indices that are neither among the first two nor among the last two.
struct Inner {
    explicit Inner(unsigned int total)
        : count(total > 2 * edge ? total - 2 * edge : 0) {}

    bool contains(unsigned int index) const { return index - edge < count; } // wraps around below the edge

    static constexpr unsigned int edge = 2;
    unsigned int count;
};

/// Colours a row. `getLightest(x)` returns the greatest sum of channels that is drawn at x. Lighter pixels
/// become transparent.
template <class GetLightest>
void colorRow(const unsigned char* coverage, unsigned int width, const TextColor& text,
              const GetLightest& getLightest, unsigned char* target) {
    const TextColor colors = text; // a local copy, which writes through `target` cannot alias
    for (unsigned int x = 0; x < width; ++x, coverage += 3, target += 4) {
        const std::uint32_t r = colors.r[coverage[0]];
        const std::uint32_t g = colors.g[coverage[1]];
        const std::uint32_t b = colors.b[coverage[2]];
        const std::uint32_t pixel = r + g + b > getLightest(x) ? 0 : 0xFF000000U | r << 16 | g << 8 | b;
        std::memcpy(target, &pixel, sizeof(pixel));
    }
}

void colorRow(const unsigned char* coverage, unsigned int row, const Inner& rows, unsigned int width,
              const TextColor& text, unsigned char* target) {
    // Only the filter's fringes reach the corners, so darker pixels become transparent there, too. A sum that
    // equals the limit is drawn elsewhere, but not in the corners.
    constexpr unsigned int lightestInCorner = 690 - 1;
    constexpr unsigned int lightest = 749;
    if (rows.contains(row)) {
        colorRow(
            coverage, width, text, [](unsigned int) { return lightest; }, target);
        return;
    }
    const auto getLightest = [columns = Inner(width)](unsigned int x) {
        return columns.contains(x) ? lightest : lightestInCorner;
    };
    colorRow(coverage, width, text, getLightest, target);
}

std::shared_ptr<BitmapGlyphImageWithDeleter> makeImage(const FT_Bitmap& bitmap) {
    auto image = std::make_shared<BitmapGlyphImageWithDeleter>();
    image->rows = bitmap.rows;
    image->width = bitmap.width / 3;
    image->pitch = static_cast<int>(image->width * 4);
    image->pixelMode = bitmap.pixel_mode;
    image->buffer = new unsigned char[static_cast<std::size_t>(image->rows) * image->width * 4];
    return image;
}

} // namespace

unsigned int encodeGamma(unsigned int value, float gamma) {
    return raise(value, gamma);
}

unsigned int decodeGamma(unsigned int value, float gamma) {
    return raise(value, 1.0F / gamma);
}

std::shared_ptr<BitmapGlyphImageWithDeleter>
getColoredGlyphImage(const FT_BitmapGlyphRec_& glyph, const cinder::ColorAT<unsigned char>& color) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    if (bitmap.pixel_mode != FT_PIXEL_MODE_LCD) {
        return nullptr;
    }
    auto image = makeImage(bitmap);
    const TextColor text{getColors(color.r), getColors(color.g), getColors(color.b)};
    const Inner rows(image->rows);
    for (unsigned int row = 0; row < image->rows; ++row) {
        colorRow(bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch, row, rows, image->width,
                 text, image->buffer + static_cast<std::ptrdiff_t>(row) * image->pitch);
    }
    return image;
}

} // namespace Vell::FontEngine::Internal
