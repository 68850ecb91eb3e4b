#pragma once

#include <vector>

namespace Vell::FontLoaders::Internal {

/// Whether the bytes are a collection (.ttc, .otc), several faces that share tables in one file.
bool isCollection(const std::vector<unsigned char>& bytes);

/// Writes one face of a collection as a font file of its own, its tables unchanged. Counts faces from 0.
///
/// Any bytes are safe to pass. Throws FontLoaderException, whose text does not know the file's name, when
/// there is no such face, or when its tables claim more bytes than the file has: such a file is damaged,
/// however it is read, and might blow a few bytes up to gigabytes.
std::vector<unsigned char> extractFace(const std::vector<unsigned char>& bytes, unsigned int index);

} // namespace Vell::FontLoaders::Internal
