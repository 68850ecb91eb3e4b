#include "drawing/GlyphDrawing.h"
#include "fonts/FaceFacts.h"
#include "specimen/Html.h"
#include "specimen/Picture.h"
#include "specimen/SampleText.h"
#include "specimen/SpecimenSections.h"

#include <Utils/Utils.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;

constexpr float glyphSize = 18.0F;

/// The first letters of a text without spaces.
std::vector<unsigned int> takeLetters(const std::string& text, std::size_t count) {
    std::vector<unsigned int> letters;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end && letters.size() < count) {
        const unsigned int code = decodeUtf8(position, end);
        if (code != ' ') {
            letters.push_back(code);
        }
    }
    return letters;
}

/// Rounded up to pixels, and limited to the room on the page.
int toPixels(float length) {
    constexpr float most = 2.0F * glyphSize;
    return static_cast<int>(std::ceil(std::clamp(length, 1.0F, most)));
}

int getAdvance(const TextFont& font, unsigned int code) {
    const float ems = font.font->getFace()->getBasicMetrics().getCharMap()[code].advance;
    return std::isfinite(ems) ? toPixels(ems * glyphSize) : 1;
}

/// Draws letters side by side at whole pixels.
Picture drawLetters(const TextFont& font, const std::vector<unsigned int>& letters, const GlyphLook& look) {
    constexpr int margin = 2;
    const int ascent = toPixels(font.font->getAscent());
    int width = 2 * margin;
    for (const unsigned int letter : letters) {
        width += getAdvance(font, letter);
    }
    const auto draw = [&](CairoPainter& painter) {
        GlyphDrawing drawing(painter, font, look);
        int pen = margin;
        for (const unsigned int letter : letters) {
            drawing.tryDraw(letter, {static_cast<float>(pen), static_cast<float>(ascent)});
            pen += getAdvance(font, letter);
        }
    };
    return drawInColor(width, ascent + toPixels(font.font->getDescent()), 1, draw);
}

/// Instead of what only outlines have.
std::string makeNoOutlinesNote() {
    return "<p class=\"note\">The glyphs are pictures, which have neither outlines nor sub-pixels.</p>\n";
}

} // namespace

std::string makeRenderingSection(const FontSource& source) {
    constexpr int zoom = 8;
    constexpr std::size_t letterCount = 3;
    const TextFont font = source.makeFont(false, false, glyphSize);
    if (!hasUsableMetrics(*font.font)) {
        return makeNoOutlinesNote();
    }
    const std::string sample = coversText(font, "Rag") ? "Rag" : chooseSample(font);
    const std::vector<unsigned int> letters = takeLetters(sample, letterCount);
    const Picture grey = drawLetters(font, letters, {FT_RENDER_MODE_NORMAL, 0, 1.0F});
    const Picture lcd = drawLetters(font, letters, {FT_RENDER_MODE_LCD, 0, 1.0F});
    return "<div class=\"row\">\n" +
           makeFigure(makeImage(grey, "paper", "Letters in grey, enlarged", zoom),
                      "Grey: coverage of each pixel") +
           makeFigure(makeImage(lcd, "paper", "The same letters in LCD colours, enlarged", zoom),
                      "LCD: coverage of each third of a pixel") +
           "</div>\n";
}

std::string makeOffsetsSection(const FontSource& source) {
    constexpr int zoom = 4;
    constexpr unsigned int offsetCount = 16;
    constexpr unsigned int unitsInPixel = 64;
    const TextFont font = source.makeFont(false, false, glyphSize);
    if (!hasUsableMetrics(*font.font)) {
        return makeNoOutlinesNote();
    }
    const unsigned int letter = hasGlyph(font, 'a') ? 'a' : getFirstLetter(chooseSample(font));
    std::string html = "<div class=\"row offsets\">\n";
    for (unsigned int i = 0; i < offsetCount; ++i) {
        const auto offset = static_cast<unsigned char>(i * (unitsInPixel / offsetCount));
        const Picture picture = drawLetters(font, {letter}, {FT_RENDER_MODE_NORMAL, offset, 1.0F});
        const std::string caption = fmt::format("{}/{}", i, offsetCount);
        html += makeFigure(
            makeImage(picture, "ink", "The letter shifted by " + caption + " of a pixel", zoom), caption);
    }
    return html + "</div>\n";
}

} // namespace Vell::Tool
