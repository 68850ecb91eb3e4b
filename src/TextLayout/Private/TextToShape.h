#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/CachesLock.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Public/ShapedText.h>

#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// The text that all its runs have in common. What it refers to must outlive those who use it.
struct TextToShape {
    ShapingCaches& caches;
    CachesLock& lock;
    std::string_view text;
    bool isWellFormed;
    const ByteSet& clusterStarts;
    std::vector<ShapedGlyph>& glyphs; ///< where the glyphs go
};

} // namespace Vell::TextLayout
