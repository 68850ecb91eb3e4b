#pragma once

#include <FontEngine/Color/Private/FE_GradientPaints.h>
#include <FontEngine/Private/FE_FontTable.h>

namespace Vell::FontEngine::Internal {

/// From the number in the file. Unknown numbers stand for Pad.
GradientExtend toExtend(unsigned int extend);

/// Read the geometry of a gradient, behind the offset of its colour line.
FontLinear readLinear(TableFields& fields);
FontRadial readRadial(TableFields& fields);
FontSweep readSweep(TableFields& fields);

} // namespace Vell::FontEngine::Internal
