#include <FontLoaders/Public/Exceptions.h>

namespace Vell::FontLoaders {

FontLoaderException::~FontLoaderException() = default;

FreeTypeException::~FreeTypeException() = default;

} // namespace Vell::FontLoaders
