#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Vtable.h>

#include <string>

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
