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

namespace Vell::FontEngine::Internal {

const void* const FontFaceInfo::_ownVtable = getVtable(FontFaceInfo("", false, false));

FontFaceInfo::FontFaceInfo(std::string name, bool bold, bool italic)
    : _name(std::move(name))
    , _bold(bold)
    , _italic(italic) {}

FontFaceInfo::~FontFaceInfo() = default;

std::string FontFaceInfo::getName() const {
    return _name;
}

bool FontFaceInfo::isBold() const {
    return _bold;
}

bool FontFaceInfo::isItalic() const {
    return _italic;
}

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
