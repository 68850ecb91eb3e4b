#include <FontEngine/Renderer/LookUpModel.h>

#include <support/ClientDescriptions.h>

#include <Utils/Public/Ptr/PtrUtils.h>

#include <cmath>
#include <limits>

namespace Vell::FontEngine {

namespace {

class InterruptedFontInfo : public Gfx::FontInfo {
public:
    InterruptedFontInfo(const LookUpSetting& setting, Testing::FaceInfoPtr face, Interruption& interruption)
        : _setting(setting)
        , _face(std::move(face))
        , _interruption(interruption) {}

    Testing::FaceInfoPtr getFontFaceInfo() const override {
        _interruption.pass();
        return _setting.classes.isFaceNew
                   ? Testing::makeClientFaceInfo(_setting.family, _setting.bold, _setting.italic)
                   : _face;
    }
    float getSize() const override {
        _interruption.pass();
        return _setting.layout.size;
    }
    Gfx::TextPositionType getTextPositionType() const override {
        _interruption.pass();
        return _setting.layout.position;
    }

private:
    LookUpSetting _setting;
    Testing::FaceInfoPtr _face;
    Interruption& _interruption;
};

class InterruptedExtFontInfo : public Gfx::ExtFontInfo {
public:
    InterruptedExtFontInfo(Testing::FontInfoPtr font, float letterSpacing, Interruption& interruption)
        : _font(std::move(font))
        , _letterSpacing(letterSpacing)
        , _interruption(interruption) {}

    Testing::FontInfoPtr getFontInfo() const override {
        _interruption.pass();
        return _font;
    }
    float getLetterSpacing() const override {
        _interruption.pass();
        return _letterSpacing;
    }

private:
    Testing::FontInfoPtr _font;
    float _letterSpacing;
    Interruption& _interruption;
};

/// Returns `usual` or, rarely, another number: a zero, or one that FreeType does not accept.
float perturb(std::mt19937& random, float usual) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const float unusual[] = {0.0F, -0.0F, infinity, std::numeric_limits<float>::quiet_NaN()};
    return random() % 24 == 0 ? unusual[random() % 4] : usual;
}

unsigned char quantise(float pen, float ratio) {
    if (ratio >= 1.5F || !std::isfinite(pen)) {
        return 0;
    }
    return static_cast<unsigned char>(4 * static_cast<int>(16.0F * (pen - std::floor(pen))));
}

/// The font that supplies a character's glyph.
struct GlyphPlace {
    std::shared_ptr<const FontFace> face;
    Testing::FaceInfoPtr faceInfo;
    Gfx::CharMap::GlyphIndexWithAdvance glyph;
};

GlyphPlace findPlace(const FontFactory& factory, unsigned int code,
                     const Testing::ExtFontInfoPtr& extFontInfo, const Font& font) {
    const auto faceInfo = extFontInfo->getFontInfo()->getFontFaceInfo();
    const auto own = font.getFace()->getBasicMetrics().getCharMap()[code];
    if (own.glyphIndex == 0) {
        if (const auto other = factory.getDefaultFontForSymbol(code, extFontInfo->getFontInfo())) {
            return {other->getFace(), other->getFontInfo()->getFontFaceInfo(),
                    other->getFace()->getBasicMetrics().getCharMap()[code]};
        }
    }
    return {font.getFace(), faceInfo, own};
}

} // namespace

Testing::ExtFontInfoPtr LookUpSetting::makeExtFontInfo(Interruption& interruption) const {
    const auto face = classes.isClientFace ? Testing::makeClientFaceInfo(family, bold, italic)
                                           : Testing::makeFaceInfo(family, bold, italic);
    const Testing::FontInfoPtr font =
        classes.isClientFont
            ? Testing::FontInfoPtr(makeNNPtr<const InterruptedFontInfo>(*this, face, interruption))
            : Testing::makeFontInfo(face, layout.size, layout.position);
    return classes.isClientExt ? Testing::ExtFontInfoPtr(makeNNPtr<const InterruptedExtFontInfo>(
                                     font, layout.letterSpacing, interruption))
                               : Testing::makeExtFontInfo(font, layout.letterSpacing);
}

LookUpSetting makeRandomLookUpSetting(std::mt19937& random) {
    LookUpSetting setting{makeRandomSetting(random), "", false, false, {}};
    setting.layout.size = perturb(random, setting.layout.size);
    setting.layout.ratio = perturb(random, setting.layout.ratio);
    setting.layout.scale.x = perturb(random, setting.layout.scale.x);
    setting.layout.scale.y = perturb(random, setting.layout.scale.y);
    setting.family = random() % 4 == 0 ? "Symbols" : "Test Sans";
    setting.bold = random() % 4 == 0;
    setting.italic = random() % 4 == 0;
    if (random() % 2 == 0) {
        const bool isClientFont = random() % 2 == 0;
        setting.classes = {random() % 2 == 0, isClientFont, random() % 2 == 0,
                           isClientFont && random() % 3 == 0};
    }
    return setting;
}

RequestedGlyphs requestOneByOne(const LookUpSide& side, const std::vector<unsigned int>& text,
                                const Testing::ExtFontInfoPtr& extFontInfo, const Font& font,
                                const ModelSetting& setting, std::vector<BitmapGlyphInfo>& asked) {
    const float letterSpacing = extFontInfo->getLetterSpacing();
    const float size = font.getFontSize();
    RequestedGlyphs glyphs;
    float pen = 0.0F;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned int code = text[i];
        const bool isLast = i + 1 == text.size() || text[i + 1] != code;
        const GlyphPlace place = findPlace(side.getFactory(), code, extFontInfo, font);
        asked.emplace_back(place.faceInfo, code == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL,
                           place.glyph.glyphIndex, code, size, setting.scale, setting.ratio,
                           quantise(pen, setting.ratio), isLast, place.face->getTransform());
        const BitmapGlyphInfo key = asked.back();
        if (const auto bitmap = place.face->getBitmapGlyph(key, setting.flipVertically)) {
            glyphs.push_back({key, pen, bitmap});
        }
        const float glyphAdvance = size * place.glyph.advance;
        const float scaledAdvance = glyphAdvance * setting.scale.x;
        const float advance = scaledAdvance + setting.scale.x * letterSpacing;
        pen = advance + pen;
    }
    return glyphs;
}

std::vector<OutlineGlyph> requestOutlinesOneByOne(const std::vector<unsigned int>& text,
                                                  const Testing::ExtFontInfoPtr& extFontInfo,
                                                  const Font& font, Gfx::Painter& painter,
                                                  std::vector<GlyphInfo>& asked) {
    const auto faceInfo = extFontInfo->getFontInfo()->getFontFaceInfo();
    const auto& face = font.getFace();
    const auto unitsPerEm = static_cast<float>(face->getHandle()->units_per_EM);
    const float letterSpacing = extFontInfo->getLetterSpacing();
    const float spacing = unitsPerEm * letterSpacing / extFontInfo->getFontInfo()->getSize();
    std::vector<OutlineGlyph> glyphs;
    for (const unsigned int code : text) {
        const auto glyph = face->getBasicMetrics().getCharMap()[code];
        asked.emplace_back(faceInfo, glyph.glyphIndex, font.getFontSize(), face->getTransform());
        if (const auto path = face->getOutlineGlyphPath(GlyphInfo(asked.back()), painter)) {
            const float advance = unitsPerEm * glyph.advance;
            glyphs.emplace_back(path, advance + spacing);
        }
    }
    return glyphs;
}

void drawOneByOne(const RequestedGlyphs& glyphs, const Font& font,
                  const cinder::ColorAT<unsigned char>& color, BitmapGlyphPainter& painter) {
    for (const RequestedGlyph& glyph : glyphs) {
        const FT_Bitmap& bitmap = glyph.bitmap->bitmap;
        if (bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
            const BitmapGlyph keyed(glyph.bitmap, {glyph.pen, 0.0F}, glyph.key);
            const auto image = font.getFace()->getGlyphBitmapWithSubpixels(keyed, color);
            painter.drawGlyph(*image, {0, 0});
        } else {
            BitmapGlyphImage view;
            view.rows = bitmap.rows;
            view.width = bitmap.width;
            view.pitch = bitmap.pitch;
            view.buffer = bitmap.buffer;
            view.pixelMode = bitmap.pixel_mode;
            painter.drawGlyph(view, {0, 0});
        }
    }
}

} // namespace Vell::FontEngine
