#include <FontEngine/FE_Exceptions.h>

namespace Vell::FontEngine {

FontEngineException::~FontEngineException() = default;

} // namespace Vell::FontEngine
