#include <support/Descriptions.h>

#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/FE_FontInfo.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::Testing {

SimpleExtFontInfo::SimpleExtFontInfo(FontInfoPtr fontInfo, float letterSpacing)
    : _fontInfo(std::move(fontInfo))
    , _letterSpacing(letterSpacing) {}

SimpleExtFontInfo::~SimpleExtFontInfo() = default;

FontInfoPtr SimpleExtFontInfo::getFontInfo() const {
    return _fontInfo;
}

float SimpleExtFontInfo::getLetterSpacing() const {
    return _letterSpacing;
}

FaceInfoPtr makeFaceInfo(const std::string& name, bool bold, bool italic) {
    return makeNNPtr<FontEngine::Internal::FontFaceInfo>(name, bold, italic);
}

FontInfoPtr makeFontInfo(const FaceInfoPtr& faceInfo, float size, Gfx::TextPositionType type) {
    return makeNNPtr<FontEngine::Internal::FontInfo>(faceInfo, size, type);
}

FontInfoPtr makeFontInfo(const std::string& name, float size) {
    return makeFontInfo(makeFaceInfo(name), size);
}

ExtFontInfoPtr makeExtFontInfo(const FontInfoPtr& fontInfo, float letterSpacing) {
    return makeNNPtr<SimpleExtFontInfo>(fontInfo, letterSpacing);
}

ExtFontInfoPtr makeExtFontInfo(float letterSpacing) {
    return makeExtFontInfo(makeFontInfo(), letterSpacing);
}

} // namespace Vell::Testing
