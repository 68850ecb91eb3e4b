#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

namespace Vell::FontEngine::Internal {

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

} // namespace Vell::FontEngine::Internal
