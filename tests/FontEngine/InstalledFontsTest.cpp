// The pixels of a glyph do not depend on the glyphs drawn before it. For every face of every installed font,
// the tests render its glyphs in order and in reverse at one size, and compare them with those of a face that
// is sized again for each glyph.

#include <support/OpenedFont.h>

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>
#include <FontEngine/InstalledFonts.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include FT_LCD_FILTER_H

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;
using Testing::OpenedFont;

using Keys = std::vector<BitmapGlyphInfo>;
using Looks = std::vector<std::string>;
using BitmapPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;
using Render = std::function<BitmapPtr(const BitmapGlyphInfo&)>;

/// Moves another face of a collection to the first place.
Bytes moveFaceToFront(Bytes collection, long index) {
    constexpr long firstOffset = 12; // after the tag, the version and the count
    constexpr long offsetSize = 4;
    const auto offset = collection.begin() + firstOffset;
    std::copy_n(offset + index * offsetSize, offsetSize, offset);
    return collection;
}

bool isComposite(FT_Face face, FT_UInt glyph) {
    return FT_Load_Glyph(face, glyph, FT_LOAD_NO_RECURSE) == 0 &&
           face->glyph->format == FT_GLYPH_FORMAT_COMPOSITE;
}

/// Digits, punctuation, accented letters, which fonts compose of parts, and a sample of the whole font.
std::set<FT_UInt> chooseGlyphs(FT_Face face) {
    constexpr long spread = 20;
    std::set<FT_UInt> glyphs;
    for (const char32_t character : std::u32string(U"0189.,:;!?'\"()-+*/=%&@_\u00C0\u00C9\u00D6\u00E5\u00E7"
                                                   U"\u00EE\u00F1\u0106\u011F\u0386\u0419\u0451\u1EC7")) {
        glyphs.insert(FT_Get_Char_Index(face, character));
    }
    for (long i = 0; i < spread; ++i) {
        glyphs.insert(static_cast<FT_UInt>(i * face->num_glyphs / spread));
    }
    return glyphs;
}

/// Keys for the glyphs in different render modes and at different offsets inside a pixel.
Keys makeKeys(const std::set<FT_UInt>& glyphs, float size) {
    Keys keys;
    for (const FT_UInt glyph : glyphs) {
        keys.push_back(
            KeyFields()
                .with(&KeyFields::glyph, glyph)
                .with(&KeyFields::size, size)
                .with(&KeyFields::offset, glyph % 16 * 4)
                .with(&KeyFields::mode, glyph % 3 == 0 ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL)
                .makeBitmap());
    }
    return keys;
}

std::string describeOutcome(const Render& render, const BitmapGlyphInfo& key) {
    try {
        const BitmapPtr glyph = render(key);
        return glyph ? describe(*glyph) : "no size";
    } catch (const FontLoaders::FreeTypeException& error) {
        return error.what();
    }
}

Looks walk(const Keys& keys, const Render& render) {
    Looks looks;
    for (const BitmapGlyphInfo& key : keys) {
        looks.push_back(describeOutcome(render, key));
    }
    return looks;
}

Looks walkInReverse(const Keys& keys, const Render& render) {
    Looks looks = walk(Keys(keys.rbegin(), keys.rend()), render);
    std::reverse(looks.begin(), looks.end());
    return looks;
}

/// Renders with a separate face, which is sized again for each glyph.
BitmapPtr renderOnSizedFace(const OpenedFont& font, const BitmapGlyphInfo& key) {
    const auto height = static_cast<FT_F26Dot6>(key.getFontSize() * 64.0F);
    return FT_Set_Char_Size(font.get(), 0, height, 72, 0) == 0
               ? Internal::createBitmapGlyph(key, font.face, false)
               : nullptr;
}

void expectEqual(const Looks& looks, const Looks& expected, const Keys& keys, const char* order) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(looks[i], expected[i])
            << order << ": glyph " << keys[i].getGlyphIndex() << " at " << keys[i].getFontSize();
    }
}

void compareWalks(const OpenedFont& font, const std::set<FT_UInt>& glyphs) {
    const Engine engine;
    engine.loader->setFont("Installed", false, false, font.bytes);
    const FacePtr face = engine.getFace("Installed");
    for (const float size : {11.5F, 14.0F}) {
        const Keys keys = makeKeys(glyphs, size);
        const Looks expected =
            walk(keys, [&](const BitmapGlyphInfo& key) { return renderOnSizedFace(font, key); });
        const auto render = [&](const BitmapGlyphInfo& key) { return face->getBitmapGlyph(key, false); };
        engine.factory->flush();
        expectEqual(walk(keys, render), expected, keys, "in order");
        engine.factory->flush();
        expectEqual(walkInReverse(keys, render), expected, keys, "in reverse");
    }
}

/// Counts the comparisons.
struct Totals {
    long faces = 0;
    long composites = 0;
};

void compareFace(const OpenedFont& font, Totals& totals) {
    if (font->num_charmaps == 0) {
        return; // a loader must not serve it
    }
    FT_Library_SetLcdFilter(font.library.get(), FT_LCD_FILTER_LIGHT); // like the engine's faces
    const std::set<FT_UInt> glyphs = chooseGlyphs(font.get());
    totals.faces += 1;
    totals.composites += std::count_if(glyphs.begin(), glyphs.end(),
                                       [&](FT_UInt glyph) { return isComposite(font.get(), glyph); });
    compareWalks(font, glyphs);
}

void compareFile(const Bytes& file, Totals& totals) {
    const OpenedFont font(file);
    compareFace(font, totals);
    for (long index = 1; index < font->num_faces; ++index) {
        SCOPED_TRACE("face " + std::to_string(index));
        compareFace(OpenedFont(moveFaceToFront(file, index)), totals);
    }
}

TEST(InstalledFonts, RenderAGlyphTheSameWhateverWasDrawnBefore) {
    Totals totals;
    for (const std::filesystem::path& path : listInstalledFonts()) {
        SCOPED_TRACE(path.string());
        try {
            compareFile(readFile(path), totals);
        } catch (const FontLoaders::FreeTypeException&) {
            continue; // not a font, or a font that the engine refuses
        }
    }
    EXPECT_GE(totals.faces, 6) << "the tests' packages alone have more";
    EXPECT_GE(totals.composites, totals.faces) << "accented letters are built from parts";
}

} // namespace
} // namespace Vell::FontEngine
