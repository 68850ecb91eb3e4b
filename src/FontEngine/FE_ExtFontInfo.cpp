#include <FontEngine/FE_ExtFontInfo.h>

#include <utility>

namespace Vell::FontEngine::Internal {

ExtFontInfo::ExtFontInfo(CheckedPtrImpl<const Gfx::FontInfo, false> fontInfo, float letterSpacing)
    : _fontInfo(std::move(fontInfo))
    , _letterSpacing(letterSpacing) {}

ExtFontInfo::~ExtFontInfo() = default;

CheckedPtrImpl<const Gfx::FontInfo, false> ExtFontInfo::getFontInfo() const {
    return _fontInfo;
}

float ExtFontInfo::getLetterSpacing() const {
    return _letterSpacing;
}

} // namespace Vell::FontEngine::Internal
