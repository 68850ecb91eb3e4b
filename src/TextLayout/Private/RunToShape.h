#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/ShapingBuffer.h>
#include <TextLayout/Public/ScriptRuns.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::TextLayout {

/// A part of a text that one font draws in one script and direction.
struct RunToShape {
    TextPart part;
    const NNPtr<const FontEngine::FontFace>& face;
    ScriptCode script;
    bool isRightToLeft;
};

} // namespace Vell::TextLayout
