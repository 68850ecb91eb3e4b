#include <FontEngine/Color/Private/FE_ColorOutlines.h>

#include <FontEngine/Private/FE_CallErrors.h>
#include <FontEngine/Private/FE_GlyphChecks.h>
#include <FontLoaders/Public/CompositeGlyphs.h>

#include FT_BBOX_H

#include <ctime>

namespace Vell::FontEngine::Internal {

namespace {

// A hundred times what any glyph of the common fonts has or takes.
constexpr std::size_t maxPoints = 1'000'000;
constexpr double maxSeconds = 1;

double readThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

bool loadSlot(FT_Face face, unsigned int glyphIndex) {
    constexpr int flags = FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;
    return hasGlyph(*face, glyphIndex) && FontLoaders::findGlyphError(face, glyphIndex, flags) == FT_Err_Ok &&
           isCallDone(FT_Load_Glyph(face, glyphIndex, flags), "FT_Load_Glyph") &&
           face->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
}

ColorOutline copy(const FT_Outline& outline, const FT_BBox& box) {
    return ColorOutline{{outline.points, outline.points + outline.n_points},
                        {outline.tags, outline.tags + outline.n_points},
                        {outline.contours, outline.contours + outline.n_contours},
                        outline.flags & ~(FT_OUTLINE_OWNER | FT_OUTLINE_OVERLAP),
                        box};
}

} // namespace

FT_Outline ColorOutline::view(FT_Vector* movedPoints) const {
    // FreeType's structure has no constant members, but it does not write to an outline that it renders.
    return {static_cast<short>(contours.size()), static_cast<short>(points.size()),   movedPoints,
            const_cast<char*>(tags.data()),      const_cast<short*>(contours.data()), flags};
}

bool ColorOutlines::hasTime() {
    constexpr std::size_t loadsBetweenChecks = 16; // reading the thread's time is expensive
    if (_outlines.size() % loadsBetweenChecks != 0) {
        return true;
    }
    const double now = readThreadTime();
    _start = _outlines.empty() ? now : _start;
    return now - _start <= maxSeconds;
}

bool ColorOutlines::load(FT_Face face, unsigned int glyphIndex) {
    if (_outlines.count(glyphIndex) != 0) {
        return true;
    }
    if (!hasTime() || !loadSlot(face, glyphIndex)) {
        return false;
    }
    _pointCount += static_cast<std::size_t>(face->glyph->outline.n_points);
    FT_BBox box;
    if (_pointCount > maxPoints ||
        !isCallDone(FT_Outline_Get_BBox(&face->glyph->outline, &box), "FT_Outline_Get_BBox")) {
        return false;
    }
    _outlines.emplace(glyphIndex, copy(face->glyph->outline, box));
    return true;
}

const ColorOutline& ColorOutlines::get(unsigned int glyphIndex) const {
    return _outlines.at(glyphIndex);
}

} // namespace Vell::FontEngine::Internal
