#pragma once

#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <FontEngine/FE_FontFactory.h>
#include <Gfx/Gfx.h>

#include <memory>

namespace Vell::Gfx {

using BasicMetricsPtr = NNPtr<const BasicMetrics>;

/// Advances: 'i' a quarter of an em, 'm' a whole em, missing characters half an em.
inline Testing::FontBuilder makeMetricsFont() {
    Testing::Os2Table os2;
    os2.capHeight = 625;
    os2.strikeoutPosition = 425;
    os2.strikeoutSize = 50;
    Testing::FontBuilder font("Test Sans");
    font.setLine(750, -250, 250).setOs2(os2);
    font.map('i', font.addGlyph({250, {}, {}}));
    font.map('m', font.addGlyph({1000, {}, {}}));
    font.map(0x20AC, font.addGlyph({750, {}, {}}));
    return font;
}

/// Makes metrics. Only the engine can, so they share the ownership of a face.
inline BasicMetricsPtr makeMetrics() {
    const auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("Test Sans", false, false, makeMetricsFont().build());
    const auto factory = FontEngine::FontFactory::create(loader, "");
    const std::shared_ptr<const FontEngine::FontFace> face =
        factory->getFace(Testing::makeFaceInfo("Test Sans"));
    return std::shared_ptr<const BasicMetrics>(face, &face->getBasicMetrics());
}

} // namespace Vell::Gfx
