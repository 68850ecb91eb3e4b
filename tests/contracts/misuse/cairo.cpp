// A painter owns its context and its transform stack: it cannot be copied, and no conversion makes one by
// accident.

#include <CairoAdapter/CairoAdapter.h>

using namespace Vell::CairoAdapter;

void paint(const CairoPainter& painter);

void use(cairo_t* context, const CairoPainter& painter, const CairoGlyphPainter& glyphPainter) {
    CairoPainter own(context);
    SurfacePtr surface = makeImageSurface(1, 1);

#ifdef MISUSE_PAINTER_COPY // deleted
    CairoPainter second(own);
#endif
#ifdef MISUSE_PAINTER_ASSIGNMENT // deleted
    own = painter;
#endif
#ifdef MISUSE_GLYPH_PAINTER_COPY // deleted
    CairoGlyphPainter secondGlyphPainter(glyphPainter);
#endif
#ifdef MISUSE_IMPLICIT_PAINTER // initialization|no viable|no matching
    paint(context);
#endif
#ifdef MISUSE_TRANSLATING_A_CONST_PAINTER // discards qualifiers|not marked const
    painter.translate({1, 1});
#endif
#ifdef MISUSE_SURFACE_COPY // deleted
    const SurfacePtr secondSurface = surface;
#endif
    static_cast<void>(painter.getColor());
    static_cast<void>(glyphPainter);
}

int main() {}
