#include <FontEngine/FE_ExtFontInfo.h>

#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/FE_FontInfo.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine::Internal {

const void* const ExtFontInfo::_ownVtable = getVtable(ExtFontInfo(
    makeNNPtr<FontInfo>(makeNNPtr<FontFaceInfo>("", false, false), 0.0F, Gfx::TextPositionType::Normal)));

ExtFontInfo::ExtFontInfo(NNPtr<const Gfx::FontInfo> fontInfo, float letterSpacing)
    : _fontInfo(std::move(fontInfo))
    , _letterSpacing(letterSpacing) {}

ExtFontInfo::~ExtFontInfo() = default;

NNPtr<const Gfx::FontInfo> ExtFontInfo::getFontInfo() const {
    return _fontInfo;
}

float ExtFontInfo::getLetterSpacing() const {
    return _letterSpacing;
}

} // namespace Vell::FontEngine::Internal
