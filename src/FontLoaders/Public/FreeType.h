#pragma once

#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <vector>

namespace Vell::FontLoaders {

/// Own one reference to a FreeType library or face. Which function releases it is theirs to know: make them
/// with the functions below.
using FTLibraryPtr = std::unique_ptr<FT_LibraryRec_, void (*)(FT_LibraryRec_*)>;
using FTFacePtr = std::unique_ptr<FT_FaceRec_, void (*)(FT_FaceRec_*)>;

/// Whether a FreeType call returned "no error".
inline bool isFTSucceeded(int error) {
    return error == FT_Err_Ok;
}

/// A new FreeType library with the standard modules. Throws FreeTypeException, also when there is no memory
/// for one of the modules.
///
/// A library may be shared between owners (shareFreeTypeLibrary): it ends with the last of them, on whichever
/// thread that is. Its memory comes from the heap of the process, so what was allocated through it may be
/// freed on any thread, too, as long as the library lasts: at its end it takes along what FreeType or a
/// client has forgotten to free. Its FT_Memory is for no other library. Everything else in a library must be
/// used by one thread at a time.
VELL_API FTLibraryPtr createFreeTypeLibrary();

/// One more owner of a library, for objects that must not outlive it, such as glyphs.
VELL_API FTLibraryPtr shareFreeTypeLibrary(FT_Library library);
/// Ends the ownership that an FTLibraryPtr has given up with release(), for objects that find their library
/// without it.
VELL_API void releaseFreeTypeLibrary(FT_Library library);

/// Opens the first face of a font file in memory. FreeType reads the bytes in place; the face shares their
/// ownership and releases them last. The library must outlive the face. FT_Face::generic is left to the
/// client. Throws FreeTypeException when FreeType does not know or accept the file, and when there is no
/// memory for a part of it.
VELL_API FTFacePtr createFontFace(const FTLibraryPtr& library,
                                  const NNPtr<const std::vector<unsigned char>>& bytes);

} // namespace Vell::FontLoaders
