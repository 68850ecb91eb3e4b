#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

namespace Vell::FontEngine::Internal {

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
