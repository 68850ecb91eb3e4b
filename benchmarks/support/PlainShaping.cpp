#include "PlainShaping.h"

namespace Vell::Benchmarks {

namespace {

hb_font_t* openFont(const FontLoaders::FontBytes& bytes) {
    hb_blob_t* const blob =
        hb_blob_create(reinterpret_cast<const char*>(bytes->data()), static_cast<unsigned int>(bytes->size()),
                       HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* const face = hb_face_create(blob, 0);
    hb_blob_destroy(blob);
    hb_font_t* const font = hb_font_create(face);
    hb_face_destroy(face);
    return font;
}

} // namespace

PlainShaping::PlainShaping(const FontLoaders::FontBytes& bytes,
                           const std::vector<NNPtr<const TextLayout::ShapedText>>& texts)
    : _bytes(bytes)
    , _font(openFont(bytes))
    , _buffer(hb_buffer_create()) {
    for (const auto& text : texts) {
        for (const TextLayout::ShapedRun& run : text->getRuns()) {
            hb_segment_properties_t properties = HB_SEGMENT_PROPERTIES_DEFAULT;
            properties.direction = run.isRightToLeft() ? HB_DIRECTION_RTL : HB_DIRECTION_LTR;
            properties.script = hb_script_from_string(run.script.getLetters().data(), 4);
            _runs.push_back({_texts.size(), run.begin, run.end, properties});
        }
        _texts.push_back(text->getText());
    }
}

std::size_t PlainShaping::shapeAll() {
    std::size_t count = 0;
    for (const Run& run : _runs) {
        const std::string& text = _texts[run.text];
        hb_buffer_t* const buffer = _buffer.get();
        hb_buffer_clear_contents(buffer);
        hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), run.begin,
                           static_cast<int>(run.end - run.begin));
        hb_buffer_set_segment_properties(buffer, &run.properties);
        hb_shape(_font.get(), buffer, nullptr, 0);
        count += hb_buffer_get_length(buffer);
    }
    return count;
}

} // namespace Vell::Benchmarks
