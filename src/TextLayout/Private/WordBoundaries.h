#pragma once

#include <TextLayout/Private/OffsetSet.h>

#include <string_view>

namespace Vell::TextLayout {

/// Where the words of a text begin and end: the segments of UAX #29 that have letters, digits, kana or
/// ideographs, not those of spaces and punctuation.
struct WordBoundaries {
    /// `text` must not be longer than maxTextBytes.
    explicit WordBoundaries(std::string_view text);

    OffsetSet begins;
    OffsetSet ends;
};

} // namespace Vell::TextLayout
