#include <FontLoaders/Public/CoverageFallback.h>

namespace Vell::FontLoaders {

CoverageFallback::~CoverageFallback() = default;

} // namespace Vell::FontLoaders
