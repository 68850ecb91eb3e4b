#pragma once

#include <cairo.h>

#include <string>

namespace Vell::Tool {

/// What cairo writes a document through: appends the data to the std::string behind `bytes`, which must
/// outlive the surface. The status of a surface tells when there was no memory.
cairo_status_t appendBytes(void* bytes, const unsigned char* data, unsigned int length);

/// An image surface as a PNG file, in memory. Throws CairoAdapterException. The thread of the surface.
std::string encodePng(cairo_surface_t* surface);

} // namespace Vell::Tool
