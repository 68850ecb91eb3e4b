// That a size which a face has already need not be asked for again: over every font of the machine, the
// bitmaps are those of a face that is sized anew for each glyph.

#include <support/OpenedFont.h>

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include FT_LCD_FILTER_H

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;

std::vector<std::filesystem::path> listInstalledFonts() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("/usr/share/fonts")) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    return files;
}

Bytes readFile(const std::filesystem::path& path) {
    Bytes bytes(std::filesystem::file_size(path));
    std::ifstream(path, std::ios::binary)
        .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// What of a bitmap a text shows.
std::string describe(const FT_BitmapGlyphRec_& glyph) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    const std::size_t size = std::size_t(static_cast<unsigned int>(std::abs(bitmap.pitch))) * bitmap.rows;
    return std::to_string(glyph.left) + " " + std::to_string(glyph.top) + " " + std::to_string(bitmap.width) +
           " " + std::to_string(bitmap.rows) + " " +
           std::string(reinterpret_cast<const char*>(bitmap.buffer), size);
}

template <class Render>
std::string renderOrFail(const Render& render) {
    try {
        return describe(*render());
    } catch (const FontLoaders::FreeTypeException& error) {
        return error.what();
    }
}

/// Glyphs in different modes one after the other, through the engine and each on a newly sized face.
void compareGlyphs(const Engine& engine, const Testing::OpenedFont& reference, float size) {
    constexpr int glyphCount = 10;
    const FacePtr face = engine.getFace();
    const auto step = std::max(1L, reference->num_glyphs / glyphCount);
    for (long glyph = 0; glyph < reference->num_glyphs; glyph += step) {
        const bool isLcd = glyph % 3 == 0;
        const BitmapGlyphInfo key =
            KeyFields()
                .with(&KeyFields::glyph, glyph)
                .with(&KeyFields::size, size)
                .with(&KeyFields::offset, glyph % 16 * 4)
                .with(&KeyFields::mode, isLcd ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL)
                .makeBitmap();
        ASSERT_EQ(FT_Set_Char_Size(reference.get(), 0, static_cast<FT_F26Dot6>(size * 64.0F), 72, 0), 0);
        EXPECT_EQ(renderOrFail([&] { return face->getBitmapGlyph(key, false); }),
                  renderOrFail([&] { return Internal::createBitmapGlyph(key, reference.face, false); }))
            << "glyph " << glyph << " at " << size;
    }
}

bool isKnownToBeSized(const Testing::OpenedFont& font) {
    return FT_IS_SCALABLE(font.get()) && !FT_HAS_MULTIPLE_MASTERS(font.get());
}

TEST(InstalledFonts, RenderAlikeWhetherSizedOnceOrForEachGlyph) {
    std::size_t comparedFonts = 0;
    for (const std::filesystem::path& path : listInstalledFonts()) {
        SCOPED_TRACE(path.string());
        try {
            const Testing::OpenedFont reference(readFile(path));
            FT_Library_SetLcdFilter(reference.library.get(), FT_LCD_FILTER_LIGHT); // as every face has it
            if (isKnownToBeSized(reference)) {
                const Engine engine(*reference.bytes);
                for (const float size : {7.0F, 11.5F, 14.0F, 33.0F}) {
                    compareGlyphs(engine, reference, size);
                }
                ++comparedFonts;
            }
        } catch (const FontLoaders::FreeTypeException&) {
            continue; // no font, or one that the engine refuses
        }
    }
    EXPECT_GE(comparedFonts, 6U) << "the tests' packages alone have more";
}

} // namespace
} // namespace Vell::FontEngine
