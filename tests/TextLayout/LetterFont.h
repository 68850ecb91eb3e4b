#pragma once

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>

#include <FontEngine/FontEngine.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace Vell::Testing {

/// A font "Test Sans" whose letters from a to z are 600 units wide, its space 250, in a factory that has
/// nothing else.
inline NNPtr<const FontEngine::FontFactory> makeBuiltFonts() {
    FontBuilder font("Test Sans");
    const unsigned int letter = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    for (std::uint32_t code = 'a'; code <= 'z'; ++code) {
        font.map(code, letter + (code - 'a'));
        font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    }
    font.map(' ', font.addGlyph(makeBoxGlyph(250, 0, 0, 0, 0)));
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Sans", false, false, font.build());
    loader->setDefaultFont(false, false, font.build());
    return FontEngine::FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)),
                                           "Test Sans");
}

} // namespace Vell::Testing
