#include "specimen/GlyphTable.h"

#include "drawing/GlyphDrawing.h"
#include "fonts/FaceFacts.h"
#include "specimen/Html.h"
#include "specimen/Picture.h"

#include <fmt/format.h>

#include FT_ADVANCES_H

#include <algorithm>
#include <cmath>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;

/// Larger fonts get one pixel per square unit instead of four, which saves megabytes.
constexpr std::size_t maxSharpCount = 4096;

std::vector<NamedBlock> findBlocks(const std::vector<CodeRange>& ranges) {
    std::vector<NamedBlock> blocks;
    for (const CodeRange& range : ranges) {
        unsigned int code = range.first;
        while (code <= range.last) {
            if (blocks.empty() || code > blocks.back().last) {
                blocks.push_back(findNamedBlock(code));
            }
            code = blocks.back().last + 1;
        }
    }
    return blocks;
}

std::vector<unsigned int> listCharacters(const std::vector<CodeRange>& ranges, std::size_t limit) {
    std::vector<unsigned int> codes;
    for (const CodeRange& range : ranges) {
        for (unsigned int code = range.first; code <= range.last && codes.size() < limit; ++code) {
            codes.push_back(code);
        }
    }
    return codes;
}

/// FreeType has no em for a font that consists of bitmaps.
float readAdvance(const FontEngine::FontFace& face, unsigned int glyphIndex) {
    FT_Fixed units = 0;
    const bool isRead = FontLoaders::isFTSucceeded(
        FT_Get_Advance(face.getHandle().get(), glyphIndex, FT_LOAD_NO_SCALE, &units));
    return isRead ? static_cast<float>(units) / FontEngine::ColorGlyphs::getUnitsPerEm(face) : 0.0F;
}

/// Hostile fonts have any advance, infinite ones included.
int toThousandths(float ems) {
    constexpr float most = 1e6F;
    return std::isfinite(ems) ? static_cast<int>(std::lround(std::clamp(ems * 1000.0F, -most, most))) : 0;
}

GlyphEntry makeEntry(const TextFont& font, unsigned int code) {
    const auto glyph = font.font->getFace()->getBasicMetrics().getCharMap()[code];
    const bool hasEm = font.font->getFace()->getHandle()->units_per_EM != 0;
    const float advance = hasEm ? glyph.advance : readAdvance(*font.font->getFace(), glyph.glyphIndex);
    return {glyph.glyphIndex, toThousandths(advance)};
}

/// The size at which a line fits a cell, within limits, because some fonts ask for very tall lines.
float chooseSize(const FontSource& source) {
    constexpr float usable = 36.0F;
    constexpr float least = 14.0F;
    constexpr float greatest = 28.0F;
    const TextFont font = source.makeFont(false, false, 1.0F);
    const float line = font.font->getAscent() + font.font->getDescent();
    return std::isfinite(line) ? std::clamp(std::floor(usable / std::max(line, 1.0F)), least, greatest)
                               : greatest;
}

/// Draws the glyphs of a sheet, each clipped to its cell.
class SheetDrawing {
public:
    SheetDrawing(CairoPainter& painter, const TextFont& font, int pixelRatio)
        : _painter(painter)
        , _font(font)
        , _hasColors(hasColors(font))
        , _glyphs(painter, font, {FT_RENDER_MODE_NORMAL, 0, static_cast<float>(pixelRatio)}) {}

    void draw(unsigned int code, std::size_t cell) {
        constexpr float side = GlyphTable::cellSide;
        const std::size_t column = cell % GlyphTable::columns;
        const std::size_t row = cell / GlyphTable::columns;
        const float left = static_cast<float>(column) * side;
        const float top = static_cast<float>(row) * side;
        cairo_t* const context = _painter.getContext();
        const cairo_matrix_t device = _painter.getDeviceTransform();
        cairo_save(context);
        cairo_set_matrix(context, &device);
        cairo_rectangle(context, left, top, side, side);
        cairo_clip(context);
        if (!_hasColors || !_glyphs.tryDrawInColor(code, {left, top}, side)) {
            _glyphs.tryDraw(code, {left + getIndent(code), top + getBaseLine()}); // a broken one stays blank
        }
        cairo_restore(context);
    }

private:
    /// Centres the advance. A mark without advance begins in the middle.
    float getIndent(unsigned int code) const {
        constexpr float side = GlyphTable::cellSide;
        constexpr float thousand = 1000.0F;
        const float advance =
            static_cast<float>(makeEntry(_font, code).advance) / thousand * _font.font->getFontSize();
        return advance > 0.0F ? std::max(0.0F, std::round((side - advance) / 2.0F)) : side / 2.0F;
    }

    float getBaseLine() const {
        constexpr float side = GlyphTable::cellSide;
        const float ascent = _font.font->getAscent();
        return std::clamp(std::round((side - ascent - _font.font->getDescent()) / 2.0F + ascent), 0.0F, side);
    }

    CairoPainter& _painter;
    const TextFont& _font;
    bool _hasColors;
    GlyphDrawing _glyphs;
};

std::string drawSheet(const TextFont& font, const unsigned int* codes, std::size_t count, int pixelRatio) {
    const auto rows = static_cast<int>((count - 1) / GlyphTable::columns) + 1;
    const auto draw = [&](CairoPainter& painter) {
        SheetDrawing sheet(painter, font, pixelRatio);
        for (std::size_t cell = 0; cell < count; ++cell) {
            sheet.draw(codes[cell], cell);
        }
    };
    const int width = GlyphTable::columns * GlyphTable::cellSide;
    const int height = rows * GlyphTable::cellSide;
    return makeDataUri(hasColors(font) ? drawInColor(width, height, pixelRatio, draw)
                                       : drawInk(width, height, pixelRatio, draw));
}

/// `[1,2,3]`
template <class Items, class Print>
std::string printList(const Items& items, const Print& print) {
    std::string text = "[";
    for (const auto& item : items) {
        text += text.size() > 1 ? "," : "";
        text += print(item);
    }
    return text + "]";
}

} // namespace

GlyphTable makeGlyphTable(const FontSource& source, std::size_t pictureLimit,
                          const PictureProgress& progress) {
    const TextFont font = source.makeFont(false, false, chooseSize(source));
    GlyphTable table;
    table.isInColor = hasColors(font);
    table.ranges = findMappedRanges(font.font->getFace()->getBasicMetrics().getCharMap());
    table.blocks = findBlocks(table.ranges);
    const std::vector<unsigned int> codes = listCharacters(table.ranges, pictureLimit);
    for (const unsigned int code : codes) {
        table.entries.push_back(makeEntry(font, code));
    }
    const int pixelRatio = codes.size() <= maxSharpCount ? 2 : 1;
    for (std::size_t done = 0; done < codes.size(); done += GlyphTable::cellsInSheet) {
        progress(done, codes.size());
        const std::size_t count = std::min(GlyphTable::cellsInSheet, codes.size() - done);
        table.sheets.push_back(drawSheet(font, codes.data() + done, count, pixelRatio));
    }
    progress(codes.size(), codes.size());
    return table;
}

std::string printJson(const GlyphTable& table) {
    const auto printRange = [](const CodeRange& range) {
        return fmt::format("[{},{}]", range.first, range.last);
    };
    const auto printBlock = [](const NamedBlock& block) {
        return fmt::format("[{},{},{}]", block.first, block.last, quoteJson(block.name));
    };
    const auto printEntry = [](const GlyphEntry& entry) {
        return fmt::format("{},{}", entry.glyphIndex, entry.advance);
    };
    return fmt::format(
        "{{\"cell\":{},\"columns\":{},\"cellsInSheet\":{},\"isInColor\":{},\n\"ranges\":{},\n\"blocks\":{},\n"
        "\"entries\":{},\n\"sheets\":{}}}",
        GlyphTable::cellSide, GlyphTable::columns, GlyphTable::cellsInSheet, table.isInColor,
        printList(table.ranges, printRange), printList(table.blocks, printBlock),
        printList(table.entries, printEntry), printList(table.sheets, quoteJson));
}

} // namespace Vell::Tool
