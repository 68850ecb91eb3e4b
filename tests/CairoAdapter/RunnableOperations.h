#pragma once

#include <CairoAdapter/Private/Blending/PixelOperations.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace Vell::CairoAdapter::Testing {

/// Every implementation that this processor can run, the portable one first.
inline std::vector<Internal::PixelOperations> listRunnableOperations() {
    std::vector<Internal::PixelOperations> result;
    std::copy_if(std::begin(Internal::pixelOperations), std::end(Internal::pixelOperations),
                 std::back_inserter(result),
                 [](const Internal::PixelOperations& operations) { return operations.isRunnable(); });
    return result;
}

} // namespace Vell::CairoAdapter::Testing
