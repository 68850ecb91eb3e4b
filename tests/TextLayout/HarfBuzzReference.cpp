#include "HarfBuzzReference.h"

#include <support/Process.h>

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace Vell::Testing {

namespace {

std::vector<hb_feature_t> parseFeatures(const std::string& list) {
    std::vector<hb_feature_t> features;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        hb_feature_t feature{};
        if (hb_feature_from_string(list.data() + begin, static_cast<int>(end - begin), &feature) == 0) {
            throw std::runtime_error("not a list of features: " + list);
        }
        features.push_back(feature);
        begin = end + 1;
    }
    return features;
}

hb_font_t* makeFont(const FontLoaders::FontBytes& bytes) {
    hb_blob_t* const blob =
        hb_blob_create(reinterpret_cast<const char*>(bytes->data()), static_cast<unsigned int>(bytes->size()),
                       HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* const face = hb_face_create(blob, 0);
    hb_font_t* const font = hb_font_create(face);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return font;
}

hb_script_t toScript(const std::string& script) {
    return hb_script_from_string(script.data(), static_cast<int>(script.size()));
}

std::vector<PlainGlyph> readGlyphs(hb_buffer_t* buffer) {
    unsigned int length = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &length);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer, nullptr);
    std::vector<PlainGlyph> glyphs;
    for (unsigned int i = 0; i < length; ++i) {
        glyphs.push_back({infos[i].codepoint, infos[i].cluster, positions[i].x_offset, positions[i].y_offset,
                          positions[i].x_advance});
    }
    return glyphs;
}

/// Reads what hb-shape prints: [{"g":36,"cl":0,"dx":0,"dy":0,"ax":1290,"ay":0}]
std::vector<PlainGlyph> parseGlyphs(const std::string& json, std::size_t begin) {
    std::vector<PlainGlyph> glyphs;
    for (std::size_t place = json.find('{'); place != std::string::npos; place = json.find('{', place + 1)) {
        PlainGlyph glyph{};
        if (std::sscanf(json.c_str() + place, R"({"g":%u,"cl":%u,"dx":%d,"dy":%d,"ax":%d)", &glyph.index,
                        &glyph.cluster, &glyph.xOffset, &glyph.yOffset, &glyph.advance) != 5) {
            throw std::runtime_error("not the output of hb-shape: " + json);
        }
        glyph.cluster += static_cast<std::uint32_t>(begin);
        glyphs.push_back(glyph);
    }
    return glyphs;
}

} // namespace

ReferenceFont::ReferenceFont(FontLoaders::FontBytes bytes)
    : _bytes(std::move(bytes))
    , _font(makeFont(_bytes), hb_font_destroy) {}

std::vector<PlainGlyph> ReferenceFont::shape(const ReferenceRun& run) const {
    const std::unique_ptr<hb_buffer_t, void (*)(hb_buffer_t*)> buffer(hb_buffer_create(), hb_buffer_destroy);
    hb_buffer_add_utf8(buffer.get(), run.text.data(), static_cast<int>(run.text.size()),
                       static_cast<unsigned int>(run.begin), static_cast<int>(run.end - run.begin));
    const int flags =
        (run.begin == 0 ? HB_BUFFER_FLAG_BOT : 0) | (run.end == run.text.size() ? HB_BUFFER_FLAG_EOT : 0);
    hb_buffer_set_flags(buffer.get(), static_cast<hb_buffer_flags_t>(flags));
    hb_buffer_set_direction(buffer.get(), run.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer.get(), toScript(run.script));
    if (!run.language.empty()) {
        hb_buffer_set_language(buffer.get(), hb_language_from_string(run.language.c_str(), -1));
    }
    const std::vector<hb_feature_t> features = parseFeatures(run.features);
    hb_shape(_font.get(), buffer.get(), features.data(), static_cast<unsigned int>(features.size()));
    return readGlyphs(buffer.get());
}

std::vector<PlainGlyph> runHbShape(const std::string& fontFile, const ReferenceRun& run) {
    const auto text = [&](std::size_t begin, std::size_t end) {
        return std::string(run.text.substr(begin, end - begin));
    };
    std::vector<std::string> arguments = {"LC_ALL=C.UTF-8",
                                          "hb-shape",
                                          "--font-file=" + fontFile,
                                          "--text=" + text(run.begin, run.end),
                                          "--text-before=" + text(0, run.begin),
                                          "--text-after=" + text(run.end, run.text.size()),
                                          "--script=" + run.script,
                                          std::string("--direction=") + (run.isRightToLeft ? "rtl" : "ltr"),
                                          "--features=" + run.features,
                                          "--no-glyph-names",
                                          "--output-format=json",
                                          "--utf8-clusters"};
    if (!run.language.empty()) {
        arguments.push_back("--language=" + run.language);
    }
    if (run.begin == 0) {
        arguments.emplace_back("--bot");
    }
    if (run.end == run.text.size()) {
        arguments.emplace_back("--eot");
    }
    const ProcessResult result = runProgram("env", arguments);
    if (result.status != 0) {
        throw std::runtime_error("hb-shape: " + result.err);
    }
    return parseGlyphs(result.out, run.begin);
}

} // namespace Vell::Testing
