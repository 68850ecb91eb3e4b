#pragma once

namespace Vell::FontEngine {

/// The synthetic styles, which the engine draws because the font file lacks them: a set of flags.
enum class GlyphTransform : unsigned char { None = 0, Embolden = 1, Slant = 2, EmboldenAndSlant = 3 };

constexpr GlyphTransform makeGlyphTransform(bool embolden, bool slant) {
    return static_cast<GlyphTransform>((embolden ? 1 : 0) | (slant ? 2 : 0));
}

constexpr bool isEmboldened(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 1U) != 0;
}

constexpr bool isSlanted(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 2U) != 0;
}

} // namespace Vell::FontEngine
