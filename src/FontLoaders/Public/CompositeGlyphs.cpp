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

bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex) {
    const Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->isBounded(glyphIndex);
}

bool hasBoundedGlyphs(FT_Face face) {
    Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->isAutoHinterBounded(face);
}

} // namespace Vell::FontLoaders
