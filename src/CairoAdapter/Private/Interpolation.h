#pragma once

#include <CairoAdapter/Private/PortableInterpolation.h>
#include <CairoAdapter/Private/Sse2Interpolation.h>

/// What cairo's images make of bitmaps between their pixels, to the bit, without its way there.
namespace Vell::CairoAdapter::Internal {

#if defined(__SSE2__)
using Sse2::interpolate;
#else
using Portable::interpolate;
#endif

} // namespace Vell::CairoAdapter::Internal
