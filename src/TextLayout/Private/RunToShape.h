#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/FeatureSettings.h>
#include <TextLayout/Private/ShapingBuffer.h>

#include <hb.h>

namespace Vell::TextLayout {

/// A part of a text that one font draws in one script and direction.
struct RunToShape {
    TextPart part;
    const FontEngine::FontFace& face;
    hb_segment_properties_t properties;
    FeatureSettings& features; ///< those of parts of the text, too

    bool isRightToLeft() const { return HB_DIRECTION_IS_BACKWARD(properties.direction); }
};

} // namespace Vell::TextLayout
