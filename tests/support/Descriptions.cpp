#include <support/Descriptions.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Ptr/PtrUtils.h>

namespace Vell::Testing {

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
    return makeNNPtr<FontEngine::Internal::ExtFontInfo>(fontInfo, letterSpacing);
}

ExtFontInfoPtr makeExtFontInfo(float letterSpacing) {
    return makeExtFontInfo(makeFontInfo(), letterSpacing);
}

} // namespace Vell::Testing
