#pragma once

#include <TextLayout/Private/ByteSet.h>

#include <string_view>

namespace Vell::TextLayout {

/// Where the words of a text begin and end, as findWordBoundaries finds them.
struct WordBoundaries {
    explicit WordBoundaries(std::string_view text);

    ByteSet begins;
    ByteSet ends;
};

} // namespace Vell::TextLayout
