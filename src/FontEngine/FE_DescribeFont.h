#pragma once

#include <FontEngine/FE_ExtFontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <string>

namespace Vell::FontEngine {

/// What sets a font apart from the plain one of its family and size. A plain value: set the members, or chain
/// the setters where the style is needed.
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

/// Describes a font: the object that the factory, the text painters and the functions of FE_DrawText.h take.
/// It is not the font itself: no file is looked for, so a family that is not installed is no error here.
///
///     const auto font = describeFont("DejaVu Sans", 16.0F);
///     const float lineHeight = factory->getFontMetrics(font->getFontInfo())->getHeight();
///
/// `family` is in UTF-8; empty means the loader's default family. `size` is the em in the client's units.
/// Both, and the style, are taken as they are: a size that is not finite gives lengths that are not finite,
/// and such text draws nothing.
///
/// Describe a font once and keep the description. It is immutable and keeps its hash, so that the next text
/// in it finds the font sooner.
///
/// Ownership: the caller shares it with whoever draws with it. Threads: any number may use one description.
/// Errors: std::bad_alloc only.
VELL_API NNPtr<const Gfx::ExtFontInfo> describeFont(std::string family, float size,
                                                    const FontStyle& style = {});

} // namespace Vell::FontEngine
