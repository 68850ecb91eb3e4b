#include <FontEngine/Faults/Operations.h>

#include <FontEngine/Color/ColorEngine.h>

#include <FontEngine/Color/FE_DrawColorGlyphs.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <utility>

namespace Vell::FontEngine {

namespace {

using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

constexpr cinder::ColorAT<unsigned char> color(10, 20, 30, 255);
constexpr const char* text = "A_x_A";

std::string describe(const FacePtr& face) {
    const Gfx::BasicMetrics& metrics = face->getBasicMetrics();
    std::string line = std::string(face->getHandle()->family_name) + ", styling " +
                       std::to_string(static_cast<int>(face->getTransform())) + ", ascender " +
                       std::to_string(metrics.getAscender()) + ", glyphs";
    for (const char character : std::string("A_x ")) {
        const auto glyph = metrics.getCharMap()[static_cast<unsigned char>(character)];
        line += ' ' + std::to_string(glyph.glyphIndex) + ' ' + std::to_string(glyph.advance);
    }
    return line;
}

void openFace(World& world) {
    world.getFace();
    world.getFace("Test Sans", true, true);
}

std::string createFactory(World& world) {
    const FactoryPtr factory = FontFactory::create(world.loader, "another default family");
    return factory->substituteDefaultFaceName(makeFaceInfo())->getName();
}

std::string getBytes(World& world) {
    return std::to_string(world.factory->getFaceDataBytes(makeFaceInfo())->size());
}

std::string getReplacedStyle(World& world) {
    const auto data = world.factory->getFaceData(makeFaceInfo("Test Sans", true, true));
    return std::to_string(data->bytes->size()) + " styling " +
           std::to_string(static_cast<int>(data->transform));
}

std::string openRegular(World& world) {
    return describe(world.getFace());
}

std::string openSynthetic(World& world) {
    return describe(world.getFace("Test Sans", true, true));
}

std::string openDefault(World& world) {
    return describe(world.getFace("Unknown"));
}

std::string makeFont(World& world) {
    return describe(world.getFont().getFace());
}

std::string measure(World& world) {
    const auto metrics = world.factory->getFontMetrics(makeFontInfo());
    return std::to_string(metrics->getTextWidth(text, makeExtFontInfo()));
}

std::string findFallback(World& world) {
    return describe(world.factory->getDefaultFontForSymbol('A', makeFontInfo("Unknown"))->getFace());
}

std::string renderBitmap(World& world) {
    const FacePtr face = world.getFace("Test Sans", true, true);
    return FontEngine::describe(face->getBitmapGlyph(makeKey(face, "A", 10.0F).makeBitmap(), true).get());
}

std::string renderUnderscore(World& world) {
    const FacePtr face = world.getFace();
    const KeyFields key = makeKey(face, "_", 10.0F).with(&KeyFields::isLast, false);
    return FontEngine::describe(face->getBitmapGlyph(key.makeBitmap(), false).get());
}

std::string paintImage(World& world) {
    const FacePtr face = world.getFace();
    const BitmapGlyphInfo key = makeKey(face, "_", 10.0F).makeBitmap();
    const BitmapGlyph glyph(face->getBitmapGlyph(key, false), {0, 0}, key);
    return FontEngine::describe(world.factory->getGlyphBitmapWithSubpixels(glyph, color).get());
}

std::string buildOutline(World& world) {
    const FacePtr face = world.getFace("Test Sans", true, true);
    const GlyphInfo key = makeKey(face, "A", 10.0F).makeOutline();
    return FontEngine::describe(face->getOutlineGlyphPath(key, world.painter).get());
}

std::string describe(const BitmapGlyphRun& run) {
    std::string line;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        line += FontEngine::describe(glyph.getData().get()) + '\n';
    }
    return line;
}

std::string layOutRaster(World& world) {
    return describe(RasterTextPainter(world.painter, world.glyphPainter, false)
                        .createGlyphRun(text, makeExtFontInfo(), world.getFont(), 1.0F, {1, 1}));
}

std::string placeRaster(World& world) {
    const std::vector<PlacedGlyph> glyphs = {{TestGlyph::a, true, 'A', {0, 0}},
                                             {TestGlyph::underscore, true, '_', {6.25F, 1}}};
    PlacedGlyphRun placed(1.0F, {1, 1}, false, 1); // the second glyph makes it grow
    for (const PlacedGlyph& glyph : glyphs) {
        placed.append(makeFaceInfo(), world.getFace(), 10.0F, &glyph, 1);
    }
    return describe(std::move(placed).finish());
}

std::string fetchPaths(World& world) {
    const unsigned short glyphs[] = {TestGlyph::a, TestGlyph::underscore, TestGlyph::x};
    std::string line;
    for (const auto& path : fetchOutlines(makeFaceInfo(), world.getFace(), 10.0F, glyphs, 3, world.painter)) {
        line += FontEngine::describe(path.get()) + '\n';
    }
    return line;
}

std::string layOutVector(World& world) {
    const OutlineGlyphRun run =
        VectorTextPainter(world.painter).createGlyphRun(text, makeExtFontInfo(), world.getFont());
    std::string line;
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        line += FontEngine::describe(glyph.getPath().get()) + '\n';
    }
    return line;
}

std::string drawRaster(World& world) {
    world.glyphPainter.clear();
    RasterTextPainter(world.painter, world.glyphPainter, false)
        .drawText(text, makeExtFontInfo(), world.getFont(), color, 1.0F);
    std::string line;
    for (const Testing::DrawnGlyph& glyph : world.glyphPainter.getDrawnGlyphs()) {
        line += std::to_string(glyph.position.x) + ' ' + std::to_string(glyph.position.y) + ' ' +
                std::string(glyph.pixels.begin(), glyph.pixels.end()) + '\n';
    }
    return line;
}

std::string drawVector(World& world) {
    world.painter.clearOperations();
    VectorTextPainter(world.painter).drawText(text, makeExtFontInfo(), world.getFont());
    std::string line;
    for (const Testing::DrawnPath& path : world.painter.getDrawnPaths()) {
        line += FontEngine::describe(path.path) + '\n';
    }
    return line;
}

std::string getColorImage(World& world, const char* family, unsigned int glyph) {
    const Testing::FaceInfoPtr faceInfo = makeFaceInfo(family);
    const ColorGlyphInfo key(faceInfo, glyph, 15.0F, 1.0F, 1.0F, nullptr, color);
    return FontEngine::describe(
        world.factory->getColorGlyphs().getImage(key, world.factory->shareFace(faceInfo)).get());
}

std::string scalePicture(World& world) {
    return getColorImage(world, "Test Pictures", TestGlyph::a);
}

std::string drawLayers(World& world) {
    return getColorImage(world, "Test Layers", TestGlyph::a);
}

std::string lookForColors(World& world) {
    const auto& colors = world.factory->getColorGlyphs();
    return colors.hasColors(*world.getFace("Test Layers")) ? "colours" : "no colours";
}

/// Keeps the colour images as text, in place of drawing them.
struct ImagePrinter : Testing::RecordingGlyphPainter, ColorGlyphPainter {
    void drawColorGlyph(const ColorImagePtr& image, const cinder::Vec2<float>& position) override {
        text += std::to_string(position.x) + ' ' + std::to_string(position.y) + ' ' +
                FontEngine::describe(image.get()) + '\n';
    }

    std::string text;
};

std::string drawPictures(World& world) {
    const Testing::FaceInfoPtr faceInfo = makeFaceInfo("Test Pictures");
    std::vector<PlacedGlyph> glyphs = {{TestGlyph::a, true, 'A', {0, 0}}, {TestGlyph::x, true, 'x', {9, 1}}};
    ImagePrinter printer;
    drawColorGlyphs(world.factory->getColorGlyphs(),
                    {faceInfo, world.factory->shareFace(faceInfo), 20.0F, 1.0F, 1.0F, color}, printer,
                    glyphs.data(), glyphs.size());
    return printer.text;
}

void openColorFaces(World& world) {
    world.getFace("Test Pictures");
    world.getFace("Test Layers");
}

std::string flush(World& world) {
    world.factory->flush();
    return "flushed";
}

std::string reset(World& world) {
    world.factory->reset(3, 1000);
    return "reset";
}

void nothing(World&) {}

} // namespace

World::World() {
    loader->setDefaultFont(false, false, makeTestFont("Default Sans").build());
    loader->setRangeFamily(1, "Test Sans");
    static const auto pictures =
        std::make_shared<const Testing::Bytes>(makeSbixFont(makeTwoStrikes()).build());
    static const auto layers = std::make_shared<const Testing::Bytes>(makeLayerFont().build());
    loader->setFont("Test Pictures", false, false, pictures);
    loader->setFont("Test Layers", false, false, layers);
}

const std::vector<Operation>& getOperations() {
    static const std::vector<Operation> operations = {
        {"FontFactory::create", nothing, createFactory},
        {"getFaceDataBytes", nothing, getBytes},
        {"getFaceData of a style that is replaced", nothing, getReplacedStyle},
        {"getFace", nothing, openRegular},
        {"getFace of a synthetic style", nothing, openSynthetic},
        {"getFace of an unknown family", nothing, openDefault},
        {"getFont", nothing, makeFont},
        {"getFontMetrics", nothing, measure},
        {"getDefaultFontForSymbol", nothing, findFallback},
        {"getBitmapGlyph", openFace, renderBitmap},
        {"getBitmapGlyph of an underscore", openFace, renderUnderscore},
        {"getGlyphBitmapWithSubpixels", openFace, paintImage},
        {"getOutlineGlyphPath", openFace, buildOutline},
        {"RasterTextPainter::createGlyphRun", openFace, layOutRaster},
        {"VectorTextPainter::createGlyphRun", openFace, layOutVector},
        {"PlacedGlyphRun::append", openFace, placeRaster},
        {"fetchOutlines", openFace, fetchPaths},
        {"RasterTextPainter::drawText", openFace, drawRaster},
        {"VectorTextPainter::drawText", openFace, drawVector},
        {"ColorGlyphs::hasColors", openColorFaces, lookForColors},
        {"ColorGlyphs::getImage of a bitmap", openColorFaces, scalePicture},
        {"ColorGlyphs::getImage of layers", openColorFaces, drawLayers},
        {"drawColorGlyphs", openColorFaces, drawPictures},
        {"flush", openFace, flush, false},
        {"reset", openFace, reset}};
    return operations;
}

std::string performWithoutFailure(const Operation& operation) {
    World world;
    operation.prepare(world);
    return operation.perform(world);
}

} // namespace Vell::FontEngine
