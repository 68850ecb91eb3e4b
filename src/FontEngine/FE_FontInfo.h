#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

namespace Vell::FontEngine::Internal {

/// A font description that holds its values.
///
///     const auto font = Vell::makeNNPtr<const FontInfo>(face, 14.0F, Vell::Gfx::TextPositionType::Normal);
class VELL_API FontInfo : public Gfx::FontInfo {
public:
    /// Shares the face description; `size` is the em in the client's units, taken as it is.
    FontInfo(NNPtr<const Gfx::FontFaceInfo> fontFaceInfo, float size, Gfx::TextPositionType type);
    ~FontInfo() override;

    NNPtr<const Gfx::FontFaceInfo> getFontFaceInfo() const override;
    float getSize() const override;
    Gfx::TextPositionType getTextPositionType() const override;

    /// The description held, whatever a derived class answers. Valid as long as this object.
    const NNPtr<const Gfx::FontFaceInfo>& viewFontFaceInfo() const { return _fontFaceInfo; }

    /// Whether the accessors of `info` answer what it holds: whether it is of this class and of no derived
    /// one. It may be of a class without type information.
    static bool isExactly(const Gfx::FontInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until this library is initialised

    NNPtr<const Gfx::FontFaceInfo> _fontFaceInfo;
    float _size;
    Gfx::TextPositionType _textPositionType;
};

} // namespace Vell::FontEngine::Internal
