#include <TextLayout/Private/ClusterFonts.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/TextCharacters.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Utf8.h>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>

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

bool isEmoji(char32_t character) {
    return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_EMOJI) != 0;
}

bool isSkinTone(char32_t character) {
    return character >= 0x1F3FB && character <= 0x1F3FF;
}

/// Whether the cluster is to look like an emoji: by its first character, or by what follows that.
bool hasEmojiPresentation(const std::u32string& cluster) {
    constexpr char32_t textSelector = 0xFE0E;
    constexpr char32_t emojiSelector = 0xFE0F;
    constexpr char32_t joiner = 0x200D;
    if (cluster.size() > 1 && cluster[1] == textSelector) {
        return false;
    }
    if (getTraits(cluster.front()).hasEmojiPresentation()) {
        return true;
    }
    return cluster.size() > 1 && isEmoji(cluster.front()) &&
           (cluster[1] == emojiSelector || isSkinTone(cluster[1]) ||
            (cluster[1] == joiner && cluster.size() > 2 && isEmoji(cluster[2])));
}

bool needsNoGlyph(char32_t character) {
    return getTraits(character).isDefaultIgnorable() || u_iscntrl(static_cast<UChar32>(character)) != 0;
}

using GetNormalizer = const UNormalizer2* (*)(UErrorCode*);

/// A canonically equivalent spelling of a short cluster; empty if it is too long.
std::u32string normalize(const std::u32string& cluster, GetNormalizer getNormalizer) {
    constexpr std::int32_t capacity = 64;
    std::array<UChar, capacity> units{};
    std::array<UChar, capacity> normalized{};
    std::array<UChar32, capacity> characters{};
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF32(units.data(), capacity, &length, reinterpret_cast<const UChar32*>(cluster.data()),
                   static_cast<std::int32_t>(cluster.size()), &status);
    const UNormalizer2* const normalizer = getNormalizer(&status);
    length = unorm2_normalize(normalizer, units.data(), length, normalized.data(), capacity, &status);
    u_strToUTF32(characters.data(), capacity, &length, normalized.data(), length, &status);
    return U_SUCCESS(status) ? std::u32string(characters.data(), characters.data() + length)
                             : std::u32string();
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
    const char* const end = text.data() + part.end;
    const char* position = text.data() + part.begin;
    while (position != end) {
        const auto byte = static_cast<unsigned char>(*position);
        if (byte < _prepared.drawsAscii.size() && _prepared.drawsAscii[byte]) {
            ++position;
            continue;
        }
        const char* next = position;
        const char32_t character = decodeNext(next, end);
        const CharacterTraits traits = getTraits(character);
        const bool mayBeEmoji =
            traits.isEmoji() && (traits.hasEmojiPresentation() ||
                                 !clusterStarts.test(static_cast<std::size_t>(next - text.data())));
        if (mayBeEmoji || !ownFontHas(character)) {
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

/// HarfBuzz composes and decomposes characters as the font needs it.
bool ClusterFonts::ownFontServes(const std::u32string& cluster) const {
    if (ownFontHas(cluster)) {
        return true;
    }
    for (const GetNormalizer getNormalizer : {&unorm2_getNFCInstance, &unorm2_getNFDInstance}) {
        const std::u32string equivalent = normalize(cluster, getNormalizer);
        if (!equivalent.empty() && ownFontHas(equivalent)) {
            return true;
        }
    }
    return false;
}

bool ClusterFonts::prefersFallback(const std::u32string& cluster) const {
    return _style.emojiFont == EmojiFont::Fallback && hasEmojiPresentation(cluster);
}

FallbackFace ClusterFonts::choose(const std::u32string& cluster) const {
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
