#include <FontEngine/FactoryStress.h>

#include <support/Descriptions.h>
#include <support/FontBuilder.h>
#include <support/RecordingGlyphPainter.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Utils/Public/Hash.h>

#include <cstdlib>
#include <utility>

namespace Vell::FontEngine {

namespace {

constexpr const char* text = "Ax__ A\xE2\x98\x83x";
constexpr unsigned int snowman = 0x2603;

/// The boxes of each family have sizes of their own.
Testing::Bytes buildFont(const std::string& family, unsigned int number) {
    const int side = 100 + 30 * static_cast<int>(number);
    Testing::FontBuilder font(family);
    font.setNotdef(Testing::makeBoxGlyph(500, 50, 0, 450, side));
    font.map('A', font.addGlyph(Testing::makeBoxGlyph(600 + number, 100, 0, 500, side)));
    font.map('x', font.addGlyph(Testing::makeBoxGlyph(400 + number, 0, 0, side / 2, 500)));
    font.map('_', font.addGlyph(Testing::makeBoxGlyph(500, 0, -100, 500, -50)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    if (number == StressEngine::familyCount) {
        font.map(snowman, font.addGlyph(Testing::makeBoxGlyph(900, 0, 0, 800, 300)));
    }
    return font.build();
}

std::string getFamily(unsigned int number) {
    return "Family " + std::to_string(number);
}

Testing::ExtFontInfoPtr describe(unsigned int family, float size) {
    return Testing::makeExtFontInfo(Testing::makeFontInfo(getFamily(family), size), 0.3F);
}

} // namespace

void Digest::add(std::uint64_t value) {
    _value = combineHash(_value, value);
}

void Digest::add(float value) {
    add(hashFloat(value));
}

void Digest::add(const FT_BitmapGlyphRec_& glyph) {
    add(static_cast<std::uint64_t>(glyph.left));
    add(static_cast<std::uint64_t>(glyph.top));
    add(static_cast<std::uint64_t>(glyph.bitmap.width));
    const auto rowBytes = static_cast<std::size_t>(std::abs(glyph.bitmap.pitch));
    for (std::size_t i = 0; i < rowBytes * glyph.bitmap.rows; ++i) {
        add(static_cast<std::uint64_t>(glyph.bitmap.buffer[i]));
    }
}

void Digest::add(const BitmapGlyphImage& image) {
    add(static_cast<std::uint64_t>(image.width));
    for (std::size_t i = 0; i < static_cast<std::size_t>(image.pitch) * image.rows; ++i) {
        add(static_cast<std::uint64_t>(image.buffer[i]));
    }
}

void Digest::add(const BitmapGlyphRun& run) {
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        add(glyph.getPos().x);
        add(glyph.getInfo().hash());
        add(*glyph.getData());
    }
    add(static_cast<std::uint64_t>(run.getBBox().yMax));
}

void Digest::add(const OutlineGlyphRun& run) {
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        add(glyph.getAdvance());
        const auto& path = dynamic_cast<const Testing::RecordedPath&>(*glyph.getPath());
        for (const std::string& segment : path.getSegments()) {
            for (const char letter : segment) {
                add(static_cast<std::uint64_t>(letter));
            }
        }
    }
}

void Digest::addImages(const BitmapGlyphRun& run, const Font& font) {
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        if (glyph.getData()->bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
            add(*font.getFace()->getGlyphBitmapWithSubpixels(glyph, {200, 10, 30, 255}));
        }
    }
}

StressEngine::StressEngine(std::shared_ptr<const Testing::CountingLoader> loader)
    : _factory(FontFactory::create(std::move(loader), getFamily(0))) {}

std::shared_ptr<Testing::CountingLoader> StressEngine::makeLoader() {
    auto loader = std::make_shared<Testing::CountingLoader>();
    for (unsigned int number = 0; number < familyCount; ++number) {
        loader->setFont(getFamily(number), false, false, buildFont(getFamily(number), number));
    }
    loader->setFont("Symbols", false, false, buildFont("Symbols", familyCount));
    loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Symbols");
    return loader;
}

Font StressEngine::getFont(unsigned int family, float size) const {
    return _factory->getFont(Testing::makeFontInfo(getFamily(family), size));
}

BitmapGlyphRun StressEngine::layOutBitmaps(unsigned int family, float size) const {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    return RasterTextPainter(painter, glyphPainter, false)
        .createGlyphRun(text, describe(family, size), getFont(family, size), 1.0F, {1.0F, 1.0F});
}

OutlineGlyphRun StressEngine::layOutOutlines(unsigned int family, float size, Gfx::Painter& painter) const {
    return VectorTextPainter(painter).createGlyphRun(text, describe(family, size), getFont(family, size));
}

std::uint64_t StressEngine::work(unsigned int round) const {
    Digest digest;
    Testing::RecordingPainter painter;
    for (unsigned int step = 0; step < familyCount; ++step) {
        const unsigned int family =
            (step * 5 + round) % familyCount; // all families, starting with another one each round
        const float size = 9.0F + static_cast<float>((round + step) % 7);
        if (family % 2 == 0) {
            const BitmapGlyphRun run = layOutBitmaps(family, size);
            digest.add(run);
            digest.addImages(run, getFont(family, size));
        } else {
            digest.add(layOutOutlines(family, size, painter));
        }
        digest.add(getFont(family, size).getTextWidth(text, describe(family, size)));
    }
    return digest.get();
}

} // namespace Vell::FontEngine
