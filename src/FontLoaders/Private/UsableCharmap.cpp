#include <FontLoaders/Private/UsableCharmap.h>

#include <FontLoaders/Public/FreeType.h>
#include <FontLoaders/Public/SymbolicFonts.h>

namespace Vell::FontLoaders::Internal {

namespace {

/// A symbol font is read through its own charmap, wherever that stands among the others.
bool trySelectSymbols(FT_Face face) {
    if (face->family_name == nullptr || !isSymbolicFont(face->family_name)) {
        return false;
    }
    return isFTSucceeded(
        FT_Select_Charmap(face, FT_IS_SFNT(face) ? FT_ENCODING_MS_SYMBOL : FT_ENCODING_ADOBE_CUSTOM));
}

} // namespace

std::optional<std::string> findCharmapProblem(FT_Face face) {
    if (face->num_charmaps <= 0) {
        return "it has no charmap";
    }
    // FreeType has selected a Unicode charmap while it opened the face; without one, the first must do.
    if (face->charmap != nullptr || trySelectSymbols(face) ||
        isFTSucceeded(FT_Set_Charmap(face, face->charmaps[0]))) {
        return std::nullopt;
    }
    return "its first charmap cannot be selected";
}

} // namespace Vell::FontLoaders::Internal
