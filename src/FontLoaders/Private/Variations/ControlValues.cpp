#include <FontLoaders/Private/Variations/ControlValues.h>

#include <FontLoaders/Private/Variations/InstanceTables.h>
#include <FontLoaders/Private/Variations/TupleReader.h>
#include <FontLoaders/Public/Exceptions.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr hb_tag_t cvarTag = HB_TAG('c', 'v', 'a', 'r');
constexpr hb_tag_t cvtTag = HB_TAG('c', 'v', 't', ' ');

/// A tuple counts numbers in 16 bits, so no further control value can vary.
constexpr std::size_t maxControlValues = 0x10000;

void addChanges(TupleDeltas deltas, const TupleSelection& selection, float share,
                std::vector<float>& changes) {
    const std::size_t count = selection ? selection->size() : changes.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t number = selection ? (*selection)[i] : i;
        const auto change = static_cast<float>(deltas.take());
        if (number < changes.size()) {
            changes[number] += share * change;
        }
    }
}

/// Sums up the tuples of cvar.
std::vector<float> addTuples(BigEndianBytes cvar, const Coordinates& place, std::size_t valueCount) {
    constexpr std::uint64_t countAt = 4;
    constexpr unsigned int shareSelection = 0x8000;
    constexpr unsigned int countMask = 0x0FFF;
    TupleCursor headers(cvar, countAt);
    const unsigned int count = headers.takeU16();
    TupleCursor data(cvar, headers.takeU16());
    const TupleSelection shared = (count & shareSelection) != 0 ? takeSelection(data) : std::nullopt;
    std::vector<float> changes(valueCount);
    for (unsigned int i = 0; i < (count & countMask); ++i) {
        const TupleHeader header = takeHeader(headers, place.size());
        TupleCursor tuple(data.takeBytes(header.size), 0);
        const float share = header.region.measure(place);
        if (share != 0.0F) {
            const TupleSelection selection = header.hasOwnSelection ? takeSelection(tuple) : shared;
            addChanges(TupleDeltas(tuple), selection, share, changes);
        }
    }
    return changes;
}

Coordinates normalize(hb_face_t* font, const AxisValues& values) {
    const FontPtr varied = makeVariedFont(font, values);
    unsigned int count = 0;
    const int* const coordinates = hb_font_get_var_coords_normalized(varied.get(), &count);
    Coordinates place(coordinates, coordinates + count);
    place.resize(values.size());
    return place;
}

} // namespace

std::optional<std::vector<float>> readControlValueChanges(hb_face_t* font, const AxisValues& values) {
    const Table cvar = readTable(font, cvarTag);
    const std::size_t valueCount = readTable(font, cvtTag).size() / 2;
    if (cvar.empty() || valueCount == 0) {
        return std::vector<float>();
    }
    if (valueCount > maxControlValues) {
        return std::nullopt;
    }
    try {
        const BigEndianBytes bytes(reinterpret_cast<const unsigned char*>(cvar.data()), cvar.size());
        return addTuples(bytes, normalize(font, values), valueCount);
    } catch (const FontLoaderException&) {
        return std::nullopt;
    }
}

void varyControlValues(hb_face_t* instance, const std::vector<float>& changes) {
    Table values = readTable(instance, cvtTag);
    for (std::size_t i = 0; i < changes.size(); ++i) {
        addToField(values, {2 * i, true}, changes[i]);
    }
    setTable(instance, cvtTag, values);
}

} // namespace Vell::FontLoaders::Internal
