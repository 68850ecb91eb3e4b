#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <string>

namespace Vell::FontEngine {

/// How a font differs from the regular one of its family and size. A plain value: set the members, or chain
/// the setters where you need the style.
///
///     const auto title = describeFont("DejaVu Serif", 24.0F, FontStyle{}.setBold().setLetterSpacing(0.5F));
struct FontStyle {
    /// Not `= default`: `{true, false}` would be a style, and nobody could read it.
    constexpr FontStyle() {} // NOLINT(modernize-use-equals-default)

    bool isBold = false;
    bool isItalic = false;
    /// Added to the advance of every character, in the units of the font size; may be negative.
    float letterSpacing = 0.0F;
    /// Superscript and subscript text is smaller; see TextSize::baseLineShift for where to draw it.
    Gfx::TextPositionType position = Gfx::TextPositionType::Normal;

    constexpr FontStyle& setBold(bool value = true) {
        isBold = value;
        return *this;
    }
    constexpr FontStyle& setItalic(bool value = true) {
        isItalic = value;
        return *this;
    }
    constexpr FontStyle& setLetterSpacing(float value) {
        letterSpacing = value;
        return *this;
    }
    constexpr FontStyle& setPosition(Gfx::TextPositionType value) {
        position = value;
        return *this;
    }
};

/// Makes a description, which the factory, the text painters and the functions of FE_DrawText.h take. It is
/// not the font itself: describeFont looks for no file, so it reports no error if the family is not
/// installed.
///
///     const auto font = describeFont("DejaVu Sans", 16.0F);
///     const float lineHeight = factory->getFontMetrics(font->getFontInfo())->getHeight();
///
/// `family` is in UTF-8; empty means the loader's default family. `size` is the em in the client's units.
/// describeFont takes all values as they are. A size that is not finite gives lengths that are not finite,
/// and such text draws nothing.
///
/// Describe a font once and keep the description. It is immutable and keeps its hash, so the next look-up of
/// the font is faster.
///
/// Ownership: the caller shares the description with whatever is made from it. Threads: any number may use
/// one description. Errors: std::bad_alloc only.
VELL_API NNPtr<const Gfx::ExtFontInfo> describeFont(std::string family, float size,
                                                    const FontStyle& style = {});

} // namespace Vell::FontEngine
