#include <FontLoaders/Private/EmbeddedFont.h>

namespace Vell::FontLoaders::Internal {

FontBytes loadEmbeddedFont() {
    return nullptr;
}

} // namespace Vell::FontLoaders::Internal
