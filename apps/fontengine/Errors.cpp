#include "Errors.h"

#include <system_error>

namespace Vell::Tool {

std::string describeErrno(int error) {
    return std::generic_category().message(error);
}

} // namespace Vell::Tool
