#pragma once

#include "fonts/TextFont.h"

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>
#include <support/TemporaryFolder.h>

namespace Vell::Testing {

using Tool::FactoryPtr;
using Tool::TextFont;

/// A machine with two fonts. "Test Sans" has 'A' and '_', 0.6 em wide, and a space of 0.25 em; "Test Greek",
/// which is taller, serves U+03B1 as a fallback, 0.9 em wide.
inline FactoryPtr makeTestFactory() {
    using namespace Vell::Testing;
    FontBuilder sans("Test Sans");
    sans.map('A', sans.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    sans.map('_', sans.addGlyph(makeBoxGlyph(600, 0, -100, 600, 0)));
    sans.map(' ', sans.addGlyph({250, {}, {}}));
    FontBuilder greek("Test Greek");
    greek.setLine(1100, -300);
    greek.map(0x03B1, greek.addGlyph(makeBoxGlyph(900, 100, 0, 800, 500)));

    const auto loader = makeNNPtr<CountingLoader>();
    loader->setFont("Test Sans", false, false, sans.build());
    loader->setFont("Test Greek", false, false, greek.build());
    loader->setDefaultFont(false, false, sans.build());
    loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x03B1), "Test Greek");
    return FontEngine::FontFactory::create(loader, "Test Sans");
}

inline TextFont makeTestFont(const FactoryPtr& factory, float size = 10.0F, float letterSpacing = 0.0F) {
    return Tool::makeTextFont(factory, {"Test Sans", false, false, size, letterSpacing});
}

inline void writeFont(const std::string& path, const Vell::Testing::FontBuilder& font) {
    const Vell::Testing::Bytes bytes = font.build();
    writeBytes(path, std::string(bytes.begin(), bytes.end()));
}

} // namespace Vell::Testing
