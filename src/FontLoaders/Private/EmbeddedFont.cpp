#include <FontLoaders/Private/EmbeddedFont.h>

// The first byte of the font and the one behind its last.
extern "C" const unsigned char fontengineEmbeddedFontBegin[];
extern "C" const unsigned char fontengineEmbeddedFontEnd[];

namespace Vell::FontLoaders::Internal {

FontBytes loadEmbeddedFont() {
    return std::make_shared<const std::vector<unsigned char>>(&fontengineEmbeddedFontBegin[0],
                                                              &fontengineEmbeddedFontEnd[0]);
}

} // namespace Vell::FontLoaders::Internal
