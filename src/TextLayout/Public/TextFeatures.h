#pragma once

#include <Utils/Public/Export.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// A setting of an OpenType feature, for a whole text or for a part of it.
struct TextFeature {
    static constexpr std::size_t endOfText = static_cast<std::size_t>(-1);

    std::uint32_t tag;           ///< four characters, the first one in the highest byte
    std::uint32_t value = 1;     ///< 0 switches the feature off; some features take other numbers than 1
    std::size_t begin = 0;       ///< the first byte of the text that the setting applies to
    std::size_t end = endOfText; ///< the byte behind the last one

    friend bool operator==(const TextFeature& lhs, const TextFeature& rhs) {
        return lhs.tag == rhs.tag && lhs.value == rhs.value && lhs.begin == rhs.begin && lhs.end == rhs.end;
    }
    friend bool operator!=(const TextFeature& lhs, const TextFeature& rhs) { return !(lhs == rhs); }
};

/// Reads a list of settings as users write them: names separated by commas, each with an optional sign, range
/// and value.
///
///     parseTextFeatures("-liga,kern=0,ss01,aalt[3:5]=2");
///
/// A range is in bytes of the text: `[3:5]` means the bytes 3 and 4, `[3:]` all from 3 on, `[3]` byte 3
/// alone. Throws TextLayoutException if a setting is malformed; its text contains the setting. An empty list
/// has none.
VELL_API std::vector<TextFeature> parseTextFeatures(std::string_view list);

} // namespace Vell::TextLayout
