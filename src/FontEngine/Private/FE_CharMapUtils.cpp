// Reads what a face is asked for only once: its charmap and its line metrics.

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontEngine/Private/FE_GlyphChecks.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/SymbolicFonts.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/NumCast.h>

#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <ctime>

namespace Vell::FontEngine::Internal {

using FontLoaders::FreeTypeException;
using FontLoaders::FTFacePtr;
using FontLoaders::isFTSucceeded;

namespace {

constexpr const char* assertingFile = "FontEngine/Private/FE_FreeTypeUtilsInternal";

FT_Encoding chooseEncoding(bool isSymbolic, bool isSfnt) {
    if (!isSymbolic) {
        return FT_ENCODING_UNICODE;
    }
    return isSfnt ? FT_ENCODING_MS_SYMBOL : FT_ENCODING_ADOBE_CUSTOM;
}

bool trySelect(const FTFacePtr& face, FT_Encoding encoding) {
    return isFTSucceeded(FT_Select_Charmap(face.get(), encoding));
}

void selectFirst(const FTFacePtr& face) {
    if (face->num_charmaps <= 0) {
        doFailAssert(assertingFile, 513, "face->num_charmaps > 0");
    }
    if (!isFTSucceeded(FT_Set_Charmap(face.get(), face->charmaps[0]))) {
        throw FreeTypeException("FT_Set_Charmap failed");
    }
}

bool isSfntFace(const FTFacePtr& face) {
    return (face->face_flags & FT_FACE_FLAG_SFNT) != 0;
}

bool isSymbolicFace(const FTFacePtr& face) {
    return face->family_name != nullptr && FontLoaders::isSymbolicFont(face->family_name);
}

float toEm(const FTFacePtr& face, FT_Fixed fontUnits) {
    return static_cast<float>(fontUnits) / static_cast<float>(face->units_per_EM);
}

FT_Fixed getAdvance(const FTFacePtr& face, FT_UInt glyphIndex, const char* failure) {
    FT_Fixed advance = 0;
    if (!hasGlyph(*face, glyphIndex) ||
        !isFTSucceeded(FT_Get_Advance(face.get(), glyphIndex, FT_LOAD_NO_SCALE, &advance))) {
        throw FreeTypeException(failure);
    }
    return advance;
}

/// Bounds a walk over a charmap.
///
/// A charmap of a few hundred bytes may claim four billion codes. The walk stops at the number of codes that
/// Unicode has, before memory runs out.
///
/// If a font has no table of advances, FreeType runs the program of each glyph. One program can take a third
/// of a second, and all glyphs of a font of a few hundred kilobytes can take hours. So the walk also has a
/// time limit: a fixed allowance, which such glyphs soon use up, and for each code more than a hundred times
/// what it takes in the largest real fonts. Only the thread's own time counts, so other work on the machine
/// does not matter.
class WalkBounds {
public:
    void countCode() {
        constexpr std::size_t unicodeCodeCount = 0x110000;
        constexpr std::size_t codesBetweenChecks = 16;
        if (++_codeCount > unicodeCodeCount) {
            throw FreeTypeException(
                fmt::format("The charmap has more codes than Unicode, {}", unicodeCodeCount));
        }
        if (_codeCount % codesBetweenChecks == 0) {
            throwIfTimeIsUp();
        }
    }

private:
    void throwIfTimeIsUp() const {
        constexpr double startSeconds = 5.0;
        constexpr double secondsPerCode = 20e-6;
        const double limit = startSeconds + secondsPerCode * static_cast<double>(_codeCount);
        // Reading the thread's time is expensive, and it never exceeds the elapsed time, so check that first.
        if (read(coarseClock) - _start > limit && read(CLOCK_THREAD_CPUTIME_ID) - _startOfThread > limit) {
            throw FreeTypeException("The charmap takes too long to read");
        }
    }

    static double read(clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    static constexpr clockid_t coarseClock = CLOCK_MONOTONIC_COARSE; // accurate to a few milliseconds

    double _start = read(coarseClock);
    double _startOfThread = read(CLOCK_THREAD_CPUTIME_ID);
    std::size_t _codeCount = 0;
};

/// Gives the face a size, because emboldening measures the em at the current size.
void setSmallestSize(const FTFacePtr& face) {
    const int error = FT_Set_Char_Size(face.get(), 0, 0, 0, 0);
    if (!isFTSucceeded(error)) {
        throw FreeTypeException(fmt::format("FT_Set_Char_Size() failed: {}", error));
    }
}

} // namespace

void selectFTCharmap(const FTFacePtr& face, bool isSymbolic, bool isSfnt) {
    // If a face has no Unicode charmap, this asks for it twice. The second request costs nothing.
    if (!trySelect(face, chooseEncoding(isSymbolic, isSfnt)) && !trySelect(face, FT_ENCODING_UNICODE)) {
        if (face->charmap != nullptr) {
            return;
        }
        selectFirst(face);
    }
    if (face->charmap == nullptr) {
        doFailAssert(assertingFile, 522, "nullptr != face->charmap");
    }
}

Gfx::CharMap makeCharMap(const FTFacePtr& face, GlyphTransform transform) {
    using Entry = Gfx::CharMap::GlyphIndexWithAdvance;
    const bool isSymbolic = isSymbolicFace(face);
    const bool isSfnt = isSfntFace(face);
    selectFTCharmap(face, isSymbolic, isSfnt);

    const FT_Fixed defaultAdvance = getAdvance(
        face, 0, "FT_Get_Advance() failed. It can't find glyph advance for undefined character code.");
    if (isEmboldened(transform) && FT_IS_SCALABLE(face.get())) {
        setSmallestSize(face);
    }

    Gfx::CharMap map(Entry(0, toEm(face, defaultAdvance)));
    WalkBounds bounds;
    FT_UInt glyphIndex = 0;
    FT_ULong charCode = FT_Get_First_Char(face.get(), &glyphIndex);
    while (glyphIndex != 0) {
        bounds.countCode();
        const FT_Fixed advance = getAdvance(
            face, glyphIndex, "Error making char to glyph advance cache. FT_Get_Advance() failed.");
        // A glyph index above 65,535 wraps around to a lower one. No font in practical use has such glyphs.
        const Entry entry(static_cast<unsigned short>(glyphIndex & 0xFFFFU), toEm(face, advance));
        map.insert(numCast<unsigned int>(charCode), entry, true);
        addCharCodeAliasIfRequired(map, entry, charCode, isSymbolic, isSfnt);
        charCode = FT_Get_Next_Char(face.get(), charCode, &glyphIndex);
    }
    return map;
}

void addCharCodeAliasIfRequired(Gfx::CharMap& map, const Gfx::CharMap::GlyphIndexWithAdvance& glyph,
                                unsigned long charCode, bool isSymbolic, bool isSfnt) {
    constexpr std::uint32_t privateArea = 0xF000;
    constexpr std::uint32_t rowMask = 0xFFFFFF00;
    const auto code = static_cast<std::uint32_t>(charCode & 0xFFFFFFFFU);
    if (!isSymbolic) {
        return;
    }
    if (isSfnt && (code & rowMask) == privateArea) {
        map.insert(code & ~rowMask, glyph, false);
    } else if (!isSfnt && (code & rowMask) == 0) {
        map.insert(code | privateArea, glyph, false);
    }
}

std::pair<float, float> getCapHeightAndStrikeOutPosition(const FTFacePtr& face) {
    FT_Short capHeight = face->ascender;
    auto strikeOut = static_cast<FT_Short>(face->ascender / 3);
    const auto* const os2 =
        isSfntFace(face) ? static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face.get(), FT_SFNT_OS2)) : nullptr;
    if (os2 != nullptr) {
        // The lower edge of the stroke, computed in 16 bits like the fields of the table.
        strikeOut = static_cast<FT_Short>(os2->yStrikeoutPosition - os2->yStrikeoutSize);
        constexpr FT_UShort lastVersionWithoutCapHeight = 1;
        if (os2->version > lastVersionWithoutCapHeight) {
            capHeight = os2->sCapHeight;
        }
    }
    return {toEm(face, capHeight), toEm(face, strikeOut)};
}

} // namespace Vell::FontEngine::Internal
