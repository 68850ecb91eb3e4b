#pragma once

#include <support/Descriptions.h>

#include <FontEngine/FE_Font.h>
#include <cinder/MatrixAffine2.h>

#include <string>

namespace Vell::Fuzz {

/// Where and how large a text is drawn.
struct TextPlace {
    cinder::MatrixAffine2<float> transform;
    float devicePixelRatio = 1.0F;
    bool isFlipped = false;
};

/// Draws `text` with the raster painter. Throws Finding unless the glyphs are no more than the characters and
/// the painter's transforms are as before.
void drawRaster(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place);

/// The same with the vector painter.
void drawVector(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place);

/// Asks for every line metric.
void measureLine(const Gfx::FontMetrics& metrics);

/// Throws Finding unless countCharsForWidth takes the longest part of `text` that is no wider than `width` by
/// getTextWidth.
void checkCountedChars(const std::string& text, float width, const Testing::ExtFontInfoPtr& extFontInfo,
                       const Gfx::FontMetrics& metrics);

} // namespace Vell::Fuzz
