#include <TextLayout/Private/ShapingBuffer.h>

#include <TextLayout/Private/GlyphReader.h>
#include <TextLayout/Private/TextCharacters.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr std::size_t contextLength = 5; // HarfBuzz keeps no more characters before and behind a part

HarfBuzzPtr<hb_buffer_t> makeBuffer() {
    HarfBuzzPtr<hb_buffer_t> buffer(hb_buffer_create());
    if (hb_buffer_allocation_successful(buffer.get()) == 0) {
        throw std::bad_alloc();
    }
    return buffer;
}

} // namespace

void ShapingBuffer::open() {
    if (!_isOpen) {
        _scratch = _pool.take();
        _isOpen = true;
    }
}

void ShapingBuffer::close() noexcept {
    if (_isOpen) {
        _pool.giveBack(std::move(_scratch));
        _isOpen = false;
    }
}

hb_buffer_t* ShapingBuffer::fill(const TextPart& part) {
    if (!_scratch.buffer || hb_buffer_allocation_successful(_scratch.buffer.get()) == 0) {
        _scratch.buffer = makeBuffer();
    }
    _part = part;
    hb_buffer_t* const buffer = _scratch.buffer.get();
    hb_buffer_clear_contents(buffer);
    unsigned int flags = HB_BUFFER_FLAG_DEFAULT;
    if (part.begin == 0) {
        flags |= HB_BUFFER_FLAG_BOT;
    }
    if (part.end == _text.size()) {
        flags |= HB_BUFFER_FLAG_EOT;
    }
    hb_buffer_set_flags(buffer, static_cast<hb_buffer_flags_t>(flags));
    if (_isWellFormed) { // HarfBuzz decodes ill-formed parts in another way
        hb_buffer_add_utf8(buffer, _text.data(), static_cast<int>(_text.size()), part.begin,
                           static_cast<int>(part.end - part.begin));
    } else {
        addDecoded(buffer);
    }
    if (hb_buffer_allocation_successful(buffer) == 0) {
        throw std::bad_alloc();
    }
    return buffer;
}

void ShapingBuffer::addDecoded(hb_buffer_t* buffer) {
    decode(_part);
    const auto first = std::lower_bound(_scratch.offsets.begin(), _scratch.offsets.end(), _part.begin);
    const auto last = std::lower_bound(first, _scratch.offsets.end(), _part.end);
    hb_buffer_add_utf32(buffer, _scratch.characters.data(), static_cast<int>(_scratch.characters.size()),
                        static_cast<unsigned int>(first - _scratch.offsets.begin()),
                        static_cast<int>(last - first));
    unsigned int length = 0;
    hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &length);
    for (unsigned int i = 0; i < length; ++i) {
        infos[i].cluster = first[i];
    }
}

void ShapingBuffer::decode(const TextPart& part) {
    _scratch.characters.clear();
    _scratch.offsets.clear();
    const char* const begin = _text.data();
    const char* position = begin + part.begin;
    for (std::size_t i = 0; i < contextLength; ++i) {
        position = begin + findCharacterBefore(_text, static_cast<std::uint32_t>(position - begin));
    }
    const char* const end = begin + _text.size();
    for (std::size_t behind = 0; position != end; behind += position - begin > part.end ? 1 : 0) {
        if (behind == contextLength) {
            break;
        }
        _scratch.offsets.push_back(static_cast<std::uint32_t>(position - begin));
        _scratch.characters.push_back(decodeUtf8(position, end));
    }
}

void ShapingBuffer::appendTo(std::vector<ShapedGlyph>& glyphs) const {
    hb_buffer_t* const buffer = _scratch.buffer.get();
    const std::size_t first = glyphs.size();
    glyphs.resize(first + hb_buffer_get_length(buffer));
    GlyphReader reader(buffer, _text, _isWellFormed, glyphs.data() + first);
    if (HB_DIRECTION_IS_BACKWARD(hb_buffer_get_direction(buffer))) {
        reader.readRightToLeft(_part.end);
    } else {
        reader.readLeftToRight(_part.end);
    }
}

} // namespace Vell::TextLayout
