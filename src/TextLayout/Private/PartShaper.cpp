#include <TextLayout/Private/PartShaper.h>

#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Public/TextLayoutException.h>

#include <algorithm>
#include <string>

namespace Vell::TextLayout {

namespace {

constexpr std::uint32_t longPiece = 16384;  // bytes
constexpr std::uint32_t longCluster = 512;  // bytes
constexpr std::uint32_t farthestRule = 256; // bytes; a rule of a font rarely looks at more characters ahead

} // namespace

void PartShaper::append(const Settings& settings, const TextPart& part) {
    if (isShort(part)) {
        appendPiece(settings, part);
    } else {
        append(FindSettings([&settings](const TextPart&) { return settings; }), part);
    }
}

void PartShaper::append(const FindSettings& findSettings, const TextPart& part) {
    const std::size_t first = _glyphs.size();
    bool isRightToLeft = false;
    for (TextPart rest = part; rest.begin != rest.end;) {
        const TextPart piece{rest.begin, findPieceEnd(rest)};
        const Settings settings = findSettings(piece);
        const std::size_t firstOfPiece = _glyphs.size();
        appendPiece(settings, piece);
        isRightToLeft = HB_DIRECTION_IS_BACKWARD(settings.plan.getKey().properties.direction);
        if (isRightToLeft) {
            std::reverse(_glyphs.begin() + static_cast<std::ptrdiff_t>(firstOfPiece), _glyphs.end());
        }
        const bool isDivided = piece.end != rest.end && piece.end - piece.begin >= longPiece;
        rest.begin = isDivided ? removeUnsafeEnd(piece, firstOfPiece) : piece.end;
    }
    if (isRightToLeft) {
        std::reverse(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end());
    }
}

void PartShaper::checkGlyphCount(std::size_t count) const {
    constexpr std::size_t always = 65536;
    constexpr std::size_t perByte = 4;
    if (count > always + perByte * _text.size()) {
        throw TextLayoutException("the font makes more than " + std::to_string(always) +
                                  " glyphs, and more than " + std::to_string(perByte) +
                                  " for each byte of the text");
    }
}

void PartShaper::appendPiece(const Settings& settings, const TextPart& piece) {
    _buffer.open();
    const Unlocked unlocked(_lock);
    settings.plan.execute(_buffer.fill(piece), settings.features);
    _buffer.appendTo(_glyphs);
    checkGlyphCount(_glyphs.size());
}

/// Whether there is neither a long piece nor a long cluster in the part.
bool PartShaper::isShort(const TextPart& part) const {
    if (part.end - part.begin > longPiece) {
        return false;
    }
    constexpr std::uint32_t step = longCluster / 2; // one of the steps finds the first half of a long cluster
    for (std::uint32_t begin = part.begin; part.end - begin > step; begin += step) {
        if (_clusterStarts.next(begin) - begin > step) {
            return false;
        }
    }
    return true;
}

std::uint32_t PartShaper::findPieceEnd(const TextPart& rest) const {
    std::uint32_t end = rest.begin;
    while (end != rest.end && end - rest.begin < longPiece) {
        const auto next = std::min(static_cast<std::uint32_t>(_clusterStarts.next(end)), rest.end);
        if (next - end > longCluster) {
            return end != rest.begin ? end : findEndInCluster(rest);
        }
        end = next;
    }
    return end;
}

std::uint32_t PartShaper::findEndInCluster(const TextPart& rest) const {
    std::uint32_t end = rest.begin;
    while (end - rest.begin < longCluster) {
        end = findCharacterBehind(_text, end);
    }
    return end;
}

/// Removes the last glyphs of a piece, which stand in logical order, if they may look otherwise in front of
/// what follows. Returns where the rest of the text begins.
std::uint32_t PartShaper::removeUnsafeEnd(const TextPart& piece, std::size_t firstGlyph) {
    const std::uint32_t middle = piece.begin + (piece.end - piece.begin) / 2;
    for (std::size_t i = _glyphs.size(); --i > firstGlyph && _glyphs[i].cluster > middle;) {
        const ShapedGlyph& glyph = _glyphs[i];
        if (glyph.isSafeToBreak && glyph.cluster + farthestRule <= piece.end &&
            _glyphs[i - 1].cluster != glyph.cluster && _clusterStarts.test(glyph.cluster)) {
            const std::uint32_t begin = glyph.cluster;
            _glyphs.resize(i);
            return begin;
        }
    }
    return piece.end;
}

} // namespace Vell::TextLayout
