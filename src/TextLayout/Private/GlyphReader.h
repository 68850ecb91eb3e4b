#pragma once

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Public/ShapedText.h>

#include <hb.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace Vell::TextLayout {

/// Turns the glyphs that HarfBuzz has made of a part of a text into ours, from its last cluster to its first.
class GlyphReader {
public:
    /// `made` has room for all glyphs of the buffer. Ill-formed UTF-8 may stand in a text unless
    /// `isWellFormed` is set.
    GlyphReader(hb_buffer_t* buffer, std::string_view text, bool isWellFormed, ShapedGlyph* made)
        : _infos(hb_buffer_get_glyph_infos(buffer, &_length))
        , _positions(hb_buffer_get_glyph_positions(buffer, nullptr))
        , _text(text)
        , _isWellFormed(isWellFormed)
        , _made(made) {}

    /// `end` is where the part ends.
    void readLeftToRight(std::uint32_t end) {
        Cluster cluster{end, true, true};
        for (unsigned int i = _length; i-- != 0;) {
            const bool isRightmost = _infos[i].cluster != cluster.begin;
            if (isRightmost) {
                cluster = findBefore(cluster, _infos[i].cluster);
            }
            read(i, cluster, isRightmost);
        }
    }

    void readRightToLeft(std::uint32_t end) {
        Cluster cluster{end, true, true};
        for (unsigned int i = 0; i != _length; ++i) {
            if (_infos[i].cluster != cluster.begin) {
                cluster = findBefore(cluster, _infos[i].cluster);
            }
            read(i, cluster, i + 1 == _length || _infos[i + 1].cluster != cluster.begin);
        }
    }

private:
    struct Cluster {
        std::uint32_t begin;
        bool isLast;
        bool isSpaced;
    };

    Cluster findBefore(const Cluster& behind, std::uint32_t begin) const {
        return {begin, isOther(begin, behind.begin), !isJoining(begin)};
    }

    /// Whether the characters at two offsets are different ones, as isOtherCharacter() says it. Does not
    /// decode them if their first bytes tell.
    bool isOther(std::uint32_t offset, std::uint32_t other) const {
        return other == _text.size() || (_isWellFormed && _text[offset] != _text[other]) ||
               isOtherCharacter(_text, offset, other);
    }

    bool isJoining(std::uint32_t offset) const {
        return static_cast<unsigned char>(_text[offset]) >= 0x80U &&
               getTraits(decodeAt(_text, offset)).isJoining();
    }

    /// Writes in place: the processor waits for a glyph that is put together from small parts and then
    /// copied.
    void read(unsigned int index, const Cluster& cluster, bool isRightmost) {
        const hb_glyph_info_t& info = _infos[index];
        const hb_glyph_position_t& position = _positions[index];
        ShapedGlyph& glyph = _made[index];
        glyph.cluster = cluster.begin;
        glyph.advance = position.x_advance;
        glyph.xOffset = position.x_offset;
        glyph.yOffset = position.y_offset;
        glyph.index = static_cast<std::uint16_t>(std::min<hb_codepoint_t>(info.codepoint, 0xFFFF));
        const hb_glyph_flags_t flags = hb_glyph_info_get_glyph_flags(&info);
        glyph.isSpaced = isRightmost && cluster.isSpaced;
        glyph.isLast = cluster.isLast;
        glyph.isSafeToBreak = (flags & HB_GLYPH_FLAG_UNSAFE_TO_BREAK) == 0;
        glyph.allowsElongation = (flags & HB_GLYPH_FLAG_SAFE_TO_INSERT_TATWEEL) != 0;
    }

    unsigned int _length = 0;
    const hb_glyph_info_t* _infos;
    const hb_glyph_position_t* _positions;
    std::string_view _text;
    bool _isWellFormed;
    ShapedGlyph* _made;
};

} // namespace Vell::TextLayout
