#pragma once

#include <FontEngine/Engine.h>

#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Vell::FontEngine {

inline std::vector<float> listAdvances(const OutlineGlyphRun& run) {
    std::vector<float> advances;
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        advances.push_back(glyph.getAdvance());
    }
    return advances;
}

inline OutlineGlyphRun layOut(const Engine& engine, boost::string_ref text, float letterSpacing = 0.0F,
                              float size = 10.0F) {
    Testing::RecordingPainter painter;
    return VectorTextPainter(painter).createGlyphRun(
        text, Testing::makeExtFontInfo(Testing::makeFontInfo("Test Sans", size), letterSpacing),
        engine.getFont(size));
}

/// Draws a text whose paths are cached, and returns the painter's operations.
inline std::vector<std::string> draw(const Engine& engine, const char* text, float letterSpacing = 0.0F) {
    layOut(engine, text);
    Testing::RecordingPainter painter;
    VectorTextPainter(painter).drawText(text, Testing::makeExtFontInfo(letterSpacing), engine.getFont());
    EXPECT_EQ(painter.getStackDepth(), 0U);
    return painter.getOperations();
}

} // namespace Vell::FontEngine
