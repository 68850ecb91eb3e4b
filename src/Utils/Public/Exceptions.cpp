#include <Utils/Public/Exceptions.h>

namespace Vell {

BaseRuntimeError::~BaseRuntimeError() = default;

BadNumCastError::~BadNumCastError() = default;

} // namespace Vell
