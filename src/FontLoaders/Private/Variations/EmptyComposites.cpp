#include <FontLoaders/Private/Variations/EmptyComposites.h>

#include <FontLoaders/Private/HarfBuzz.h>
#include <FontLoaders/Private/Variations/InstanceTables.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr std::size_t longMetricSize = 4; // an advance and a bearing

void put(Table& table, std::size_t at, unsigned int value) {
    table[at] = static_cast<char>(value >> 8U & 0xFFU);
    table[at + 1] = static_cast<char>(value & 0xFFU);
}

/// The metrics of one direction (hhea and hmtx, or vhea and vmtx) in an instance.
class MetricsTable {
public:
    MetricsTable(hb_face_t* instance, hb_tag_t headerTag, hb_tag_t tag)
        : _instance(instance)
        , _headerTag(headerTag)
        , _tag(tag)
        , _header(readTable(instance, headerTag))
        , _metrics(readTable(instance, tag)) {
        _longCount = viewBytes(_header).u16(longCountAt).value_or(0);
        if (exists()) {
            giveEachGlyphAnAdvance();
        }
    }

    bool exists() const { return _longCount > 0 && !_metrics.empty(); }

    void set(unsigned int glyph, int advance, int bearing) {
        const std::size_t at = longMetricSize * glyph;
        if (at + longMetricSize <= _metrics.size()) {
            put(_metrics, at, static_cast<unsigned int>(std::clamp(advance, 0, 0xFFFF)));
            put(_metrics, at + 2, static_cast<unsigned int>(std::clamp(bearing, -0x8000, 0x7FFF)));
        }
    }

    void write() {
        setTable(_instance, _headerTag, _header);
        setTable(_instance, _tag, _metrics);
    }

private:
    static constexpr std::size_t longCountAt = 34;

    /// Glyphs behind the last advance share it.
    void giveEachGlyphAnAdvance() {
        const BigEndianBytes before = viewBytes(_metrics);
        const unsigned int glyphCount = hb_face_get_glyph_count(_instance);
        Table longMetrics(longMetricSize * glyphCount);
        for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
            const std::size_t at = longMetricSize * std::min(glyph, _longCount - 1);
            const std::size_t bearingAt =
                glyph < _longCount ? at + 2
                                   : longMetricSize * _longCount + std::size_t{2} * (glyph - _longCount);
            put(longMetrics, longMetricSize * glyph, before.u16(at).value_or(0));
            put(longMetrics, longMetricSize * glyph + 2, before.u16(bearingAt).value_or(0));
        }
        _metrics = std::move(longMetrics);
        put(_header, longCountAt, glyphCount);
    }

    hb_face_t* _instance;
    hb_tag_t _headerTag;
    hb_tag_t _tag;
    Table _header;
    Table _metrics;
    unsigned int _longCount;
};

void varyHorizontally(hb_font_t* varied, const EmptyComposites& composites, hb_face_t* instance) {
    MetricsTable metrics(instance, HB_TAG('h', 'h', 'e', 'a'), HB_TAG('h', 'm', 't', 'x'));
    if (metrics.exists()) {
        for (const EmptyComposite& composite : composites) {
            metrics.set(composite.glyph, hb_font_get_glyph_h_advance(varied, composite.glyph), 0);
        }
        metrics.write();
    }
}

/// A glyph without points has its vertical origin where its bearing ends.
void varyVertically(hb_font_t* varied, const EmptyComposites& composites, hb_face_t* instance) {
    MetricsTable metrics(instance, HB_TAG('v', 'h', 'e', 'a'), HB_TAG('v', 'm', 't', 'x'));
    if (metrics.exists()) {
        for (const EmptyComposite& composite : composites) {
            hb_position_t x = 0;
            hb_position_t y = 0;
            hb_font_get_glyph_v_origin(varied, composite.glyph, &x, &y);
            metrics.set(composite.glyph, -hb_font_get_glyph_v_advance(varied, composite.glyph), y);
        }
        metrics.write();
    }
}

} // namespace

std::vector<unsigned char> removeParts(hb_face_t* font, const EmptyComposites& composites) {
    const BlobPtr file(hb_face_reference_blob(font));
    const BlobPtr glyphs(hb_face_reference_table(font, HB_TAG('g', 'l', 'y', 'f'))); // a part of the file
    const auto begin = static_cast<std::size_t>(hb_blob_get_data(glyphs.get(), nullptr) -
                                                hb_blob_get_data(file.get(), nullptr));
    std::vector<unsigned char> changed = serialize(font);
    for (const EmptyComposite& composite : composites) {
        const std::size_t at = begin + static_cast<std::size_t>(composite.offset);
        changed.at(at) = 0; // the number of contours, which is negative for a glyph with parts
        changed.at(at + 1) = 0;
    }
    return changed;
}

void varyMetrics(hb_face_t* font, const AxisValues& values, const EmptyComposites& composites,
                 hb_face_t* instance) {
    const FontPtr varied = makeVariedFont(font, values);
    varyHorizontally(varied.get(), composites, instance);
    varyVertically(varied.get(), composites, instance);
}

} // namespace Vell::FontLoaders::Internal
