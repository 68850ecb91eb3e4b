#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <TextLayout/Public/ShapedText.h>

#include <memory>

namespace Vell::TextLayout {

/// The factory whose colour glyphs a font may have. Null, at the cost of a look at the face, for a font
/// without colour tables. Null also after the factory was destroyed.
inline std::shared_ptr<const FontEngine::FontFactory> findColorFactory(const RunFont& font) {
    const FontEngine::FontFace& face = *font.font.getFace();
    return FT_HAS_COLOR(face.getHandle().get()) ? face.shareFontFactory() : nullptr;
}

} // namespace Vell::TextLayout
