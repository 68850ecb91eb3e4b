#pragma once

#include <FontEngine/FE_Font.h>
#include <Gfx/Public/FontInfo.h>
#include <TextLayout/Public/BidiLine.h>
#include <TextLayout/Public/ScriptRuns.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

class ShapingService;
class TextMeasures;

/// A glyph of a shaped text. Distances are in the font units of its run's face, y pointing up.
struct ShapedGlyph {
    std::uint32_t cluster; ///< the first byte of the characters that the glyph belongs to
    std::int32_t advance;  ///< from this glyph's origin to the next one's, without letter spacing
    std::int32_t xOffset;  ///< from the pen position to the origin of the drawn glyph
    std::int32_t yOffset;
    std::uint16_t index; ///< in the face
    /// Whether letter spacing is added behind the glyph: it ends a cluster that may be spaced.
    bool isSpaced : 1;
    /// Whether the next character of the text is another one, or there is none: for BitmapGlyphInfo.
    bool isLast : 1;
    /// Whether a line that is broken before the glyph's cluster has the same glyphs as the unbroken one.
    bool isSafeToBreak : 1;
    /// Whether a tatweel may stand in front of the glyph's cluster, in reading order, and nothing else
    /// changes: between two joined letters of Arabic.
    bool allowsElongation : 1;
};

/// The font of a run.
struct RunFont {
    /// What the glyphs' keys are made with: the style's own description, or that of the fallback.
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    FontEngine::Font font;
    float letterSpacing; ///< in the units of the font size

    /// A distance in font units, in the units of the font size.
    float toUnits(float fontUnits) const {
        return font.getFontSize() * (fontUnits / static_cast<float>(getUnitsPerEM()));
    }
    /// 0 for bitmap fonts that are not in the format of TrueType and OpenType.
    unsigned short getUnitsPerEM() const {
        const unsigned short unitsPerEM = font.getFace()->getHandle()->units_per_EM;
        return unitsPerEM != 0 ? unitsPerEM : readUnitsPerEM();
    }

private:
    VELL_API unsigned short readUnitsPerEM() const; ///< of a font without outlines
};

/// Adjacent characters of one style, font, script and level. Its glyphs are in visual order, from left to
/// right; those of a right-to-left run begin with the last character.
struct ShapedRun {
    std::uint32_t begin; ///< bytes of the text; begin < end
    std::uint32_t end;
    std::uint32_t glyphBegin; ///< in ShapedText::getGlyphs()
    std::uint32_t glyphEnd;
    std::uint32_t font;  ///< in ShapedText::getFonts()
    std::uint32_t style; ///< in ShapedText::getStyles()
    ScriptCode script;
    BidiLevel level;
    float
        width; ///< the distance that the pen travels, in the units of the font size, letter spacing included

    bool isRightToLeft() const { return level % 2 != 0; }
};

/// A paragraph of a text in the sense of UAX #9: up to a paragraph separator, which belongs to it.
struct DirectedParagraph {
    std::uint32_t begin;
    std::uint32_t end;
    BidiLevel baseLevel; ///< 0 or 1
};

using ShapedRuns = boost::container::small_vector<ShapedRun, 1>;                 ///< most texts have one
using DirectedParagraphs = boost::container::small_vector<DirectedParagraph, 1>; ///< the same

/// What the runs of a text refer to. Texts in one style share it.
struct TextLook {
    std::vector<TextStyle> styles = {};
    std::vector<RunFont> fonts = {};
};

/// What a ShapedText holds. Everything that refers to bytes or glyphs must be in range; nothing is checked.
struct ShapedTextParts { // NOLINT(bugprone-exception-escape): short vectors move into equal room, without
                         // throwing
    std::string text = {};
    std::vector<TextStyle> styles = {};
    std::vector<RunFont> fonts = {};
    std::vector<ShapedGlyph> glyphs = {};
    ShapedRuns runs = {};               ///< in visual order
    DirectedParagraphs paragraphs = {}; ///< in order; they cover the text
};

/// A text as glyphs, on a single line of any length. TextShaper makes it, and a Paragraph breaks it into
/// lines.
///
///     const auto text = shaper.shape("Price: 12", describeFont("DejaVu Sans", 16.0F));
///     for (const ShapedRun& run : text->getRuns()) { ... }
///
/// The runs cover the text. So do the glyphs' clusters: each character belongs to the cluster of a glyph of
/// its run, which begins with it or before it.
///
/// Lifetime: it keeps its faces alive, and what the shaper was made with, so also the factory. Threads:
/// immutable, so any number of threads may use it. Memory: 20 bytes a glyph, the text itself, and some 100
/// bytes for each run and font.
class ShapedText {
public:
    /// For shapers. `service` shapes hyphens and ellipses for paragraphs, which have none if it is null.
    VELL_API explicit ShapedText(ShapedTextParts parts,
                                 std::shared_ptr<const ShapingService> service = nullptr);
    /// For TextShaping, which completes it in place.
    ShapedText(std::string_view text, std::shared_ptr<const ShapingService> service);
    VELL_API ~ShapedText();

    ShapedText(const ShapedText&) = delete;
    ShapedText& operator=(const ShapedText&) = delete;

    /// As it was shaped, ill-formed UTF-8 included.
    const std::string& getText() const { return _parts.text; }
    /// In visual order, as on one line.
    const ShapedRuns& getRuns() const { return _parts.runs; }
    const std::vector<ShapedGlyph>& getGlyphs() const { return _parts.glyphs; }
    const std::vector<RunFont>& getFonts() const { return _look->fonts; }
    const std::vector<TextStyle>& getStyles() const { return _look->styles; }
    const DirectedParagraphs& getParagraphs() const { return _parts.paragraphs; }
    /// The sum of the runs' widths, in the units of the font size.
    float getWidth() const { return _width; }

    const RunFont& getFont(const ShapedRun& run) const { return _look->fonts[run.font]; }
    const TextStyle& getStyle(const ShapedRun& run) const { return _look->styles[run.style]; }

    /// Only for Paragraph: what it needs to know of the text at every width. Computed on the first call.
    const TextMeasures& getMeasures() const;
    /// Only for Paragraph. May be null.
    const std::shared_ptr<const ShapingService>& getService() const { return _service; }

private:
    friend class TextShaping;

    /// Texts in one style share their look.
    void complete(std::shared_ptr<const TextLook> look);

    ShapedTextParts _parts; // its styles and fonts are empty
    std::shared_ptr<const TextLook> _look;
    std::shared_ptr<const ShapingService> _service;
    mutable std::once_flag _measuresOnce;
    mutable std::unique_ptr<const TextMeasures> _measures; // null until they are needed
    float _width = 0.0F;
};

} // namespace Vell::TextLayout
