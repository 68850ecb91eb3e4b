// Clients cannot change what the engine hands out, because it is shared. They must implement interfaces
// completely.

#include <FontEngine/FontEngine.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

using namespace Vell;
using namespace Vell::FontEngine;

struct Painter : BitmapGlyphPainter {
    void drawGlyph(const BitmapGlyphImage&, const cinder::Vec2<float>&) override {}
};
struct IncompletePainter : BitmapGlyphPainter {};

void draw(const VectorTextPainter&);

float use(const Font& font, const BitmapGlyph& glyph, const BitmapGlyphRun& run,
          const OutlineGlyphRun& outlines, Gfx::Painter& painter) {
    const auto& face = font.getFace();
    const auto bitmap = face->getBitmapGlyph(glyph.getInfo(), false);
    const auto image = face->getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 4});
    const auto data = face->getFaceData();
    Painter glyphPainter;
    RasterTextPainter raster(painter, glyphPainter, false);
    const VectorTextPainter vector(painter);
    BitmapGlyphImageWithDeleter owner;
    FT_Outline* const outline = nullptr;

#ifdef MISUSE_INCOMPLETE_PAINTER // abstract
    IncompletePainter incomplete;
#endif
#ifdef MISUSE_TEXT_PAINTER_OF_A_CONST_PAINTER // discards qualifiers|no matching
    draw(static_cast<const Gfx::Painter&>(painter));
#endif
#ifdef MISUSE_CHANGING_A_BITMAP // read-only|cannot assign
    bitmap->left = 1;
#endif
#ifdef MISUSE_CHANGING_AN_IMAGE // read-only|cannot assign
    image->rows = 1;
#endif
#ifdef MISUSE_CHANGING_A_FONT_FILE // discards qualifiers|not marked const|no matching member
    data.bytes->push_back(1);
#endif
#ifdef MISUSE_CHANGING_A_CHARACTER_MAP // discards qualifiers|not marked const
    face->getBasicMetrics().getCharMap().insert('A', {1, 1.0F}, true);
#endif
#ifdef MISUSE_CHANGING_A_RUN // discards qualifiers|not marked const
    run.getGlyphs().clear();
#endif
#ifdef MISUSE_CHANGING_THE_BOX_OF_A_RUN // read-only|cannot assign
    run.getBBox().yMax = 1;
#endif
#ifdef MISUSE_CHANGING_AN_OUTLINE_RUN // discards qualifiers|not marked const
    outlines.getGlyphs().clear();
#endif
#ifdef MISUSE_REPLACING_A_FACE // passing|no viable overloaded|no match|discards qualifiers
    font.getFace() = face;
#endif
#ifdef MISUSE_TAKING_A_FACE_HANDLE // deleted
    const FontLoaders::FTFacePtr handle = face->getHandle();
#endif
#ifdef MISUSE_IMAGE_COPY // deleted
    BitmapGlyphImageWithDeleter second(owner);
#endif
#ifdef MISUSE_IMAGE_ASSIGNMENT // deleted
    owner = owner;
#endif
#ifdef MISUSE_OUTLINE_SCALE_BY_NUMBER // cannot convert|cannot initialize|no matching function
    Internal::applyGlyphTransform(face->getHandle(), outline, GlyphTransform::None, 1);
#endif
#ifdef MISUSE_METRICS_WITHOUT_SUBSTITUTION // abstract
    const Gfx::UniversalFontMetrics metrics(font.getFontInfo(), font.getFontInfo());
#endif
    return bitmap && image && outline == nullptr ? font.getHeight() : 0;
}

int main() {}
