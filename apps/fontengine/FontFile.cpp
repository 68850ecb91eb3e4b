#include "FontFile.h"

namespace Vell::Tool {

namespace {

using FontLoaders::FTFacePtr;

/// The file as such, no face of it; null when it cannot be read.
FTFacePtr openFile(const FontLoaders::FTLibraryPtr& library, const std::string& path) {
    constexpr FT_Long noFace = -1;
    FT_Face file = nullptr;
    const bool isOpen = FontLoaders::isFTSucceeded(FT_New_Face(library.get(), path.c_str(), noFace, &file));
    return {isOpen ? file : nullptr, [](FT_Face face) { FT_Done_Face(face); }};
}

} // namespace

long countFaces(const FontEngine::Font& font, const RecordingFontLoader& loader) {
    const FontEngine::FontFace& face = *font.getFace();
    const FontBytes served = face.getFaceData().bytes;
    if (const auto place = FontLoaders::findFontFile(loader.getLoader(), served)) {
        const auto library = FontLoaders::createFreeTypeLibrary();
        if (const FTFacePtr file = openFile(library, place->file)) {
            return file->num_faces;
        }
    }
    return face.getHandle()->num_faces;
}

} // namespace Vell::Tool
