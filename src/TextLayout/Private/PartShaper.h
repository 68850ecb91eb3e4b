#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/CachesLock.h>
#include <TextLayout/Private/ShapePlan.h>
#include <TextLayout/Private/ShapingBuffer.h>
#include <TextLayout/Private/TextToShape.h>
#include <TextLayout/Public/ShapedText.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Shapes parts of one text with HarfBuzz, which takes a long part in pieces: it needs some 40 bytes for each
/// glyph, and a time that grows with the square of the number of marks on a letter.
///
/// A piece ends where breaking changes no glyph, as far as there is such a place. A grapheme cluster of more
/// than 512 bytes is divided: each piece of it is a cluster of its own.
///
/// Requires the lock of the caches, and lets go of it while HarfBuzz works.
class PartShaper {
public:
    struct Settings {
        const ShapePlan& plan;
        const std::vector<hb_feature_t>& features;
    };
    using FindSettings = std::function<Settings(const TextPart&)>;

    explicit PartShaper(const TextToShape& text)
        : _text(text.text)
        , _clusterStarts(text.clusterStarts)
        , _lock(text.lock)
        , _glyphs(text.glyphs)
        , _buffer(text.text, text.isWellFormed, text.caches.scratch) {}

    /// For when there are no more parts.
    void close() noexcept { _buffer.close(); }

    /// Appends the glyphs of a part in visual order.
    void append(const Settings& settings, const TextPart& part);
    /// The same with settings for each piece.
    void append(const FindSettings& findSettings, const TextPart& part);

    /// Throws TextLayoutException if that many glyphs are too many for the text: fonts may replace a
    /// character by any number of them.
    void checkGlyphCount(std::size_t count) const;

private:
    void appendPiece(const Settings& settings, const TextPart& piece);
    bool isShort(const TextPart& part) const;
    std::uint32_t findPieceEnd(const TextPart& rest) const;
    std::uint32_t findEndInCluster(const TextPart& rest) const;
    std::uint32_t removeUnsafeEnd(const TextPart& piece, std::size_t firstGlyph);

    std::string_view _text;
    const ByteSet& _clusterStarts;
    CachesLock& _lock;
    std::vector<ShapedGlyph>& _glyphs;
    ShapingBuffer _buffer;
};

} // namespace Vell::TextLayout
