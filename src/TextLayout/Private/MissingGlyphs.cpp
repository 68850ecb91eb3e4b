#include <TextLayout/Private/MissingGlyphs.h>

#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/HarfBuzzHandles.h>
#include <TextLayout/Private/IcuErrors.h>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <new>

namespace Vell::TextLayout {

namespace {

const UNormalizer2* getNormalizer() {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFCInstance(&status);
    throwIfFailed("unorm2_getNFCInstance", status);
    return normalizer;
}

bool hasDecomposition(char32_t character) {
    UChar decomposition[1]; // the length alone is of interest
    UErrorCode status = U_ZERO_ERROR;
    return unorm2_getRawDecomposition(getNormalizer(), static_cast<UChar32>(character), decomposition, 1,
                                      &status) >= 0;
}

bool composes(char32_t first, char32_t second) {
    return unorm2_composePair(getNormalizer(), static_cast<UChar32>(first), static_cast<UChar32>(second)) >=
           0;
}

HarfBuzzPtr<hb_buffer_t> makeBuffer(std::u32string_view cluster) {
    HarfBuzzPtr<hb_buffer_t> buffer(hb_buffer_create());
    const auto length = static_cast<int>(cluster.size());
    hb_buffer_set_flags(buffer.get(),
                        static_cast<hb_buffer_flags_t>(HB_BUFFER_FLAG_BOT | HB_BUFFER_FLAG_EOT)); // NOLINT
    hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(cluster.data()), length, 0,
                        length);
    hb_buffer_guess_segment_properties(buffer.get());
    return buffer;
}

} // namespace

bool hasAllGlyphs(ShapingFont& font, std::u32string_view cluster) {
    const AllocationWatch watch;
    const HarfBuzzPtr<hb_buffer_t> buffer = makeBuffer(cluster);
    const bool isShaped = hb_shape_full(font.getHandle(), buffer.get(), nullptr, 0, nullptr) != 0;
    font.check(watch);
    if (!isShaped || hb_buffer_allocation_successful(buffer.get()) == 0) {
        throw std::bad_alloc();
    }
    unsigned int length = 0;
    const hb_glyph_info_t* const glyphs = hb_buffer_get_glyph_infos(buffer.get(), &length);
    return std::none_of(glyphs, glyphs + length,
                        [](const hb_glyph_info_t& glyph) { return glyph.codepoint == 0; });
}

bool mayDoWithoutFirst(std::u32string_view cluster) {
    constexpr char32_t nonBreakingHyphen = 0x2011;
    const char32_t first = cluster.front();
    return u_charType(static_cast<UChar32>(first)) == U_SPACE_SEPARATOR || first == nonBreakingHyphen ||
           getTraits(first).isDefaultIgnorable() || hasDecomposition(first) ||
           std::any_of(cluster.begin() + 1, cluster.end(),
                       [first](char32_t character) { return composes(first, character); });
}

} // namespace Vell::TextLayout
