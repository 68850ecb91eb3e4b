#pragma once

#include <Gfx/Public/ExtFontInfo.h>
#include <Utils/Public/Export.h>

namespace Vell::FontEngine::Internal {

/// A description of how a text is set that holds its values.
///
///     const auto style = Vell::makeNNPtr<const ExtFontInfo>(font, 0.5F);
class VELL_API ExtFontInfo : public Gfx::ExtFontInfo {
public:
    /// Shares the font description; `letterSpacing` is in the units of the font size and may be negative.
    explicit ExtFontInfo(CheckedPtrImpl<const Gfx::FontInfo, false> fontInfo, float letterSpacing = 0.0F);
    ~ExtFontInfo() override;

    CheckedPtrImpl<const Gfx::FontInfo, false> getFontInfo() const override;
    float getLetterSpacing() const override;

    /// The description held, whatever a derived class answers. Valid as long as this object.
    const Gfx::FontInfo& viewFontInfo() const { return *_fontInfo; }

private:
    CheckedPtrImpl<const Gfx::FontInfo, false> _fontInfo;
    float _letterSpacing;
};

} // namespace Vell::FontEngine::Internal
