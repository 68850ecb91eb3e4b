#pragma once

#include <vector>

namespace Vell::FontLoaders::Internal {

/// Whether the bytes are a collection (.ttc, .otc): one file with several faces, which may share tables.
bool isCollection(const std::vector<unsigned char>& bytes);

/// Makes a font file of one face of a collection, with its tables unchanged. `index` counts from 0.
///
/// Any bytes are safe to pass. Throws FontLoaderException if there is no such face, or if its tables together
/// claim more bytes than the file has: such a file is damaged, and a few bytes of it could expand to
/// gigabytes. The text of the exception does not contain the name of the file.
std::vector<unsigned char> extractFace(const std::vector<unsigned char>& bytes, unsigned int index);

} // namespace Vell::FontLoaders::Internal
