#include <FontLoaders/Public/CompositeGlyphs.h>

#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Private/FreeTypeBounds/LibraryMemory.h>

namespace Vell::FontLoaders {

namespace {

/// FreeType auto-hints if the flags force it or ask for light hinting. It ignores both for a font that it
/// cannot draw without the font's programs.
bool runsPrograms(FT_Face face, int loadFlags) {
    constexpr int unhinted = FT_LOAD_NO_HINTING | FT_LOAD_NO_SCALE | FT_LOAD_NO_RECURSE;
    const bool isAutoHinted =
        (loadFlags & FT_LOAD_FORCE_AUTOHINT) != 0 || FT_LOAD_TARGET_MODE(loadFlags) == FT_RENDER_MODE_LIGHT;
    return FT_IS_TRICKY(face) ||
           ((loadFlags & unhinted) == 0 && (!isAutoHinted || (loadFlags & FT_LOAD_NO_AUTOHINT) != 0));
}

} // namespace

bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex) {
    const Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->isBounded(glyphIndex);
}

FT_Error findGlyphError(FT_Face face, unsigned int glyphIndex, int loadFlags) {
    const Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr ? FT_Err_Ok : reader->check(glyphIndex, runsPrograms(face, loadFlags));
}

bool hasBoundedGlyphs(FT_Face face) {
    Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->isAutoHinterBounded(face);
}

} // namespace Vell::FontLoaders
