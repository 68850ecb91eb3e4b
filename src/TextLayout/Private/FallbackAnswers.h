#pragma once

#include <Gfx/Public/FontInfo.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// A description to draw with. Null means the style's own font.
using FallbackFace = std::shared_ptr<const Gfx::FontFaceInfo>;

/// The faces that draw the characters that the own font of a style does not draw simply. Any thread may ask.
class FallbackAnswers {
public:
    FallbackAnswers(NNPtr<const Gfx::FontFaceInfo> faceInfo, const TextStyle& style)
        : _faceInfo(std::move(faceInfo))
        , _language(style.language)
        , _families(style.fallbackFamilies)
        , _emojiFont(style.emojiFont) {}

    bool areFor(const Gfx::FontFaceInfo& faceInfo, const TextStyle& style) const {
        return *_faceInfo == faceInfo && _language == style.language && _families == style.fallbackFamilies &&
               _emojiFont == style.emojiFont;
    }

    /// Calls `choose()` for a character that has no answer yet. Returns the same object for the same
    /// character, until there are too many answers.
    template <class Choose>
    FallbackFace find(char32_t character, const Choose& choose) {
        if (const auto known = findKnown(character)) {
            return *known;
        }
        return remember(character, choose()); // chosen without the lock: a client's fallback may shape texts
    }

private:
    static constexpr std::size_t maxCharacters = 65536;

    std::optional<FallbackFace> findKnown(char32_t character);
    FallbackFace remember(char32_t character, FallbackFace answer);

    NNPtr<const Gfx::FontFaceInfo> _faceInfo;
    std::string _language;
    std::vector<std::string> _families;
    EmojiFont _emojiFont;
    std::mutex _mutex;
    std::unordered_map<char32_t, FallbackFace> _answers;
};

} // namespace Vell::TextLayout
