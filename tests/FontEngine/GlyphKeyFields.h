#pragma once

#include <support/Descriptions.h>

#include <FontEngine/FE_GlyphInfo.h>

namespace Vell::FontEngine {

/// The fields of a glyph key, which tests change one by one:
/// `KeyFields{}.with(&KeyFields::size, 12.0F).makeBitmap()`.
struct KeyFields {
    Testing::FaceInfoPtr face = Testing::makeFaceInfo();
    unsigned long glyph = 1;
    float size = 10.0F;
    GlyphTransform transform = GlyphTransform::None;
    FT_Render_Mode mode = FT_RENDER_MODE_NORMAL;
    unsigned int unicode = 'A';
    cinder::Vec2<float> scale = {1.0F, 1.0F};
    float ratio = 1.0F;
    unsigned char offset = 0;
    bool isLast = true;
    unsigned int color = 0;

    template <class Field, class Value>
    KeyFields with(Field KeyFields::*field, Value value) const {
        KeyFields changed = *this;
        changed.*field = static_cast<Field>(value);
        return changed;
    }

    GlyphInfo makeOutline() const { return GlyphInfo(face, glyph, size, transform); }
    BitmapGlyphInfo makeBitmap() const {
        return BitmapGlyphInfo(face, mode, glyph, unicode, size, scale, ratio, offset, isLast, transform);
    }
    ColoredBitmapGlyphInfo makeColored() const {
        return ColoredBitmapGlyphInfo(face, mode, glyph, unicode, size, scale, ratio, offset, isLast,
                                      transform, color);
    }
};

/// The fields of the keys whose hashes the tests know.
inline KeyFields makeHashedFields() {
    KeyFields fields;
    fields.glyph = 36;
    fields.size = 12.5F;
    fields.mode = FT_RENDER_MODE_LCD;
    fields.scale = {1.5F, -2.0F};
    fields.ratio = 2.25F;
    fields.offset = 60;
    fields.isLast = false;
    fields.color = 0x0A141E;
    return fields;
}

} // namespace Vell::FontEngine
