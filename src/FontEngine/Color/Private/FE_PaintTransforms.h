#pragma once

#include <FontEngine/Private/FE_FontTable.h>
#include <cinder/MatrixAffine2.h>

#include <cstddef>

namespace Vell::FontEngine::Internal {

/// Whether paints of this format move, scale, turn or skew another paint. The format is that of the paint
/// without variations.
bool isPlacement(unsigned int format);

/// The size of the fields of such a paint behind the offset of the other one.
std::size_t getPlacementSize(unsigned int format);
/// Reads these fields.
cinder::MatrixAffine2<float> readPlacement(unsigned int format, TableFields& fields);

/// Reads the table that a paint with a general matrix refers to.
constexpr std::size_t affineSize = 24;
cinder::MatrixAffine2<float> readAffine(TableFields& fields);

} // namespace Vell::FontEngine::Internal
