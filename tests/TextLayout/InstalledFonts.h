#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <TextLayout/Public/TextShaper.h>

namespace Vell::Testing {

/// A factory and a shaper that the tests of one program share, so that each font is opened once.
inline NNPtr<const FontEngine::FontFactory> getInstalledFonts() {
    static const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    return factory;
}

inline const TextLayout::TextShaper& getShaper() {
    static const TextLayout::TextShaper shaper(getInstalledFonts());
    return shaper;
}

} // namespace Vell::Testing
