// Loads the glyphs of a face as bitmaps and as outlines.

#include <FontEngine/Private/FE_BitmapRows.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontEngine/Private/FE_GlyphCaches.h>
#include <FontEngine/Private/FE_GlyphChecks.h>
#include <FontEngine/Private/FE_PictureBounds.h>
#include <FontEngine/Private/FE_RasterWork.h>
#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/FreeTypeMemory.h>
#include <Utils/Public/Assert.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace Vell::FontEngine::Internal {

using FontLoaders::FTFacePtr;
using FontLoaders::FTLibraryPtr;

namespace {

constexpr const char* file = "FontEngine/Private/FE_FreeTypeUtilsInternal";

constexpr int autoHint = FT_LOAD_FORCE_AUTOHINT;
constexpr int light = FT_LOAD_TARGET_LIGHT;

constexpr bool isCyrillic(unsigned int code) {
    return code >= 0x410 && code <= 0x44F;
}

constexpr bool isDigit(unsigned int code) {
    return code >= '0' && code <= '9';
}

using Rule = int (*)(unsigned int code);

constexpr int hintByDefault(unsigned int) {
    return 0;
}

constexpr int alwaysAutoHint(unsigned int) {
    return autoHint;
}

constexpr int autoHintCyrillic(unsigned int code) {
    return isCyrillic(code) ? autoHint : 0;
}

constexpr int autoHintRAndX(unsigned int code) {
    return code == 'r' || code == 'x' ? autoHint : 0;
}

constexpr int lightCyrillic(unsigned int code) {
    return isCyrillic(code) ? light : 0;
}

constexpr int lightCyrillicAndDigits(unsigned int code) {
    return isCyrillic(code) || isDigit(code) ? light : 0;
}

constexpr int lightOrAutoHintAsterisk(unsigned int code) {
    return code == '*' ? autoHint : lightCyrillicAndDigits(code);
}

struct Family {
    std::string_view name;
    Rule regular;
    Rule bold;
    Rule italic;
    Rule boldItalic;
};

/// Tuned by eye for each family. In a row, hintByDefault is as deliberate as the other rules.
constexpr std::array<Family, 8> families{{
    {"Times New Roman", hintByDefault, hintByDefault, hintByDefault, autoHintRAndX},
    {"Charter", alwaysAutoHint, hintByDefault, alwaysAutoHint, alwaysAutoHint},
    {"Yu Gothic", alwaysAutoHint, alwaysAutoHint, alwaysAutoHint, alwaysAutoHint},
    {"Yu Gothic Medium", alwaysAutoHint, alwaysAutoHint, alwaysAutoHint, alwaysAutoHint},
    {"Gulim", autoHintCyrillic, autoHintCyrillic, autoHintCyrillic, autoHintCyrillic},
    {"Cormorant", lightCyrillic, lightCyrillic, lightCyrillic, lightCyrillic},
    {"Helvetica", lightOrAutoHintAsterisk, lightCyrillicAndDigits, lightCyrillicAndDigits, hintByDefault},
    {"Helvetica Light", hintByDefault, hintByDefault, hintByDefault, hintByDefault},
}};

const Family* findFamily(std::string_view name) {
    for (const Family& family : families) {
        if (family.name == name) {
            return &family;
        }
    }
    return nullptr;
}

Rule chooseRule(const Family& family, bool isBold, bool isItalic) {
    if (isBold) {
        return isItalic ? family.boldItalic : family.bold;
    }
    return isItalic ? family.italic : family.regular;
}

/// Returns the load flags that select the hinting of a glyph; 0 leaves the choice to FreeType. Some families
/// look better with the auto-hinter or with light hinting, sometimes only some of their characters in some
/// styles. `family` is the family name in the font file, which is compared exactly. It may be null.
int getHintingFlags(const char* family, const BitmapGlyphInfo& info) {
    const Family* const found = family != nullptr ? findFamily(family) : nullptr;
    return found != nullptr ? chooseRule(*found, info.isBold(), info.isItalic())(info.getUnicode()) : 0;
}

/// Before the requested glyph, the auto-hinter loads glyphs of its own choice. In some fonts that might not
/// end, so this disables the auto-hinter for them.
int restrainAutoHinter(FT_Face face, int flags) {
    constexpr int unhinted = FT_LOAD_NO_HINTING | FT_LOAD_NO_SCALE;
    constexpr int withoutAutoHinter = FT_LOAD_NO_AUTOHINT;
    return (flags & unhinted) != 0 || FontLoaders::hasBoundedGlyphs(face) ? flags : flags | withoutAutoHinter;
}

/// Whether FreeType would load a picture that may take all memory or time. Only faces without outlines load
/// pictures at all.
bool isPictureRefused(FT_Face face, FT_UInt glyphIndex, int flags) {
    constexpr int withoutPictures = FT_LOAD_NO_BITMAP | FT_LOAD_NO_SCALE;
    constexpr auto anyNumber = std::numeric_limits<std::uint64_t>::max(); // FreeType's memory bounds it
    if ((flags & withoutPictures) != 0 || !FT_IS_SFNT(face)) {
        return false;
    }
    const FT_Size_Metrics& size = face->size->metrics;
    return checkPicture(face, {glyphIndex, size.x_ppem, size.y_ppem, anyNumber}) == PictureVerdict::Refused;
}

FT_Error tryLoadGlyph(FT_Face face, unsigned long index, int flags) {
    if (!hasGlyph(*face, index)) {
        return FT_Err_Invalid_Argument;
    }
    const auto glyphIndex = static_cast<FT_UInt>(index);
    if (isPictureRefused(face, glyphIndex, flags)) {
        return FT_Err_Invalid_File_Format; // as for a broken picture
    }
    const int restrained = restrainAutoHinter(face, flags);
    const FT_Error error = FontLoaders::findGlyphError(face, glyphIndex, restrained);
    return error == FT_Err_Ok ? FT_Load_Glyph(face, glyphIndex, restrained) : error;
}

void loadGlyph(const FTFacePtr& face, const GlyphInfo& info, int flags) {
    throwIfGlyphFailed("FT_Load_Glyph() failed, error: {}, glyph index: {} ",
                       tryLoadGlyph(face.get(), info.getGlyphIndex(), flags), info);
}

GlyphOwner takeGlyph(const FTFacePtr& face, const GlyphInfo& info) {
    FTLibraryPtr library = FontLoaders::shareFreeTypeLibrary(face->glyph->library);
    FT_Glyph glyph = nullptr;
    throwIfGlyphFailed("FT_Get_Glyph() failed, error: {}, glyph index: {} ",
                       FT_Get_Glyph(face->glyph, &glyph), info);
    static_cast<void>(library.release()); // GlyphReleaser finds it in the glyph
    return GlyphOwner(glyph);
}

void transformSlot(const FTFacePtr& face, const GlyphInfo& info, OutlineScale scale) {
    if (info.getTransform() != GlyphTransform::None) {
        applyGlyphTransform(face, &face->glyph->outline, info.getTransform(), scale);
    }
}

void shiftByOffset(const FTFacePtr& face, const BitmapGlyphInfo& info) {
    constexpr FT_Fixed one = 0x10000;
    FT_Matrix identity{one, 0, 0, one};
    FT_Vector offset{info.getOffsetInsidePixel(), 0}; // 1/64 pixel is FreeType's 26.6
    FT_Set_Transform(face.get(), &identity, &offset);
}

int getLoadFlags(const FTFacePtr& face, const BitmapGlyphInfo& info) {
    const int noEmbeddedBitmap = FT_IS_SCALABLE(face.get()) ? FT_LOAD_NO_BITMAP : 0;
    return getHintingFlags(face->family_name, info) | noEmbeddedBitmap;
}

void throwIfNotRendered(int error, const BitmapGlyphInfo& info) {
    throwIfGlyphFailed("Failed to get bitmap for glyph, error: {}, glyph index: {} ", error, info);
}

void rasterise(GlyphOwner& owner, const BitmapGlyphInfo& info) {
    // FreeType replaces the glyph. It owns the old one during the call; the glyph that it leaves, even after
    // an error, belongs to us.
    FT_Glyph glyph = owner.release();
    const int error = FT_Glyph_To_Bitmap(&glyph, info.getRenderMode(), nullptr, 1);
    owner.reset(glyph);
    throwIfNotRendered(error, info);
}

bool canRender(const FT_Outline& outline, FT_Render_Mode mode, unsigned int pixelsPerEm) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    return !exceedsPixelLimit(box, mode) && !exceedsWorkLimit(outline, box, mode, pixelsPerEm);
}

bool canRender(const FT_GlyphRec_& glyph, FT_Render_Mode mode, unsigned int pixelsPerEm) {
    if (glyph.format == FT_GLYPH_FORMAT_OUTLINE) {
        return canRender(reinterpret_cast<const FT_OutlineGlyphRec_&>(glyph).outline, mode, pixelsPerEm);
    }
    const FT_Bitmap& bitmap = reinterpret_cast<const FT_BitmapGlyphRec_&>(glyph).bitmap;
    return !exceedsPixelLimit(bitmap.width, bitmap.rows);
}

void makeBitmap(GlyphOwner& owner, const BitmapGlyphInfo& info, unsigned int pixelsPerEm) {
    if (owner->format != FT_GLYPH_FORMAT_OUTLINE && owner->format != FT_GLYPH_FORMAT_BITMAP) {
        doFailAssert(file, 658,
                     "glyph->format == FT_GLYPH_FORMAT_OUTLINE || glyph->format == FT_GLYPH_FORMAT_BITMAP",
                     "Unsupported glyph format!");
    }
    if (!canRender(*owner, info.getRenderMode(), pixelsPerEm)) {
        throwIfNotRendered(FT_Err_Raster_Overflow, info);
    }
    if (owner->format == FT_GLYPH_FORMAT_OUTLINE) {
        rasterise(owner, info);
    }
}

FT_Pos getBoldStrength(const FTFacePtr& face, OutlineScale scale) {
    constexpr int partOfEm = 24;
    switch (scale) {
    case OutlineScale::Scaled:
        return FT_MulFix(face->units_per_EM, face->size->metrics.y_scale) / partOfEm;
    case OutlineScale::FontUnits:
        return face->units_per_EM / partOfEm;
    }
    return 0;
}

} // namespace

void applyGlyphTransform(const FTFacePtr& face, FT_Outline* outline, GlyphTransform transform,
                         OutlineScale scale) {
    if (isEmboldened(transform)) {
        FT_Outline_Embolden(outline, getBoldStrength(face, scale));
    }
    if (isSlanted(transform)) {
        constexpr FT_Fixed one = 0x10000;
        constexpr FT_Fixed slope = 0x366A; // tan 12 degrees, rounded in 16.16
        const FT_Matrix slant{one, slope, 0, one};
        FT_Outline_Transform(outline, &slant);
    }
}

void GlyphReleaser::operator()(FT_GlyphRec_* glyph) const {
    FT_Library const library = glyph->library;
    FT_Done_Glyph(glyph);
    FontLoaders::releaseFreeTypeLibrary(library);
}

GlyphOwner renderBitmapGlyph(const BitmapGlyphInfo& info, const FTFacePtr& face, bool flipVertically) {
    shiftByOffset(face, info);
    loadGlyph(face, info, getLoadFlags(face, info));
    transformSlot(face, info, OutlineScale::Scaled);
    const FontLoaders::FreeTypeGlyphMemory glyphMemory;
    GlyphOwner owner = takeGlyph(face, info);
    makeBitmap(owner, info, face->size->metrics.y_ppem);

    auto* const glyph = reinterpret_cast<FT_BitmapGlyph>(owner.get());
    if (flipVertically) {
        flipRows(glyph->bitmap);
    }
    if (info.getUnicode() == '_' && isJoinable(glyph->bitmap)) {
        throwIfNotRendered(joinUnderscore(glyph, info.isLast(), face->memory), info);
    }
    return owner;
}

std::shared_ptr<const FT_BitmapGlyphRec_> createBitmapGlyph(const BitmapGlyphInfo& info,
                                                            const FTFacePtr& face, bool flipVertically) {
    const std::shared_ptr<FT_GlyphRec_> glyph = renderBitmapGlyph(info, face, flipVertically);
    return {glyph, reinterpret_cast<FT_BitmapGlyph>(glyph.get())};
}

std::shared_ptr<FT_GlyphRec_> createOutlineGlyph(const GlyphInfo& info,
                                                 const NNPtr<const FontFace>& fontFace) {
    if (!fontFace) {
        doFailAssert(file, 699, "fontFace");
    }
    const FTFacePtr& face = fontFace->getHandle();
    FT_Set_Transform(face.get(), nullptr, nullptr);
    loadGlyph(face, info, FT_LOAD_NO_SCALE | FT_LOAD_FORCE_AUTOHINT);
    transformSlot(face, info, OutlineScale::FontUnits);
    const FontLoaders::FreeTypeGlyphMemory glyphMemory;
    return takeGlyph(face, info);
}

} // namespace Vell::FontEngine::Internal
