#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Vell::TextLayout {

/// A text as ubidi must see it to give the levels of UAX #9. Left to itself, ubidi
/// - gives all of a text the level of the paragraph if everything in it runs in one direction, embeddings and
///   Arabic numbers included, which have higher levels. So another paragraph is added, which has both
///   directions.
/// - takes the isolate formatting characters inside of an override for neutral, where rules X5a to X6a make
/// them strong.
///   So a nonspacing mark stands before each initiator and behind each end of an isolate. In an override it
///   is strong, and the formatting character takes its direction (N1). Elsewhere it takes the type of the
///   character before it (W1), and changes nothing.
/// - pairs brackets inside of overrides, which are no brackets there (BD14), so another neutral character
/// stands in
///   their place.
/// - pairs brackets at any depth (BracketNesting.h).
class BidiInput {
public:
    explicit BidiInput(std::u16string text);

    /// The text with its additions.
    const std::u16string& getUnits() const { return _units; }

    /// How many units stand before a code point of the text, or behind it, because of the marks.
    std::size_t countBefore(char32_t codePoint) const {
        return _hasMarks && codePoint >= firstInitiator && codePoint <= lastInitiator ? 1 : 0;
    }
    std::size_t countBehind(char32_t codePoint) const { return _hasMarks && codePoint == isolateEnd ? 1 : 0; }

private:
    static constexpr char16_t firstInitiator = 0x2066;
    static constexpr char16_t lastInitiator = 0x2068;
    static constexpr char16_t isolateEnd = 0x2069;

    void markIsolates();

    std::u16string _units;
    bool _hasMarks = false;
};

} // namespace Vell::TextLayout
