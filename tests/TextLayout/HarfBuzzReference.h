#pragma once

#include <FontLoaders/Public/FontLoader.h>

#include <hb.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace Vell::Testing {

/// A glyph as hb-shape prints it.
struct PlainGlyph {
    std::uint32_t index;
    std::uint32_t cluster; ///< in bytes of the text
    std::int32_t xOffset;
    std::int32_t yOffset;
    std::int32_t advance;

    friend bool operator==(const PlainGlyph& lhs, const PlainGlyph& rhs) {
        return std::tie(lhs.index, lhs.cluster, lhs.xOffset, lhs.yOffset, lhs.advance) ==
               std::tie(rhs.index, rhs.cluster, rhs.xOffset, rhs.yOffset, rhs.advance);
    }
    friend std::ostream& operator<<(std::ostream& out, const PlainGlyph& glyph) {
        return out << glyph.index << '=' << glyph.cluster << '@' << glyph.xOffset << ',' << glyph.yOffset
                   << '+' << glyph.advance;
    }
};

/// A part of a text to shape as a whole.
struct ReferenceRun {
    std::string_view text; ///< all of it
    std::size_t begin;     ///< in bytes
    std::size_t end;
    std::string script; ///< ISO 15924
    bool isRightToLeft;
    std::string language; ///< a BCP 47 tag; empty: none
    std::string features; ///< for the whole text, as hb-shape takes them
};

/// Shapes with one call of HarfBuzz.
class ReferenceFont {
public:
    explicit ReferenceFont(FontLoaders::FontBytes bytes);

    std::vector<PlainGlyph> shape(const ReferenceRun& run) const;

private:
    FontLoaders::FontBytes _bytes;
    std::unique_ptr<hb_font_t, void (*)(hb_font_t*)> _font;
};

/// Shapes with the program hb-shape. The text must not contain line ends.
std::vector<PlainGlyph> runHbShape(const std::string& fontFile, const ReferenceRun& run);

} // namespace Vell::Testing
