#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>

namespace Vell::FontLoaders {

/// One face of a font file as a font file of its own: what a loader serves for a face of a collection (.ttc,
/// .otc), because a font factory opens the first face of the bytes that it gets.
///
///     const FontBytes korean = extractFontFace(readFont("NotoSansCJK-Regular.ttc"), 1);
///
/// `index` counts the faces of the file from 0. A file that is no collection has the face 0 only, and its
/// bytes come back as they are. The tables of the face stay unchanged. Any bytes are safe to pass; whether
/// the face can be served is for findReasonNotToServe to say. Throws FontLoaderException when the file has no
/// such face or its tables are damaged; the text does not know the name of the file. Any thread.
VELL_API FontBytes extractFontFace(const NNPtr<const std::vector<unsigned char>>& file, unsigned int index);

} // namespace Vell::FontLoaders
