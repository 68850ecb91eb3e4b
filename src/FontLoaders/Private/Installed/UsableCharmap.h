#pragma once

#include <FontLoaders/Public/FreeType.h>
#include <FontLoaders/Public/SymbolicFonts.h>

#include <optional>
#include <string>

namespace Vell::FontLoaders::Internal {

/// Selects the charmap of a symbol font, which may come after other charmaps.
inline bool trySelectSymbols(FT_Face face) {
    if (face->family_name == nullptr || !isSymbolicFont(face->family_name)) {
        return false;
    }
    return isFTSucceeded(
        FT_Select_Charmap(face, FT_IS_SFNT(face) ? FT_ENCODING_MS_SYMBOL : FT_ENCODING_ADOBE_CUSTOM));
}

/// The reason why an open face has no charmap that can be selected. Empty if it has one. May select a
/// different charmap.
inline std::optional<std::string> findCharmapProblem(FT_Face face) {
    if (face->num_charmaps <= 0) {
        return "it has no charmap";
    }
    // FreeType selects a Unicode charmap when it opens a face. Without one, the first charmap must do.
    if (face->charmap != nullptr || trySelectSymbols(face) ||
        isFTSucceeded(FT_Set_Charmap(face, face->charmaps[0]))) {
        return std::nullopt;
    }
    return "its first charmap cannot be selected";
}

} // namespace Vell::FontLoaders::Internal
