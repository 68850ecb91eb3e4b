#pragma once

#include <TextLayout/Public/ShapedText.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace Vell::TextLayout {

/// The hyphens, ellipses and elongations that a paragraph adds to its text. Each is shaped once for each
/// style that it follows.
class AddedTexts {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// `text` must outlive the object. If it has no service, nothing is added.
    explicit AddedTexts(const ShapedText& text)
        : _text(text) {}

    /// The hyphen at the end of a line that is broken at a soft hyphen of the run: U+2010, or U+002D if the
    /// font of the run lacks that. Its number, or none.
    std::uint32_t getHyphen(const ShapedRun& run);

    /// The ellipsis in the style of the run. Its number, or none.
    std::uint32_t getEllipsis(const ShapedRun& run, const std::string& ellipsis, BidiLevel baseLevel);

    /// The glyph that the font of the run has for a tatweel, U+0640. Its number, or none if there is no such
    /// glyph, or one without width.
    std::uint32_t getTatweel(const ShapedRun& run);

    /// In the units of the font size; 0 for none.
    double getWidth(std::uint32_t number) const;

    const ShapedText& get(std::uint32_t number) const { return *_added[number]; }

private:
    enum class Kind : unsigned char { Hyphen, Ellipsis, Tatweel };
    /// A font of the text (0 for ellipses), a style and the direction.
    using Key = std::tuple<std::uint32_t, std::uint32_t, bool, Kind>;

    std::uint32_t add(const Key& key, NNPtr<const ShapedText> text);
    NNPtr<const ShapedText> shape(std::string_view text, const ShapedRun& run, bool isRightToLeft) const;
    NNPtr<const ShapedText> shapeHyphen(const ShapedRun& run) const;

    const ShapedText& _text;
    std::vector<NNPtr<const ShapedText>> _added;
    std::map<Key, std::uint32_t> _numbers;
};

} // namespace Vell::TextLayout
