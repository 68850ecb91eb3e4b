#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/ShapingBuffer.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextFeatures.h>

#include <hb.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// A part of a text that one font draws in one script and direction.
struct RunToShape {
    TextPart part;
    const FontEngine::FontFace& face;
    hb_segment_properties_t properties;
    const std::vector<TextFeature>& features; ///< those of parts of the text, too
};

/// Finds the glyphs of the runs of one text. It takes words from the cache, and shapes words that follow each
/// other and are not there at once, because a call of HarfBuzz for each of them takes longer.
class RunShaper {
public:
    /// The arguments must outlive the shaper. `clusterStarts` are those of the text.
    RunShaper(ShapingCaches& caches, std::string_view text, const ByteSet& clusterStarts,
              std::vector<ShapedGlyph>& glyphs);

    /// Appends the glyphs of a run in visual order.
    void append(const RunToShape& run);

private:
    class WordWise;

    ShapingFont& useFont(const FontEngine::FontFace& face);
    void appendUnshaped(const RunToShape& run);
    void appendWhole(const ShapePlan& plan, const TextPart& part);

    ShapingCaches& _caches;
    std::string_view _text;
    const ByteSet& _clusterStarts;
    std::vector<ShapedGlyph>& _glyphs;
    ShapingBuffer _buffer;
    const FontEngine::FontFace* _lastFace = nullptr;
    std::shared_ptr<ShapingFont> _lastFont; // of that face
};

} // namespace Vell::TextLayout
