#pragma once

#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/CharMap.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

/// Font metrics computed from a description and the metrics of a face: each length is the face's value times
/// getFontSize(); only the substitution of missing glyphs is left to the derived class.
///
/// Superscript and subscript text is set at 0.65 of the description's size, and its base line is shifted by
/// +0.48 (superscript) or -0.14 (subscript) of the description's size. These are the proportions that most
/// fonts carry in their OS/2 table; they are used for all fonts alike, so that a line looks the same
/// whichever face serves it.
///
/// Immutable; any number of threads may use one object at once.
class VELL_API UniversalFontMetrics : public FontMetrics {
public:
    UniversalFontMetrics(NNPtr<const FontInfo> fontInfo, NNPtr<const BasicMetrics> basicMetrics);
    ~UniversalFontMetrics() override;

    /// Calls `callback` once for each character of `text`, in order, with its code point. Ill-formed UTF-8
    /// gives one U+FFFD for each maximal ill-formed part; see decodeUtf8. `extFontInfo` changes nothing
    /// today.
    static void forEachCharInText(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo,
                                  const CallableRef<void(unsigned int)>& callback);

    /// The size at which glyphs are drawn: the description's own for normal text.
    float getFontSize() const { return _fontSize; }

    float getTextWidth(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo) const override;
    std::size_t countCharsForWidth(char const*& begin, char const* end, float width,
                                   const NNPtr<const ExtFontInfo>& extFontInfo) const override;
    float getHeight() const override;
    float getAscent() const override;
    float getDescent() const override;
    /// Height less ascent less descent.
    float getLeading() const override;
    float getCapHeight() const override;
    float getBaseLineShift() const override;
    float getStrikeOutPosition() const override;

    /// Called where the face has no glyph of its own (its map answers glyph 0): may replace `glyph` by the
    /// entry of another face, or leave it alone.
    virtual void trySubstituteGlyph(const NNPtr<const ExtFontInfo>& extFontInfo, unsigned int codePoint,
                                    CharMap::GlyphIndexWithAdvance& glyph) const = 0;

private:
    float getCharWidth(unsigned int codePoint, const NNPtr<const ExtFontInfo>& extFontInfo) const;

    NNPtr<const FontInfo> _fontInfo;
    NNPtr<const BasicMetrics> _basicMetrics;
    float _fontSize;
};

} // namespace Vell::Gfx
