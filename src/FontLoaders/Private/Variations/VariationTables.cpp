#include <FontLoaders/Private/Variations/VariationTables.h>

#include <algorithm>
#include <array>

namespace Vell::FontLoaders::Internal {

namespace {

/// Whether a byte continues a character of UTF-8.
bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Removes the last character if it is not complete.
void dropPartOfCharacter(std::string& text) {
    std::size_t lead = text.size();
    while (lead > 0 && isContinuation(text[lead - 1])) {
        --lead;
    }
    if (lead == 0) {
        text.clear();
        return;
    }
    const auto first = static_cast<unsigned char>(text[lead - 1]);
    const std::size_t length = first < 0x80U ? 1 : first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
    if (text.size() - (lead - 1) < length) {
        text.resize(lead - 1);
    }
}

std::string readName(hb_face_t* face, hb_ot_name_id_t id) {
    std::array<char, maxVariationNameBytes + 1> buffer{};
    unsigned int size = buffer.size();
    const unsigned int whole = hb_ot_name_get_utf8(face, id, HB_LANGUAGE_INVALID, &size, buffer.data());
    std::string name(buffer.data(), size);
    if (whole > size) {
        dropPartOfCharacter(name);
    }
    return name;
}

FontAxis describe(hb_face_t* face, const hb_ot_var_axis_info_t& axis) {
    return {getTagText(axis.tag), readName(face, axis.name_id),
            axis.min_value,       axis.default_value,
            axis.max_value,       (axis.flags & HB_OT_VAR_AXIS_FLAG_HIDDEN) != 0};
}

NamedInstance readInstance(hb_face_t* face, unsigned int index, std::size_t axisCount) {
    NamedInstance instance{readName(face, hb_ot_var_named_instance_get_subfamily_name_id(face, index)), {}};
    instance.coordinates.resize(axisCount);
    auto count = static_cast<unsigned int>(axisCount);
    hb_ot_var_named_instance_get_design_coords(face, index, &count, instance.coordinates.data());
    return instance;
}

} // namespace

std::vector<hb_ot_var_axis_info_t> readAxes(hb_face_t* face) {
    unsigned int count = hb_ot_var_get_axis_count(face);
    if (count > maxAxes) {
        return {};
    }
    std::vector<hb_ot_var_axis_info_t> axes(count);
    hb_ot_var_get_axis_infos(face, 0, &count, axes.data());
    return axes;
}

std::string getTagText(hb_tag_t tag) {
    std::array<char, 4> characters{};
    hb_tag_to_string(tag, characters.data());
    std::string text(characters.data(), characters.size());
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

hb_tag_t makeTag(const std::string& text) {
    return hb_tag_from_string(text.data(), static_cast<int>(text.size()));
}

FontVariations readVariations(hb_face_t* face) {
    FontVariations variations;
    for (const hb_ot_var_axis_info_t& axis : readAxes(face)) {
        variations.axes.push_back(describe(face, axis));
    }
    const unsigned int count = variations.axes.empty() ? 0 : hb_ot_var_get_named_instance_count(face);
    for (unsigned int i = 0; i < std::min(count, maxNamedInstances); ++i) {
        variations.instances.push_back(readInstance(face, i, variations.axes.size()));
    }
    return variations;
}

} // namespace Vell::FontLoaders::Internal
