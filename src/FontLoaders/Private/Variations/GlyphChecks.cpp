#include <FontLoaders/Private/Variations/GlyphChecks.h>

#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>
#include <FontLoaders/Private/HarfBuzz.h>
#include <FontLoaders/Private/Variations/InstanceTables.h>
#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr hb_tag_t outlineTables[] = {
    HB_TAG('a', 'v', 'a', 'r'), HB_TAG('f', 'v', 'a', 'r'), HB_TAG('g', 'l', 'y', 'f'),
    HB_TAG('g', 'v', 'a', 'r'), HB_TAG('h', 'e', 'a', 'd'), HB_TAG('h', 'h', 'e', 'a'),
    HB_TAG('h', 'm', 't', 'x'), HB_TAG('l', 'o', 'c', 'a'), HB_TAG('m', 'a', 'x', 'p')};

/// The font without tables that could give a glyph another extent, such as pictures.
HarfBuzzFacePtr keepOutlines(hb_face_t* font) {
    const auto reference = [](hb_face_t*, hb_tag_t tag, void* whole) {
        const bool isKept =
            std::find(std::begin(outlineTables), std::end(outlineTables), tag) != std::end(outlineTables);
        return isKept ? hb_face_reference_table(static_cast<hb_face_t*>(whole), tag) : hb_blob_get_empty();
    };
    return HarfBuzzFacePtr(hb_face_create_for_tables(reference, font, nullptr));
}

[[noreturn]] void throwUnreadable(unsigned int glyph) {
    throw FontLoaderException(fmt::format("the variable font is damaged: glyph {} cannot be read", glyph));
}

/// The beginnings of the glyphs. Throws where HarfBuzz and others might read something else than this.
class GlyphHeaders {
public:
    explicit GlyphHeaders(hb_face_t* font)
        : _glyf(readTable(font, HB_TAG('g', 'l', 'y', 'f')))
        , _loca(readTable(font, HB_TAG('l', 'o', 'c', 'a'))) {
        constexpr std::uint64_t offsetFormatAt = 50;
        constexpr std::uint64_t glyphFormatAt = 52;
        const Table head = readTable(font, HB_TAG('h', 'e', 'a', 'd'));
        const unsigned int offsetFormat = viewBytes(head).u16(offsetFormatAt).value_or(2);
        if (offsetFormat > 1 || viewBytes(head).u16(glyphFormatAt).value_or(1) != 0) {
            throw FontLoaderException("the variable font is damaged: its glyphs have an unknown format");
        }
        _isLong = offsetFormat == 1;
    }

    /// Where the glyph begins, if it has an outline or parts.
    std::optional<std::uint64_t> findContent(unsigned int glyph) const {
        constexpr std::uint64_t headerBytes = 10;
        const std::optional<std::uint64_t> begin = getOffset(glyph);
        const std::optional<std::uint64_t> end = getOffset(std::uint64_t{glyph} + 1);
        if (!begin || !end || *begin > *end || *end > _glyf.size()) {
            throwUnreadable(glyph);
        }
        const bool hasContent = *begin + headerBytes <= *end && viewBytes(_glyf).u16(*begin).value_or(0) != 0;
        return hasContent ? begin : std::nullopt;
    }

    bool isComposite(std::uint64_t begin) const {
        constexpr unsigned int negative = 0x8000; // the sign of the number of contours
        return (viewBytes(_glyf).u16(begin).value_or(0) & negative) != 0;
    }

private:
    std::optional<std::uint64_t> getOffset(std::uint64_t glyph) const {
        if (_isLong) {
            return viewBytes(_loca).u32(4 * glyph);
        }
        const std::optional<unsigned int> half = viewBytes(_loca).u16(2 * glyph);
        return half ? std::optional<std::uint64_t>(std::uint64_t{2} * *half) : std::nullopt;
    }

    Table _glyf;
    Table _loca;
    bool _isLong = false;
};

bool isEmpty(const hb_glyph_extents_t& extents) {
    return extents.x_bearing == 0 && extents.y_bearing == 0 && extents.width == 0 && extents.height == 0;
}

} // namespace

EmptyComposites checkGlyphs(hb_face_t* font, const AxisValues& values, const GlyfReader& reader) {
    const GlyphHeaders headers(font);
    const HarfBuzzFacePtr outlines = keepOutlines(font);
    const FontPtr varied = makeVariedFont(outlines.get(), values);
    const unsigned int count = hb_face_get_glyph_count(font);
    EmptyComposites empty;
    for (unsigned int glyph = 0; glyph < count; ++glyph) {
        const std::optional<std::uint64_t> begin = headers.findContent(glyph);
        if (!begin) {
            continue;
        }
        hb_glyph_extents_t extents{};
        if (!hb_font_get_glyph_extents(varied.get(), glyph, &extents)) {
            throwUnreadable(glyph);
        }
        if (isEmpty(extents) && headers.isComposite(*begin)) {
            if (reader.hasPoints(glyph)) {
                throw FontLoaderException(
                    fmt::format("the parts of glyph {} of the variable font have no extent", glyph));
            }
            empty.push_back({glyph, *begin});
        }
    }
    return empty;
}

} // namespace Vell::FontLoaders::Internal
