#include <FontLoaders/Private/Variations/FontInstancer.h>

#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Private/FreeTypeBounds/LibraryMemory.h>
#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>
#include <FontLoaders/Private/HarfBuzz.h>
#include <FontLoaders/Private/Variations/ControlValues.h>
#include <FontLoaders/Private/Variations/EmptyComposites.h>
#include <FontLoaders/Private/Variations/GlyphChecks.h>
#include <FontLoaders/Private/Variations/LineMetrics.h>
#include <FontLoaders/Private/Variations/VariationTables.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>
#include <hb-subset.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr hb_tag_t cff2 = HB_TAG('C', 'F', 'F', '2');
constexpr hb_tag_t cmap = HB_TAG('c', 'm', 'a', 'p');
constexpr hb_tag_t cvar = HB_TAG('c', 'v', 'a', 'r');
constexpr hb_tag_t fvar = HB_TAG('f', 'v', 'a', 'r');
constexpr hb_tag_t glyf = HB_TAG('g', 'l', 'y', 'f');
constexpr hb_tag_t gvar = HB_TAG('g', 'v', 'a', 'r');
constexpr hb_tag_t signature = HB_TAG('D', 'S', 'I', 'G');

/// How many times as many bytes as a table has its entries may have. Equal entries may share bytes.
constexpr std::uint64_t maxOverlap = 4;

struct SubsetInputDeleter {
    void operator()(hb_subset_input_t* input) const { hb_subset_input_destroy(input); }
};
using SubsetInputPtr = std::unique_ptr<hb_subset_input_t, SubsetInputDeleter>;

bool containsTable(hb_face_t* face, hb_tag_t tag) {
    const BlobPtr table(hb_face_reference_table(face, tag));
    return hb_blob_get_length(table.get()) > 0;
}

/// The offset of a glyph's entry in gvar, relative to the first one.
std::optional<std::uint64_t> readEntryOffset(BigEndianBytes table, std::uint64_t glyph) {
    constexpr std::uint64_t flagsOffset = 14;
    constexpr std::uint64_t offsetsOffset = 20;
    const bool isLong = (table.u16(flagsOffset).value_or(0) & 1U) != 0;
    if (isLong) {
        return table.u32(offsetsOffset + 4 * glyph);
    }
    const std::optional<unsigned int> half = table.u16(offsetsOffset + 2 * glyph);
    return half ? std::optional<std::uint64_t>(std::uint64_t{2} * *half) : std::nullopt;
}

/// Whether the entries of gvar have many more bytes than the table.
bool doVariationsOverlap(hb_face_t* face) {
    constexpr std::uint64_t glyphCountOffset = 12;
    const BlobPtr blob(hb_face_reference_table(face, gvar));
    unsigned int length = 0;
    const char* const data = hb_blob_get_data(blob.get(), &length);
    const BigEndianBytes table(reinterpret_cast<const unsigned char*>(data), length);
    const unsigned int count = table.u16(glyphCountOffset).value_or(0);
    std::uint64_t total = 0;
    for (unsigned int i = 0; i < count; ++i) {
        const std::uint64_t begin = readEntryOffset(table, i).value_or(0);
        const std::uint64_t end = readEntryOffset(table, std::uint64_t{i} + 1).value_or(0);
        total += end > begin ? std::min<std::uint64_t>(end - begin, length) : 0;
    }
    return total > maxOverlap * length;
}

void addTags(hb_set_t* set, std::initializer_list<hb_tag_t> tags) {
    hb_set_clear(set);
    for (const hb_tag_t tag : tags) {
        hb_set_add(set, tag);
    }
}

void keepAll(hb_subset_input_t* input, std::initializer_list<hb_subset_sets_t> kinds) {
    for (const hb_subset_sets_t kind : kinds) {
        hb_set_t* const set = hb_subset_input_set(input, kind);
        hb_set_clear(set);
        hb_set_invert(set);
    }
}

/// Asks for the whole font, without its signature, which a change of the font makes wrong, and without the
/// changes of control values, which are applied by themselves. The charmaps stay as they are, because
/// HarfBuzz would keep only those of Unicode.
void keepEverything(hb_subset_input_t* input, hb_face_t* face, bool hasGlyphPrograms) {
    const auto hints = hasGlyphPrograms ? HB_SUBSET_FLAGS_DEFAULT : HB_SUBSET_FLAGS_NO_HINTING;
    hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NOTDEF_OUTLINE |
                                         HB_SUBSET_FLAGS_NAME_LEGACY | HB_SUBSET_FLAGS_GLYPH_NAMES |
                                         HB_SUBSET_FLAGS_NO_PRUNE_UNICODE_RANGES |
                                         HB_SUBSET_FLAGS_PASSTHROUGH_UNRECOGNIZED | hints);
    keepAll(input, {HB_SUBSET_SETS_LAYOUT_FEATURE_TAG, HB_SUBSET_SETS_LAYOUT_SCRIPT_TAG,
                    HB_SUBSET_SETS_NAME_ID, HB_SUBSET_SETS_NAME_LANG_ID});
    addTags(hb_subset_input_set(input, HB_SUBSET_SETS_DROP_TABLE_TAG), {signature, cvar});
    addTags(hb_subset_input_set(input, HB_SUBSET_SETS_NO_SUBSET_TABLE_TAG), {cmap});
    const unsigned int glyphCount = hb_face_get_glyph_count(face);
    if (glyphCount > 0) {
        hb_set_add_range(hb_subset_input_glyph_set(input), 0, glyphCount - 1);
    }
    hb_face_collect_unicodes(face, hb_subset_input_unicode_set(input));
}

void throwIfNoTrueType(hb_face_t* face) {
    if (containsTable(face, cff2) || !containsTable(face, glyf)) {
        throw FontLoaderException(
            fmt::format("cannot fix the axes of a font with {} outlines, only of one with TrueType outlines",
                        containsTable(face, cff2) ? "CFF2" : "no TrueType"));
    }
}

/// Throws if the font is made to consume all memory or time.
void throwIfUnbounded(hb_face_t* face, const GlyfReader& reader) {
    const GlyfReader::Totals totals = reader.measureAll(maxInstanceParts);
    if (totals.partCount > maxInstanceParts) {
        throw FontLoaderException("the glyphs of the variable font have too many parts");
    }
    if (totals.byteCount > maxOverlap * reader.getTableSize() || doVariationsOverlap(face)) {
        throw FontLoaderException("the glyphs of the variable font overlap");
    }
}

HarfBuzzFacePtr fixAxes(hb_face_t* face, const AxisValues& values, bool hasGlyphPrograms) {
    const SubsetInputPtr input(hb_subset_input_create_or_fail());
    if (!input) {
        throw std::bad_alloc();
    }
    keepEverything(input.get(), face, hasGlyphPrograms);
    for (const auto& [tag, value] : values) {
        hb_subset_input_pin_axis_location(input.get(), face, tag, value);
    }
    HarfBuzzFacePtr instance(hb_subset_or_fail(face, input.get()));
    if (!instance || containsTable(instance.get(), fvar) || containsTable(instance.get(), gvar)) {
        throw FontLoaderException("the variable font is damaged: HarfBuzz cannot fix its axes");
    }
    return instance;
}

/// `plain` is the font for HarfBuzz: without the parts of these glyphs.
std::vector<unsigned char> instantiate(hb_face_t* face, hb_face_t* plain, const AxisValues& values,
                                       const EmptyComposites& composites) {
    const std::optional<std::vector<float>> controlValues = readControlValueChanges(face, values);
    const HarfBuzzFacePtr instance = fixAxes(plain, values, controlValues.has_value());
    if (!composites.empty()) {
        varyMetrics(face, values, composites, instance.get());
    }
    varyLineMetrics(face, values, instance.get());
    if (controlValues) {
        varyControlValues(instance.get(), *controlValues);
    }
    return serialize(instance.get());
}

std::vector<unsigned char> instantiateWithoutParts(hb_face_t* face, const AxisValues& values,
                                                   const EmptyComposites& composites,
                                                   const GlyfReader& reader) {
    const std::vector<unsigned char> changed = removeParts(face, composites);
    const BlobPtr file = makeView(changed);
    const HarfBuzzFacePtr plain(hb_face_create(file.get(), 0));
    if (!checkGlyphs(plain.get(), values, reader).empty()) {
        throw FontLoaderException("the glyphs of the variable font overlap");
    }
    return instantiate(face, plain.get(), values, composites);
}

} // namespace

std::vector<unsigned char> makeStaticFont(const NNPtr<const std::vector<unsigned char>>& bytes,
                                          hb_face_t* face, const AxisValues& values) {
    throwIfNoTrueType(face);
    const FTLibraryPtr library = createFreeTypeLibrary();
    const FTFacePtr opened = createFontFace(library, bytes);
    const GlyfReader& reader = *LibraryMemory::findReader(opened.get());
    throwIfUnbounded(face, reader);
    const EmptyComposites composites = checkGlyphs(face, values, reader);
    return composites.empty() ? instantiate(face, face, values, composites)
                              : instantiateWithoutParts(face, values, composites, reader);
}

} // namespace Vell::FontLoaders::Internal
