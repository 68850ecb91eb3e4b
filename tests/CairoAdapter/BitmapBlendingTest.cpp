// Blends whole bitmaps within a clip.

#include "RunnableOperations.h"

#include <CairoAdapter/Private/Blending/BitmapBlending.h>

#include <gmock/gmock.h>

#include <random>

namespace Vell::CairoAdapter::Testing {

namespace {

using Internal::BitmapView;
using Internal::PixelBox;
using Internal::PixelTarget;

constexpr std::uint32_t tint = 0xC0204060;

/// A picture with a frame around it, whose pixels must not change.
struct Picture {
    static constexpr int side = 24;
    static constexpr int frame = 8;
    static constexpr int stride = side + 2 * frame;

    PixelTarget makeTarget(const PixelBox& clip) {
        auto* const first = reinterpret_cast<unsigned char*>(words.data() + frame * stride + frame);
        return {first, std::ptrdiff_t{stride} * Internal::bytesPerColor, clip};
    }
    std::uint32_t& at(int x, int y) {
        return words[static_cast<std::size_t>((frame + y) * stride + frame + x)];
    }

    std::vector<std::uint32_t> words = std::vector<std::uint32_t>(std::size_t{stride} * stride, 0xFFA0B0C0);
};

struct Glyph {
    Glyph(std::mt19937& random, int width, int rows, int bytesPerPixel)
        : bytes(static_cast<std::size_t>(width * rows * bytesPerPixel))
        , view{bytes.data(), std::ptrdiff_t{width} * bytesPerPixel, width, rows, bytesPerPixel} {
        std::generate(bytes.begin(), bytes.end(),
                      [&random] { return static_cast<unsigned char>(random() % 4 * 85); });
    }

    std::vector<unsigned char> bytes;
    BitmapView view;
};

constexpr PixelBox everything{-Picture::frame, -Picture::frame, Picture::side + Picture::frame,
                              Picture::side + Picture::frame};

/// Draws without a clip, then restores the pixels outside of it.
template <typename Draw>
Picture drawAndClip(const PixelBox& clip, const Draw& draw) {
    Picture picture;
    Picture untouched;
    draw(Internal::pixelOperations[0], picture.makeTarget(everything));
    for (int y = everything.top; y < everything.bottom; ++y) {
        for (int x = everything.left; x < everything.right; ++x) {
            if (x < clip.left || x >= clip.right || y < clip.top || y >= clip.bottom) {
                picture.at(x, y) = untouched.at(x, y);
            }
        }
    }
    return picture;
}

template <typename Draw>
void expectAllToClip(const PixelBox& clip, const Draw& draw) {
    const Picture expected = drawAndClip(clip, draw);
    for (const Internal::PixelOperations& operations : listRunnableOperations()) {
        Picture picture;
        draw(operations, picture.makeTarget(clip));
        ASSERT_EQ(picture.words, expected.words) << operations.name << ": " << clip.left << ", " << clip.top
                                                 << " to " << clip.right << ", " << clip.bottom;
    }
}

/// Boxes that cut off a part on each side, or everything.
std::vector<PixelBox> listClips() {
    std::vector<PixelBox> clips{{0, 0, Picture::side, Picture::side}, {5, 5, 5, 9}, {3, 8, 9, 8}};
    for (int end = 1; end <= 20; ++end) {
        clips.push_back({0, 0, end, Picture::side});
        clips.push_back({end, 0, Picture::side, Picture::side});
        clips.push_back({0, end, Picture::side, Picture::side});
        clips.push_back({0, 0, Picture::side, end});
        clips.push_back({end, end, end + 3, end + 2});
    }
    return clips;
}

TEST(BitmapBlending, ChangesOnlyPixelsWithinTheClip) {
    std::mt19937 random(21);
    for (const int bytesPerPixel : {1, 4}) {
        for (const int width : {0, 1, 4, 7, 8, 13, 18}) {
            const Glyph glyph(random, width, 9, bytesPerPixel);
            for (const PixelBox& clip : listClips()) {
                ASSERT_NO_FATAL_FAILURE(expectAllToClip(
                    clip, [&](const Internal::PixelOperations& operations, const PixelTarget& target) {
                        blendBitmap(operations, target, glyph.view, 2, 3, tint);
                    }));
            }
        }
    }
}

TEST(BitmapBlending, ClipsDisplacedBitmapsTheSame) {
    std::mt19937 random(22);
    for (const int bytesPerPixel : {1, 4}) {
        for (const int width : {1, 4, 7, 8, 13, 18}) {
            const Glyph glyph(random, width, 9, bytesPerPixel);
            for (const PixelBox& clip : listClips()) {
                ASSERT_NO_FATAL_FAILURE(expectAllToClip(
                    clip, [&](const Internal::PixelOperations& operations, const PixelTarget& target) {
                        blendDisplacedBitmap(operations, target, glyph.view, {2, 3, 41, 0}, tint);
                        blendDisplacedBitmap(operations, target, glyph.view, {1, 4, 99, 17}, tint);
                    }));
            }
        }
    }
}

TEST(BitmapBlending, LeavesPixelsUnderEmptyRowsUnchanged) {
    const std::vector<unsigned char> nothing(18 * 9);
    for (const Internal::PixelOperations& operations : listRunnableOperations()) {
        for (const int width : {1, 4, 7, 8, 13, 18}) {
            Picture picture;
            blendBitmap(operations, picture.makeTarget(everything), {nothing.data(), width, width, 9, 1}, 2,
                        3, tint);
            EXPECT_EQ(picture.words, Picture().words) << operations.name << ", " << width;
        }
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
