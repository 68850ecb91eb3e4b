#pragma once

#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/CharMap.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

/// Font metrics that are computed from a font description and the metrics of a face. Each length is the
/// face's value times getFontSize(). Derived classes only substitute missing glyphs.
///
/// Superscript and subscript text is set at 0.65 of the description's size. Its base line is shifted by +0.48
/// (superscript) or -0.14 (subscript) of the description's size. Most fonts have these proportions in their
/// OS/2 table. They apply to all fonts, so that a line looks the same whichever face serves it.
///
/// Immutable. Any number of threads may use one object at once.
class VELL_API UniversalFontMetrics : public FontMetrics {
public:
    UniversalFontMetrics(NNPtr<const FontInfo> fontInfo, NNPtr<const BasicMetrics> basicMetrics);
    ~UniversalFontMetrics() override;

    /// Calls `callback` with the code point of each character of `text`, in order. Ill-formed UTF-8 gives one
    /// U+FFFD for each maximal subpart, as decodeUtf8 does. `extFontInfo` is not used.
    static void forEachCharInText(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo,
                                  const CallableRef<void(unsigned int)>& callback);

    /// The size at which glyphs are drawn. For normal text it is the description's size.
    float getFontSize() const { return _fontSize; }

    float getTextWidth(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo) const override;
    std::size_t countCharsForWidth(char const*& begin, char const* end, float width,
                                   const NNPtr<const ExtFontInfo>& extFontInfo) const override;
    float getHeight() const override;
    float getAscent() const override;
    float getDescent() const override;
    float getLeading() const override;
    float getCapHeight() const override;
    float getBaseLineShift() const override;
    float getStrikeOutPosition() const override;

    /// Called if the face lacks a glyph, that is, if its map returns glyph 0. May replace `glyph` with the
    /// entry of another face.
    virtual void trySubstituteGlyph(const NNPtr<const ExtFontInfo>& extFontInfo, unsigned int codePoint,
                                    CharMap::GlyphIndexWithAdvance& glyph) const = 0;

private:
    float getCharWidth(unsigned int codePoint, const NNPtr<const ExtFontInfo>& extFontInfo) const;

    NNPtr<const FontInfo> _fontInfo;
    NNPtr<const BasicMetrics> _basicMetrics;
    float _fontSize;
};

} // namespace Vell::Gfx
