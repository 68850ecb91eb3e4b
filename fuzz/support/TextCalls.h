#pragma once

#include <support/Descriptions.h>

#include <FontEngine/FE_Font.h>
#include <cinder/MatrixAffine2.h>

#include <string>

namespace Vell::Fuzz {

/// The transform and the ratio that a text is drawn with.
struct TextPlace {
    cinder::MatrixAffine2<float> transform;
    float devicePixelRatio = 1.0F;
    bool isFlipped = false;
};

/// Draws `text` with the raster painter. Throws Finding if there are more glyphs than characters, or if the
/// painter's transforms are not restored.
void drawRaster(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place);

/// Like drawRaster, with the vector painter.
void drawVector(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place);

/// Reads every line metric.
void measureLine(const Gfx::FontMetrics& metrics);

/// Throws Finding unless countCharsForWidth selects the longest part of `text` that is no wider than `width`,
/// as getTextWidth measures it.
void checkCountedChars(const std::string& text, float width, const Testing::ExtFontInfoPtr& extFontInfo,
                       const Gfx::FontMetrics& metrics);

} // namespace Vell::Fuzz
