#pragma once

#include <support/ClientDescriptions.h>
#include <support/FontBuilder.h>
#include <support/FontSandbox.h>

#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <string>

namespace Vell::Testing {

/// Makes a font of blank glyphs for the letters A to Z, which tests find by its family and style.
inline FontBuilder makeBlankFont(const std::string& family, unsigned int weight = 400, bool italic = false,
                                 const std::vector<std::pair<char32_t, char32_t>>& characters = {
                                     {'A', 'Z'}}) {
    FontBuilder font(family);
    font.setWeight(weight, italic);
    const unsigned int blank = font.addGlyph(FontGlyph());
    for (const auto& [first, last] : characters) {
        font.mapRange({first, last, blank});
    }
    return font;
}

inline std::shared_ptr<const Bytes> load(const NNPtr<FontLoaders::FontLoader>& loader,
                                         const std::string& name, bool bold = false, bool italic = false) {
    return loader->loadFont(makeClientFaceInfo(name, bold, italic));
}

} // namespace Vell::Testing
