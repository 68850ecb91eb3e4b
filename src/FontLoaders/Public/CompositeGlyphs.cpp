#include <FontLoaders/Public/CompositeGlyphs.h>

#include <FontLoaders/Private/GlyfReader.h>
#include <FontLoaders/Private/LibraryMemory.h>

#include <memory>

namespace Vell::FontLoaders {

namespace Internal {

void attachGlyfReader(FT_Face face) {
    LibraryMemory::setReader(face, std::make_unique<GlyfReader>(face));
}

} // namespace Internal

namespace {

/// FreeType auto-hints what is forced to be and what is to be hinted lightly, and cares for no such wish in a
/// font that it cannot draw without its programs.
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
