#pragma once

#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <vector>

namespace Vell::FontLoaders {

/// Owning handles: each holds one reference to a FreeType library or face. Make them with the functions
/// below, which supply the deleter.
using FTLibraryPtr = std::unique_ptr<FT_LibraryRec_, void (*)(FT_LibraryRec_*)>;
using FTFacePtr = std::unique_ptr<FT_FaceRec_, void (*)(FT_FaceRec_*)>;

/// Whether a FreeType call has succeeded.
inline bool isFTSucceeded(int error) {
    return error == FT_Err_Ok;
}

/// Makes a FreeType library with the standard modules. Throws FreeTypeException, also if there is no memory
/// for one of the modules.
///
/// A library may have several owners (shareFreeTypeLibrary). It is destroyed when the last of them releases
/// it, on any thread. Its memory comes from the heap of the process, so any thread may free what was
/// allocated through it, as long as the library exists. When it is destroyed, it frees what FreeType or a
/// client has forgotten to free. No other library may use its FT_Memory. In all other respects, only one
/// thread at a time may use a library.
VELL_API FTLibraryPtr createFreeTypeLibrary();

/// Makes another owner of a library, for objects that must not outlive it, such as glyphs. Throws
/// FreeTypeException.
VELL_API FTLibraryPtr shareFreeTypeLibrary(FT_Library library);
/// Releases a reference that an FTLibraryPtr has given up with release(). For objects that reach their
/// library without storing an FTLibraryPtr.
VELL_API void releaseFreeTypeLibrary(FT_Library library);

/// Opens the first face of a font file in memory. FreeType reads the bytes in place, so the face shares their
/// ownership until it is destroyed. The library must outlive the face. FT_Face::generic is free for the
/// client. Throws FreeTypeException if FreeType does not recognise or accept the file, or if there is no
/// memory for a part of it.
VELL_API FTFacePtr createFontFace(const FTLibraryPtr& library,
                                  const NNPtr<const std::vector<unsigned char>>& bytes);

} // namespace Vell::FontLoaders
