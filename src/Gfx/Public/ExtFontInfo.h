#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

/// A font description together with how a text is set in it.
class VELL_API ExtFontInfo {
public:
    virtual ~ExtFontInfo();

    virtual NNPtr<const FontInfo> getFontInfo() const = 0;
    /// Added to the advance of every character, the last one included, in the units of the font size.
    virtual float getLetterSpacing() const = 0;
};

} // namespace Vell::Gfx
