#include <FontEngine/Color/Private/FE_ColorFace.h>

#include <FontLoaders/Public/FreeTypeMemory.h>

#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Vell::FontEngine::Internal {

namespace {

constexpr FT_ULong cpalTag = FT_MAKE_TAG('C', 'P', 'A', 'L');
constexpr FT_ULong colrTag = FT_MAKE_TAG('C', 'O', 'L', 'R');

FontLoaders::FTFacePtr openFace(const FontLoaders::FTLibraryPtr& library, const FaceData& data) {
    const FontLoaders::FreeTypeOperation operation(FontLoaders::openingBounds);
    return FontLoaders::createFontFace(library, data.bytes);
}

bool containsTable(FT_Face face, FT_ULong tag) {
    FT_ULong length = 0; // 0 asks for the length of the table
    return FT_Load_Sfnt_Table(face, tag, 0, nullptr, &length) == FT_Err_Ok && length != 0;
}

bool hasColorBitmaps(FT_Face face) {
    return FT_HAS_SBIX(face) || (containsTable(face, TTAG_CBLC) && containsTable(face, TTAG_CBDT));
}

float toPixels(FT_Pos value) {
    constexpr float unitsInPixel = 64.0F;
    return static_cast<float>(value) / unitsInPixel;
}

std::vector<ColorStrike> findStrikes(FT_Face face) {
    std::vector<ColorStrike> strikes;
    if (!hasColorBitmaps(face)) {
        return strikes;
    }
    for (int i = 0; i != face->num_fixed_sizes; ++i) {
        const FT_Bitmap_Size& size = face->available_sizes[i];
        if (size.x_ppem > 0 && size.y_ppem > 0) {
            strikes.push_back({i, toPixels(size.x_ppem), toPixels(size.y_ppem)});
        }
    }
    std::sort(strikes.begin(), strikes.end(), [](const ColorStrike& lhs, const ColorStrike& rhs) {
        return std::pair(lhs.ppemY, lhs.index) < std::pair(rhs.ppemY, rhs.index);
    });
    return strikes;
}

} // namespace

float readUnitsPerEm(FT_Face face) {
    constexpr unsigned short usual = 1000;
    const auto* const head = static_cast<const TT_Header*>(FT_Get_Sfnt_Table(face, FT_SFNT_HEAD));
    const unsigned short ofTable = head != nullptr && head->Units_Per_EM != 0 ? head->Units_Per_EM : usual;
    return static_cast<float>(face->units_per_EM != 0 ? face->units_per_EM : ofTable);
}

ColorFace::ColorFace(const FaceData& data)
    : _library(FontLoaders::createFreeTypeLibrary())
    , _face(openFace(_library, data))
    , _hasLayers(containsTable(_face.get(), colrTag) && containsTable(_face.get(), cpalTag))
    , _strikes(findStrikes(_face.get()))
    , _kinds(_hasLayers ? static_cast<std::size_t>(_face->num_glyphs) : 0) {}

} // namespace Vell::FontEngine::Internal
