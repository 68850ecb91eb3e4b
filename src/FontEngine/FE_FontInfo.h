#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>

namespace Vell::FontEngine::Internal {

/// A font description that holds its values.
///
///     const auto font = Vell::makeNNPtr<const FontInfo>(face, 14.0F, Vell::Gfx::TextPositionType::Normal);
class VELL_API FontInfo : public Gfx::FontInfo {
public:
    /// Shares the face description; `size` is the em in the client's units, taken as it is.
    FontInfo(CheckedPtrImpl<const Gfx::FontFaceInfo, false> fontFaceInfo, float size,
             Gfx::TextPositionType type);
    ~FontInfo() override;

    CheckedPtrImpl<const Gfx::FontFaceInfo, false> getFontFaceInfo() const override;
    float getSize() const override;
    Gfx::TextPositionType getTextPositionType() const override;

private:
    CheckedPtrImpl<const Gfx::FontFaceInfo, false> _fontFaceInfo;
    float _size;
    Gfx::TextPositionType _textPositionType;
};

} // namespace Vell::FontEngine::Internal
