#include <TextLayout/Private/ClusterFonts.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontLoaders/Public/ClusterPresentation.h>
#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/MissingGlyphs.h>
#include <TextLayout/Private/TextCharacters.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Utf8.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <cstddef>

namespace Vell::TextLayout {

namespace {

std::u32string decode(std::string_view text) {
    std::u32string characters;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        characters.push_back(decodeUtf8(position, end));
    }
    return characters;
}

/// What a font may lack without harm: HarfBuzz hides the first kinds, and nobody draws the others.
bool needsNoGlyph(char32_t character) {
    constexpr char32_t nonJoiner = 0x200C;
    constexpr char32_t joiner = 0x200D;
    constexpr std::uint32_t controls = U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
    const auto code = static_cast<UChar32>(character);
    return character == nonJoiner || character == joiner || (U_GET_GC_MASK(code) & controls) != 0 ||
           u_hasBinaryProperty(code, UCHAR_VARIATION_SELECTOR) != 0;
}

} // namespace

ClusterFonts::ClusterFonts(const FontSource& source, PreparedStyle& style, std::uint32_t ownFont,
                           TextFonts& fonts)
    : _source(source)
    , _prepared(style)
    , _style(style.getStyle())
    , _ownFont(ownFont)
    , _fonts(fonts)
    , _ownCharMap(&style.getFace().getBasicMetrics().getCharMap()) {}

std::uint32_t ClusterFonts::findEndOfOwn(std::string_view text, const ByteSet& clusterStarts,
                                         const TextPart& part) const {
    const auto isAlone = [&](const char* behind) {
        return clusterStarts.test(static_cast<std::size_t>(behind - text.data()));
    };
    DrawnCharacters& drawn = _prepared.drawnCharacters;
    const DrawnCharacters::Page& ascii = drawn.getPage(0);
    const char* const end = text.data() + part.end;
    const char* position = text.data() + part.begin;
    while (position != end) {
        const auto byte = static_cast<unsigned char>(*position);
        if (byte < 0x80U && ascii[byte]) {
            ++position;
            continue;
        }
        const char* next = position;
        const char32_t character = decodeNext(next, end);
        if (!drawn.has(character) &&
            !(ownFontHas(character) && isAlone(next) && !getTraits(character).hasEmojiPresentation())) {
            break;
        }
        position = next;
    }
    const auto found = static_cast<std::uint32_t>(position - text.data());
    return clusterStarts.test(found) ? found : static_cast<std::uint32_t>(clusterStarts.previous(found));
}

std::uint32_t ClusterFonts::find(std::string_view cluster) {
    const char* position = cluster.data();
    const char* const end = position + cluster.size();
    const char32_t first = decodeUtf8(position, end);
    if (position == end && ownFontHas(first) && !getTraits(first).hasEmojiPresentation()) {
        return _ownFont;
    }
    if (position != end) {
        return findFont(choose(decode(cluster)));
    }
    if (!_prepared.answers) {
        _prepared.answers = _source.caches.getFallbackAnswers(_fonts[_ownFont].faceInfo, _style);
    }
    return findFont(_prepared.answers->find(first, [&] { return choose(std::u32string(1, first)); }));
}

bool ClusterFonts::ownFontHas(char32_t character) const {
    return (*_ownCharMap)[character].glyphIndex != 0;
}

bool ClusterFonts::ownFontHas(const std::u32string& cluster) const {
    return std::all_of(cluster.begin(), cluster.end(),
                       [&](char32_t character) { return ownFontHas(character) || needsNoGlyph(character); });
}

/// Whether the font draws the whole cluster, as it is or as HarfBuzz spells it.
bool ClusterFonts::ownFontServes(const std::u32string& cluster) {
    if (ownFontHas(cluster)) {
        return true;
    }
    if (!ownFontHas(cluster.front()) && !mayDoWithoutFirst(cluster)) {
        return false;
    }
    if (!_ownShapingFont) {
        _ownShapingFont = _source.caches.getFont(*_fonts[_ownFont].font.getFace());
    }
    constexpr std::size_t longCluster = 64; // HarfBuzz's time grows with the square of the length
    return _ownShapingFont->canShape() && cluster.size() <= longCluster
               ? hasAllGlyphs(*_ownShapingFont, cluster)
               : std::all_of(cluster.begin(), cluster.end(), [&](char32_t character) {
                     return ownFontHas(character) || getTraits(character).isDefaultIgnorable();
                 });
}

bool ClusterFonts::prefersFallback(const std::u32string& cluster) const {
    return _style.emojiFont == EmojiFont::Fallback && getTraits(cluster.front()).takesScriptOfOthers() &&
           FontLoaders::findPresentation(cluster) == FontLoaders::ClusterPresentation::Emoji;
}

FallbackFace ClusterFonts::choose(const std::u32string& cluster) {
    if (_source.fallback == nullptr || (!prefersFallback(cluster) && ownFontServes(cluster))) {
        return nullptr;
    }
    const Unlocked unlocked(_source.lock);
    const auto found = _source.fallback->findFace(
        {cluster, _fonts[_ownFont].faceInfo, _style.language, _style.fallbackFamilies});
    return found ? FallbackFace(found->drawnFace) : nullptr;
}

std::uint32_t ClusterFonts::findFont(const FallbackFace& face) {
    if (!face) {
        return _ownFont;
    }
    const auto known =
        std::find_if(_fallbackFonts.begin(), _fallbackFonts.end(),
                     [&](const FallbackFont& font) { return font.face == face || *font.face == *face; });
    return known != _fallbackFonts.end() ? known->font : addFallback(face);
}

std::uint32_t ClusterFonts::addFallback(const FallbackFace& face) {
    const NNPtr<const Gfx::FontFaceInfo> faceInfo(face);
    const NNPtr<const Gfx::FontInfo> own = _fonts[_ownFont].font.getFontInfo();
    const bool isOwn = *faceInfo == *_fonts[_ownFont].faceInfo;
    const std::uint32_t font =
        isOwn ? _ownFont
              : addFont(faceInfo, makeNNPtr<const FontEngine::Internal::FontInfo>(
                                      faceInfo, own->getSize(), own->getTextPositionType()));
    _fallbackFonts.push_back({face, font});
    return font;
}

std::uint32_t ClusterFonts::addFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                    const NNPtr<const Gfx::FontInfo>& fontInfo) {
    const Unlocked unlocked(_source.lock);
    return _fonts.add({faceInfo, _source.factory.getFont(fontInfo), _fonts[_ownFont].letterSpacing});
}

} // namespace Vell::TextLayout
