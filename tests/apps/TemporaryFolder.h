#pragma once

#include <support/TemporaryFolder.h>

namespace Vell::Tool::Testing {

using Vell::Testing::readBytes;
using Vell::Testing::TemporaryFolder;
using Vell::Testing::writeBytes;

} // namespace Vell::Tool::Testing
