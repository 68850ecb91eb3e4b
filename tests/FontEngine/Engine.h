#pragma once

#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <FontEngine/FE_FontFactory.h>

#include <memory>
#include <string>

namespace Vell::FontEngine {

using FacePtr = NNPtr<const FontFace>;
using FactoryPtr = NNPtr<FontFactory>;

/// A font of 1000 units per em whose glyphs are boxes. Glyph 0, the missing glyph, has an advance of 500 and
/// a box of 50..450 x 0..700.
inline Testing::FontBuilder makeTestFont(const std::string& family = "Test Sans") {
    Testing::FontBuilder font(family);
    font.setNotdef(Testing::makeBoxGlyph(500, 50, 0, 450, 700));
    font.map('A', font.addGlyph(Testing::makeBoxGlyph(600, 100, 0, 500, 700)));
    font.map('_', font.addGlyph(Testing::makeBoxGlyph(500, 0, -100, 500, -50)));
    font.map('x', font.addGlyph(Testing::makeBoxGlyph(400, 0, 0, 400, 500)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    return font;
}

/// The glyph indices of that font.
struct TestGlyph {
    static constexpr unsigned int missing = 0;
    static constexpr unsigned int a = 1;
    static constexpr unsigned int underscore = 2;
    static constexpr unsigned int x = 3;
    static constexpr unsigned int space = 4;
};

/// A factory with a loader that has only the test font, as "Test Sans" regular.
struct Engine {
    explicit Engine(const Testing::Bytes& font = makeTestFont().build()) {
        loader->setFont("Test Sans", false, false, font);
    }

    FacePtr getFace(const std::string& name = "Test Sans", bool bold = false, bool italic = false) const {
        return factory->getFace(Testing::makeFaceInfo(name, bold, italic));
    }
    Font getFont(float size = 10.0F) const {
        return factory->getFont(Testing::makeFontInfo("Test Sans", size));
    }

    std::shared_ptr<Testing::CountingLoader> loader = std::make_shared<Testing::CountingLoader>();
    FactoryPtr factory = FontFactory::create(loader, "Default Family");
};

} // namespace Vell::FontEngine
