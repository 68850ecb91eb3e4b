#include <FontEngine/Faults/Services.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <cstdlib>
#include <utility>

namespace Vell::FontEngine {

namespace {

using Testing::makeExtFontInfo;
using Testing::makeFontInfo;
using Testing::RecordingGlyphPainter;
using Testing::RecordingPainter;

constexpr cinder::ColorAT<unsigned char> color(10, 20, 30, 255);

std::string describeBytes(const unsigned char* bytes, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += ' ' + std::to_string(bytes[i]);
    }
    return text;
}

/// Makes a font with exactly this face, whatever the factory would look up.
Font makeFont(const FacePtr& face, float size) {
    return face->getFontFactory().getFont(
        makeFontInfo(Testing::makeFaceInfo("Test Sans", isEmboldened(face->getTransform()),
                                           isSlanted(face->getTransform())),
                     size));
}

std::string requestBitmapFromFactory(const Engine& engine, const FacePtr& face, const char* text,
                                     float size) {
    return describe(
        engine.factory->getBitmapGlyph(makeKey(face, text, size).makeBitmap(), face, false).get());
}

std::string requestBitmapFromFace(const Engine&, const FacePtr& face, const char* text, float size) {
    return describe(face->getBitmapGlyph(makeKey(face, text, size).makeBitmap(), false).get());
}

std::string layOutRaster(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    RecordingGlyphPainter glyphPainter;
    const Font font = makeFont(face, size);
    const BitmapGlyphRun run =
        RasterTextPainter(painter, glyphPainter, false)
            .createGlyphRun(text, makeExtFontInfo(font.getFontInfo()), font, 1.0F, {1, 1});
    return run.getGlyphs().empty() ? "null" : describe(run.getGlyphs().front().getData().get());
}

std::string placeRaster(const Engine&, const FacePtr& face, const char* text, float size) {
    const KeyFields key = makeKey(face, text, size);
    const PlacedGlyph glyph{static_cast<unsigned short>(key.glyph), key.isLast, key.unicode, {0, 0}};
    PlacedGlyphRun placed(key.ratio, key.scale, false, 1);
    placed.append(key.face, face, size, &glyph, 1);
    const BitmapGlyphRun run = std::move(placed).finish();
    return run.getGlyphs().empty() ? "null" : describe(run.getGlyphs().front().getData().get());
}

std::string drawRaster(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    RecordingGlyphPainter glyphPainter;
    const Font font = makeFont(face, size);
    RasterTextPainter(painter, glyphPainter, false)
        .drawText(text, makeExtFontInfo(font.getFontInfo()), font, color, 1.0F);
    std::string drawn;
    for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
        drawn += "drawn" + describeBytes(glyph.pixels.data(), glyph.pixels.size());
    }
    return drawn.empty() ? "null" : drawn;
}

std::string requestOutlineFromFactory(const Engine& engine, const FacePtr& face, const char* text,
                                      float size) {
    RecordingPainter painter;
    return describe(
        engine.factory->getOutlineGlyphPath(makeKey(face, text, size).makeOutline(), face, painter).get());
}

std::string requestOutlineFromFace(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    return describe(face->getOutlineGlyphPath(makeKey(face, text, size).makeOutline(), painter).get());
}

std::string layOutVector(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    const Font font = makeFont(face, size);
    const OutlineGlyphRun run =
        VectorTextPainter(painter).createGlyphRun(text, makeExtFontInfo(font.getFontInfo()), font);
    return run.getGlyphs().empty() ? "null" : describe(run.getGlyphs().front().getPath().get());
}

std::string fetchOutline(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    const KeyFields key = makeKey(face, text, size);
    const auto glyph = static_cast<unsigned short>(key.glyph);
    return describe(fetchOutlines(key.face, face, size, &glyph, 1, painter).at(0).get());
}

std::string drawVector(const Engine&, const FacePtr& face, const char* text, float size) {
    RecordingPainter painter;
    const Font font = makeFont(face, size);
    VectorTextPainter(painter).drawText(text, makeExtFontInfo(font.getFontInfo()), font);
    std::string drawn;
    for (const Testing::DrawnPath& path : painter.getDrawnPaths()) {
        drawn += describe(path.path);
    }
    return drawn.empty() ? "null" : drawn;
}

} // namespace

const std::vector<Service>& getBitmapServices() {
    static const std::vector<Service> services = {{"FontFactory::getBitmapGlyph", requestBitmapFromFactory},
                                                  {"FontFace::getBitmapGlyph", requestBitmapFromFace},
                                                  {"RasterTextPainter::createGlyphRun", layOutRaster},
                                                  {"PlacedGlyphRun::append", placeRaster},
                                                  {"RasterTextPainter::drawText", drawRaster}};
    return services;
}

const std::vector<Service>& getOutlineServices() {
    static const std::vector<Service> services = {
        {"FontFactory::getOutlineGlyphPath", requestOutlineFromFactory},
        {"FontFace::getOutlineGlyphPath", requestOutlineFromFace},
        {"VectorTextPainter::createGlyphRun", layOutVector},
        {"fetchOutlines", fetchOutline},
        {"VectorTextPainter::drawText", drawVector}};
    return services;
}

std::string describe(const FT_BitmapGlyphRec_* glyph) {
    if (glyph == nullptr) {
        return "null";
    }
    const FT_Bitmap& bitmap = glyph->bitmap;
    const auto pitch = static_cast<std::size_t>(std::abs(bitmap.pitch));
    return "bitmap " + std::to_string(bitmap.width) + " wide at " + std::to_string(glyph->left) + ' ' +
           std::to_string(glyph->top) + describeBytes(bitmap.buffer, pitch * bitmap.rows);
}

std::string describe(const BitmapGlyphImage* image) {
    if (image == nullptr) {
        return "null";
    }
    return "image " + std::to_string(image->width) + " wide" +
           describeBytes(image->buffer, static_cast<std::size_t>(image->pitch) * image->rows);
}

std::string describe(const Gfx::Path* path) {
    if (path == nullptr) {
        return "null";
    }
    std::string text = "path";
    for (const std::string& segment : dynamic_cast<const Testing::RecordedPath&>(*path).getSegments()) {
        text += ' ' + segment;
    }
    return text;
}

KeyFields makeKey(const FacePtr& face, const char* text, float size) {
    const bool isUnderscore = *text == '_';
    const Gfx::CharMap& charMap = face->getBasicMetrics().getCharMap();
    const auto code = static_cast<unsigned char>(*text);
    return KeyFields()
        .with(&KeyFields::face, Testing::makeFaceInfo("Test Sans", isEmboldened(face->getTransform()),
                                                      isSlanted(face->getTransform())))
        .with(&KeyFields::glyph, charMap[code].glyphIndex)
        .with(&KeyFields::unicode, code)
        .with(&KeyFields::size, size)
        .with(&KeyFields::mode, isUnderscore ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL)
        .with(&KeyFields::transform, face->getTransform());
}

} // namespace Vell::FontEngine
