#include <FontEngine/FE_DescribeFont.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine {

NNPtr<const Gfx::ExtFontInfo> describeFont(std::string family, float size, const FontStyle& style) {
    const auto face =
        makeNNPtr<const Internal::FontFaceInfo>(std::move(family), style.isBold, style.isItalic);
    const auto font = makeNNPtr<const Internal::FontInfo>(face, size, style.position);
    return makeNNPtr<const Internal::ExtFontInfo>(font, style.letterSpacing);
}

} // namespace Vell::FontEngine
