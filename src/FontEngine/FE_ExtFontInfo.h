#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

namespace Vell::FontEngine::Internal {

/// A description of how a text is set that holds its values.
///
///     const auto style = Vell::makeNNPtr<const ExtFontInfo>(font, 0.5F);
class VELL_API ExtFontInfo : public Gfx::ExtFontInfo {
public:
    /// Shares the font description; `letterSpacing` is in the units of the font size and may be negative.
    explicit ExtFontInfo(NNPtr<const Gfx::FontInfo> fontInfo, float letterSpacing = 0.0F);
    ~ExtFontInfo() override;

    NNPtr<const Gfx::FontInfo> getFontInfo() const override;
    float getLetterSpacing() const override;

    /// The description held, whatever a derived class answers. Valid as long as this object.
    const Gfx::FontInfo& viewFontInfo() const { return *_fontInfo; }

    /// Whether the accessors of `info` answer what it holds: whether it is of this class and of no derived
    /// one. It may be of a class without type information.
    static bool isExactly(const Gfx::ExtFontInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until this library is initialised

    NNPtr<const Gfx::FontInfo> _fontInfo;
    float _letterSpacing;
};

} // namespace Vell::FontEngine::Internal
