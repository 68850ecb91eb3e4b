#pragma once

#include <support/ByteWriter.h>

#include <FontLoaders/Public/FreeType.h>

namespace Vell::Testing {

/// A font file opened with FreeType, with everything that the face depends on. Throws FreeTypeException.
struct OpenedFont {
    explicit OpenedFont(Bytes file)
        : bytes(std::make_shared<const Bytes>(std::move(file)))
        , library(FontLoaders::createFreeTypeLibrary())
        , face(FontLoaders::createFontFace(library, bytes)) {}

    FT_Face operator->() const { return face.get(); }
    FT_Face get() const { return face.get(); }

    NNPtr<const Bytes> bytes;
    FontLoaders::FTLibraryPtr library;
    FontLoaders::FTFacePtr face;
};

} // namespace Vell::Testing
