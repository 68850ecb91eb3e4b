#pragma once

#include <FontLoaders/Public/FreeType.h>

#include FT_OUTLINE_H

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace Vell::FontEngine::Internal {

/// The outline of a glyph in font units, unhinted, as a copy that does not depend on the face.
struct ColorOutline {
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> contours;
    int flags;
    FT_BBox box; ///< exact

    /// Returns FreeType's form of this outline with other points, as many as there are.
    FT_Outline view(FT_Vector* movedPoints) const;
};

/// The outlines that a colour glyph is made of. Each is loaded once, and their total size is bounded.
class ColorOutlines {
public:
    /// Loads the outline of a glyph unless it is there. Returns false if FreeType cannot load it, and if all
    /// outlines together have too many points or take too much time.
    bool load(FT_Face face, unsigned int glyphIndex);

    /// Returns an outline that has been loaded.
    const ColorOutline& get(unsigned int glyphIndex) const;

private:
    /// Whether the time is not up that all outlines together may take.
    bool hasTime();

    std::map<unsigned int, ColorOutline> _outlines;
    std::size_t _pointCount = 0;
    double _start = 0; ///< the thread's time when the first outline was loaded, in seconds
};

} // namespace Vell::FontEngine::Internal
