#include <FontLoaders/Public/FontLoader.h>

namespace Vell::FontLoaders {

FontLoader::~FontLoader() = default;

} // namespace Vell::FontLoaders
