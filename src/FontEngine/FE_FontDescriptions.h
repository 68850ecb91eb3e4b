#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Vtable.h>

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

/// This library's own descriptions, each of which stores what it was made from. Any number of threads may
/// read one.
namespace Vell::FontEngine::Internal {

/// Describes a face: family, bold and italic, stored by value. Immutable.
///
///     const auto face = Vell::makeNNPtr<const FontFaceInfo>("DejaVu Sans", false, true);
class VELL_API FontFaceInfo : public Gfx::FontFaceInfo {
public:
    /// `name` is the family in UTF-8. The empty string means the loader's default face.
    FontFaceInfo(std::string name, bool bold, bool italic);
    ~FontFaceInfo() override;

    std::string getName() const override;
    bool isBold() const override;
    bool isItalic() const override;

    /// Compares the stored values without calling virtual functions and without copying names.
    bool holdsSameAs(const FontFaceInfo& other) const {
        return this == &other || (_name == other._name && _bold == other._bold && _italic == other._italic);
    }

    /// Returns whether `info` has exactly this class, not a derived one, so that its accessors return the
    /// stored values. Works for classes compiled without type information, too.
    static bool isExactly(const Gfx::FontFaceInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until the library's static initialisation

    std::string _name;
    bool _bold;
    bool _italic;
};

/// Describes a font: a face description, a size and a text position, stored by value. Immutable.
///
///     const auto font = Vell::makeNNPtr<const FontInfo>(face, 14.0F, Vell::Gfx::TextPositionType::Normal);
class VELL_API FontInfo : public Gfx::FontInfo {
public:
    /// Shares the face description. `size` is the em in the client's logical units; it is not checked.
    FontInfo(NNPtr<const Gfx::FontFaceInfo> fontFaceInfo, float size, Gfx::TextPositionType type);
    ~FontInfo() override;

    NNPtr<const Gfx::FontFaceInfo> getFontFaceInfo() const override;
    float getSize() const override;
    Gfx::TextPositionType getTextPositionType() const override;

    /// Returns the stored description without calling virtual functions. Valid as long as this object.
    const NNPtr<const Gfx::FontFaceInfo>& viewFontFaceInfo() const { return _fontFaceInfo; }

    /// Returns whether `info` has exactly this class, not a derived one, so that its accessors return the
    /// stored values. Works for classes compiled without type information, too.
    static bool isExactly(const Gfx::FontInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until the library's static initialisation

    NNPtr<const Gfx::FontFaceInfo> _fontFaceInfo;
    float _size;
    Gfx::TextPositionType _textPositionType;
};

/// Describes how a text is set: a font description and letter spacing, stored by value. Immutable.
///
///     const auto style = Vell::makeNNPtr<const ExtFontInfo>(font, 0.5F);
class VELL_API ExtFontInfo : public Gfx::ExtFontInfo {
public:
    /// Shares the font description. `letterSpacing` is in the units of the font size and may be negative.
    explicit ExtFontInfo(NNPtr<const Gfx::FontInfo> fontInfo, float letterSpacing = 0.0F);
    ~ExtFontInfo() override;

    NNPtr<const Gfx::FontInfo> getFontInfo() const override;
    float getLetterSpacing() const override;

    /// Returns the stored description without calling virtual functions. Valid as long as this object.
    const Gfx::FontInfo& viewFontInfo() const { return *_fontInfo; }

    /// Returns whether `info` has exactly this class, not a derived one, so that its accessors return the
    /// stored values. Works for classes compiled without type information, too.
    static bool isExactly(const Gfx::ExtFontInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until the library's static initialisation

    NNPtr<const Gfx::FontInfo> _fontInfo;
    float _letterSpacing;
};

} // namespace Vell::FontEngine::Internal
