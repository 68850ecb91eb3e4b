#include <FontEngine/FE_FontInfo.h>

#include <FontEngine/FE_FontFaceInfo.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine::Internal {

const void* const FontInfo::_ownVtable =
    getVtable(FontInfo(makeNNPtr<FontFaceInfo>("", false, false), 0.0F, Gfx::TextPositionType::Normal));

FontInfo::FontInfo(NNPtr<const Gfx::FontFaceInfo> fontFaceInfo, float size, Gfx::TextPositionType type)
    : _fontFaceInfo(std::move(fontFaceInfo))
    , _size(size)
    , _textPositionType(type) {}

FontInfo::~FontInfo() = default;

NNPtr<const Gfx::FontFaceInfo> FontInfo::getFontFaceInfo() const {
    return _fontFaceInfo;
}

float FontInfo::getSize() const {
    return _size;
}

Gfx::TextPositionType FontInfo::getTextPositionType() const {
    return _textPositionType;
}

} // namespace Vell::FontEngine::Internal
