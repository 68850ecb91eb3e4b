#include "fonts/TextFont.h"

#include "Errors.h"
#include "fonts/FaceFacts.h"

#include <fmt/format.h>

namespace Vell::Tool {

namespace {

using FontEngine::Font;
using FaceInfoPtr = NNPtr<const Gfx::FontFaceInfo>;
using FontInfoPtr = NNPtr<const Gfx::FontInfo>;

FaceInfoPtr makeFaceInfo(const FontRequest& request) {
    return makeNNPtr<const FontEngine::Internal::FontFaceInfo>(request.family, request.isBold,
                                                               request.isItalic);
}

std::shared_ptr<const Font> openFont(const FactoryPtr& factory, const FontInfoPtr& fontInfo) {
    try {
        return std::make_shared<const Font>(factory->getFont(fontInfo));
    } catch (const FontLoaders::FreeTypeException& error) {
        const std::string name = fontInfo->getFontFaceInfo()->getName();
        throw ToolError(fmt::format("the font '{}' cannot be opened: {}", name.empty() ? defaultFamily : name,
                                    error.what()));
    }
}

} // namespace

bool isInstalled(const FactoryPtr& factory, const FontRequest& request) {
    return factory->getFaceData(makeFaceInfo(request)) != nullptr;
}

TextFont makeTextFont(const FactoryPtr& factory, const FontRequest& request) {
    if (!isInstalled(factory, request)) {
        throw ToolError(fmt::format("the font family '{}' is not installed", request.family));
    }
    const FontInfoPtr fontInfo = makeNNPtr<const FontEngine::Internal::FontInfo>(
        makeFaceInfo(request), request.size, Gfx::TextPositionType::Normal);
    return {openFont(factory, fontInfo),
            makeNNPtr<const FontEngine::Internal::ExtFontInfo>(fontInfo, request.letterSpacing),
            std::make_shared<const FontEngine::ColorPalette>(FontEngine::ColorPalette{request.palette, {}})};
}

bool hasColors(const TextFont& font) {
    return font.font->getFontFactory().getColorGlyphs().hasColors(*font.font->getFace());
}

bool hasGlyph(const TextFont& font, unsigned int codePoint) {
    return font.font->getFace()->getBasicMetrics().getCharMap()[codePoint].glyphIndex != 0;
}

TextFont chooseFont(const TextFont& font, unsigned int codePoint) {
    if (hasGlyph(font, codePoint)) {
        return font;
    }
    const auto fallback =
        font.font->getFontFactory().getDefaultFontForSymbol(codePoint, font.setting->getFontInfo());
    if (!fallback) {
        return font;
    }
    return {fallback,
            makeNNPtr<const FontEngine::Internal::ExtFontInfo>(fallback->getFontInfo(),
                                                               font.setting->getLetterSpacing()),
            font.palette};
}

std::string getAskedName(const TextFont& font) {
    const std::string name = font.setting->getFontInfo()->getFontFaceInfo()->getName();
    return name.empty() ? getFamilyName(*font.font->getFace()) : name;
}

} // namespace Vell::Tool
