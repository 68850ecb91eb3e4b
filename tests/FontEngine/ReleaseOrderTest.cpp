// The order in which a factory destroys its entries. Each cache holds a key with a description of its own,
// whose destructor records the order.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The names of the destroyed objects, in the order of their destruction.
using Log = std::vector<std::string>;

template <class T>
std::shared_ptr<const T> watch(const T* object, Log& log, const std::string& name) {
    return std::shared_ptr<const T>(object, [&log, name](const T* ended) {
        log.push_back(name);
        delete ended;
    });
}

Testing::FaceInfoPtr makeWatchedDescription(Log& log, const std::string& name) {
    return std::shared_ptr<const Gfx::FontFaceInfo>(
        watch(new Internal::FontFaceInfo("Test Sans", false, false), log, name));
}

KeyFields makeWatchedKey(Log& log, const std::string& name) {
    return KeyFields().with(&KeyFields::face, makeWatchedDescription(log, name));
}

FactoryPtr makeWatchedFactory(Log& log) {
    auto* const loader = new Testing::CountingLoader();
    loader->setFont("Test Sans", false, false, makeTestFont().build());
    return FontFactory::create(watch(loader, log, "loader"), "Default Family");
}

void cacheImage(const FontFactory& factory, const KeyFields& fields) {
    unsigned char coverage[3] = {255, 255, 255};
    FT_BitmapGlyphRec_ bitmap = {};
    bitmap.bitmap = FT_Bitmap{1, 3, 3, coverage, 256, FT_PIXEL_MODE_LCD, 0, nullptr};
    const BitmapGlyph glyph({std::shared_ptr<void>(), &bitmap}, {0, 0}, fields.makeBitmap());
    factory.getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 255});
}

/// A factory with one entry in each of its caches.
FactoryPtr makeFilledFactory(Log& log) {
    FactoryPtr factory = makeWatchedFactory(log);
    Testing::RecordingPainter painter;
    factory->getFaceDataBytes(makeWatchedDescription(log, "font file"));
    const FacePtr face = factory->getFace(makeWatchedDescription(log, "face"));
    face->getBitmapGlyph(makeWatchedKey(log, "bitmap").makeBitmap(), false);
    cacheImage(*factory, makeWatchedKey(log, "coloured image"));
    face->getOutlineGlyphPath(makeWatchedKey(log, "outline").makeOutline(), painter);
    EXPECT_THAT(log, IsEmpty());
    return factory;
}

TEST(ReleaseOrder, OfAFlushIsGlyphsThenFacesThenFontFiles) {
    Log log;
    const FactoryPtr factory = makeFilledFactory(log);
    factory->flush();
    EXPECT_THAT(log, ElementsAre("bitmap", "coloured image", "outline", "face", "font file"));
}

TEST(ReleaseOrder, OfAResetIsTheSameWithoutOutlines) {
    Log log;
    const FactoryPtr factory = makeFilledFactory(log);
    factory->reset(1, 1);
    EXPECT_THAT(log, ElementsAre("bitmap", "coloured image", "face", "font file"));
}

TEST(ReleaseOrder, OfAFactoryEndsWithItsLoader) {
    Log log;
    makeFilledFactory(log);
    EXPECT_THAT(log, ElementsAre("outline", "coloured image", "bitmap", "face", "font file", "loader"));
}

} // namespace
} // namespace Vell::FontEngine
