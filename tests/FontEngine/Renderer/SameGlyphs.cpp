#include <FontEngine/Renderer/SameGlyphs.h>

#include <FontEngine/FE_FontDescriptions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <tuple>

namespace Vell::FontEngine {

namespace {

auto listFigures(const CacheFigures& figures) {
    return std::vector<std::uint64_t>{figures.entries, figures.bytes,      figures.evictions, figures.hits,
                                      figures.misses,  figures.maxEntries, figures.maxBytes};
}

void expectEqual(const CacheFigures& laid, const CacheFigures& asked, const char* cache) {
    EXPECT_EQ(listFigures(laid), listFigures(asked))
        << cache << ": entries, bytes, evictions, hits, misses, limits";
}

bool areSame(float lhs, float rhs) {
    return std::isnan(lhs) ? std::isnan(rhs) : lhs == rhs && std::signbit(lhs) == std::signbit(rhs);
}

bool areSameFields(const BitmapGlyphInfo& lhs, const BitmapGlyphInfo& rhs) {
    return lhs.getUnicode() == rhs.getUnicode() && lhs.getGlyphIndex() == rhs.getGlyphIndex() &&
           lhs.getTransform() == rhs.getTransform() && lhs.getRenderMode() == rhs.getRenderMode() &&
           lhs.isLast() == rhs.isLast() && lhs.getOffsetInsidePixel() == rhs.getOffsetInsidePixel() &&
           areSame(lhs.getFontSize(), rhs.getFontSize()) && areSame(lhs.getScale().x, rhs.getScale().x) &&
           areSame(lhs.getScale().y, rhs.getScale().y) &&
           areSame(lhs.getDevicePixelRatio(), rhs.getDevicePixelRatio());
}

/// Returns whether both are equal by value, and both or neither have a client's class.
bool areAlike(const Gfx::FontFaceInfo& laid, const Gfx::FontFaceInfo& asked) {
    return laid == asked &&
           Internal::FontFaceInfo::isExactly(laid) == Internal::FontFaceInfo::isExactly(asked);
}

std::string describePixels(const FT_BitmapGlyphRec_& glyph) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    const auto bytes = static_cast<std::size_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    const auto* const first = reinterpret_cast<const char*>(bitmap.buffer);
    return std::to_string(glyph.left) + ' ' + std::to_string(glyph.top) + ' ' + std::to_string(bitmap.width) +
           ' ' + std::to_string(bitmap.rows) + ' ' + std::to_string(bitmap.pitch) + ' ' +
           std::to_string(bitmap.pixel_mode) + ' ' + (bytes == 0 ? "" : std::string(first, bytes));
}

} // namespace

void expectSameFigures(const FactoryCacheFigures& laid, const FactoryCacheFigures& asked) {
    expectEqual(laid.fontFiles, asked.fontFiles, "font files");
    expectEqual(laid.faces, asked.faces, "faces");
    expectEqual(laid.bitmaps, asked.bitmaps, "bitmaps");
    expectEqual(laid.coloredImages, asked.coloredImages, "images");
    expectEqual(laid.outlines, asked.outlines, "outlines");
}

void expectSameGlyphs(const BitmapGlyphRun& laid, const RequestedGlyphs& asked) {
    ASSERT_EQ(laid.getGlyphs().size(), asked.size());
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const BitmapGlyph& glyph = laid.getGlyphs()[i];
        EXPECT_TRUE(areSameFields(glyph.getInfo(), asked[i].key)) << i;
        EXPECT_TRUE(areAlike(*glyph.getInfo().getFaceInfo(), *asked[i].key.getFaceInfo())) << i;
        EXPECT_TRUE(areSame(glyph.getPos().x, asked[i].pen)) << i;
        EXPECT_EQ(glyph.getPos().y, 0.0F);
        EXPECT_EQ(describePixels(*glyph.getData()), describePixels(*asked[i].bitmap)) << i;
    }
}

void expectSameBox(const FT_BBox& box, const RequestedGlyphs& asked) {
    FT_BBox expected = {32000, 32000, -32000, -32000};
    for (const RequestedGlyph& glyph : asked) {
        const FT_BitmapGlyphRec_& bitmap = *glyph.bitmap;
        expected.xMin = std::min<FT_Pos>(expected.xMin, bitmap.left);
        expected.yMax = std::max<FT_Pos>(expected.yMax, bitmap.top);
        expected.xMax = std::max(expected.xMax, bitmap.left + static_cast<FT_Pos>(bitmap.bitmap.width));
        expected.yMin = std::min(expected.yMin, bitmap.top - static_cast<FT_Pos>(bitmap.bitmap.rows));
    }
    if (asked.empty()) {
        expected = {0, 0, 0, 0};
    }
    EXPECT_EQ(std::tie(box.xMin, box.yMin, box.xMax, box.yMax),
              std::tie(expected.xMin, expected.yMin, expected.xMax, expected.yMax));
}

void expectSameOutlines(const std::vector<OutlineGlyph>& laid, const std::vector<OutlineGlyph>& asked) {
    ASSERT_EQ(laid.size(), asked.size());
    const auto list = [](const OutlineGlyph& glyph) {
        return dynamic_cast<const Testing::RecordedPath&>(*glyph.getPath()).getSegments();
    };
    for (std::size_t i = 0; i < asked.size(); ++i) {
        EXPECT_EQ(list(laid[i]), list(asked[i])) << i;
        EXPECT_TRUE(areSame(laid[i].getAdvance(), asked[i].getAdvance())) << i;
    }
}

void expectSameDrawing(const Testing::RecordingGlyphPainter& laid,
                       const Testing::RecordingGlyphPainter& asked) {
    ASSERT_EQ(laid.getDrawnGlyphs().size(), asked.getDrawnGlyphs().size());
    for (std::size_t i = 0; i < laid.getDrawnGlyphs().size(); ++i) {
        const Testing::DrawnGlyph& lhs = laid.getDrawnGlyphs()[i];
        const Testing::DrawnGlyph& rhs = asked.getDrawnGlyphs()[i];
        EXPECT_EQ(std::tie(lhs.rows, lhs.width, lhs.pitch, lhs.pixelMode, lhs.pixels),
                  std::tie(rhs.rows, rhs.width, rhs.pitch, rhs.pixelMode, rhs.pixels))
            << i;
    }
}

} // namespace Vell::FontEngine
