#pragma once

#include <CairoAdapter/Private/PortableBlending.h>
#include <CairoAdapter/Private/Sse2Blending.h>

/// What cairo's images do for the operator over, to the bit, without its way there.
namespace Vell::CairoAdapter::Internal {

#if defined(__SSE2__)
using Sse2::blendColors;
using Sse2::blendCoverage;
#else
using Portable::blendColors;
using Portable::blendCoverage;
#endif

} // namespace Vell::CairoAdapter::Internal
