#include <TextLayout/Private/ShapingBuffer.h>

#include <TextLayout/Private/CharacterTraits.h>
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

ShapedGlyph makeGlyph(const hb_glyph_info_t& info, const hb_glyph_position_t& position) {
    ShapedGlyph glyph{};
    glyph.cluster = info.cluster;
    glyph.advance = position.x_advance;
    glyph.xOffset = position.x_offset;
    glyph.yOffset = position.y_offset;
    glyph.index = static_cast<std::uint16_t>(std::min<hb_codepoint_t>(info.codepoint, 0xFFFF));
    glyph.isSafeToBreak = (hb_glyph_info_get_glyph_flags(&info) & HB_GLYPH_FLAG_UNSAFE_TO_BREAK) == 0;
    return glyph;
}

/// Completes the glyphs of a cluster. `next` is where the cluster behind it begins in the text.
void describeCluster(std::string_view text, ShapedGlyph* begin, ShapedGlyph* end, std::uint32_t next) {
    const bool isLast = isOtherCharacter(text, begin->cluster, next);
    for (ShapedGlyph* glyph = begin; glyph != end; ++glyph) {
        glyph->isLast = isLast;
        glyph->isSpaced = false;
    }
    (end - 1)->isSpaced = !getTraits(decodeAt(text, begin->cluster)).isJoining();
}

} // namespace

ShapingBuffer::~ShapingBuffer() {
    if (_isFilled) {
        _pool.giveBack(std::move(_scratch));
    }
}

hb_buffer_t* ShapingBuffer::fill(const TextPart& part) {
    if (!_isFilled) {
        _scratch = _pool.take();
        _isFilled = true;
    }
    if (!_scratch.buffer || hb_buffer_allocation_successful(_scratch.buffer.get()) == 0) {
        _scratch.buffer = makeBuffer();
    }
    _part = part;
    decode(part);
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
    const auto first = std::lower_bound(_scratch.offsets.begin(), _scratch.offsets.end(), part.begin);
    const auto last = std::lower_bound(first, _scratch.offsets.end(), part.end);
    hb_buffer_add_utf32(buffer, _scratch.characters.data(), static_cast<int>(_scratch.characters.size()),
                        static_cast<unsigned int>(first - _scratch.offsets.begin()),
                        static_cast<int>(last - first));
    if (hb_buffer_allocation_successful(buffer) == 0) {
        throw std::bad_alloc();
    }
    unsigned int length = 0;
    hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &length);
    for (unsigned int i = 0; i < length; ++i) {
        infos[i].cluster = first[i];
    }
    return buffer;
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
    unsigned int length = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(_scratch.buffer.get(), &length);
    const hb_glyph_position_t* const positions =
        hb_buffer_get_glyph_positions(_scratch.buffer.get(), nullptr);
    const std::size_t first = glyphs.size();
    for (unsigned int i = 0; i < length; ++i) {
        glyphs.push_back(makeGlyph(infos[i], positions[i]));
    }
    const bool isRightToLeft = HB_DIRECTION_IS_BACKWARD(hb_buffer_get_direction(_scratch.buffer.get()));
    std::uint32_t before = _part.end; // the cluster to the left of this one
    for (std::size_t begin = first; begin != glyphs.size();) {
        const std::uint32_t cluster = glyphs[begin].cluster;
        std::size_t end = begin + 1;
        while (end != glyphs.size() && glyphs[end].cluster == cluster) {
            ++end;
        }
        const std::uint32_t behind = end != glyphs.size() ? glyphs[end].cluster : _part.end;
        describeCluster(_text, glyphs.data() + begin, glyphs.data() + end, isRightToLeft ? before : behind);
        before = cluster;
        begin = end;
    }
}

} // namespace Vell::TextLayout
