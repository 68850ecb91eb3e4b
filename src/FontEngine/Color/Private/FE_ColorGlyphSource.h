#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/Private/FE_ColorFace.h>
#include <FontEngine/Color/Private/FE_ColorPaintList.h>

#include <memory>
#include <optional>

namespace Vell::FontEngine::Internal {

/// A requested glyph and the face that draws it. Refers to both.
class ColorGlyphSource {
public:
    ColorGlyphSource(ColorFace& face, const ColorGlyphInfo& info);
    ColorGlyphSource(const ColorGlyphSource&) = delete;
    ColorGlyphSource& operator=(const ColorGlyphSource&) = delete;

    /// The key of the glyph in the cache: without the colours that it does not use.
    const ColorGlyphInfo& getKey() const { return _reducedKey ? *_reducedKey : _info; }

    /// Null if the glyph is drawn with a bitmap or not at all.
    std::shared_ptr<const ColorPaintList> getPaints();

    /// Null if the glyph is absent at this size.
    std::shared_ptr<const ColorGlyphImage> makeImage();

private:
    ColorKind findKind();
    std::shared_ptr<const ColorPaintList> makePaints() const;

    ColorFace& _face;
    const ColorGlyphInfo& _info;
    std::shared_ptr<const ColorPaintList> _paints; // once they were needed
    ColorKind _kind;
    std::optional<ColorGlyphInfo> _reducedKey;
};

} // namespace Vell::FontEngine::Internal
