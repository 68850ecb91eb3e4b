// Descriptions and keys are immutable values, and their interfaces are abstract.

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Utils/Public/Ptr/PtrUtils.h>

using namespace Vell;
using FontEngine::GlyphInfo;
using FontEngine::GlyphTransform;

void take(const FontEngine::Internal::ExtFontInfo&);

int main() {
    const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>("name", false, true);
    FontEngine::Internal::FontFaceInfo other("other", true, true);
    const auto font =
        makeNNPtr<const FontEngine::Internal::FontInfo>(face, 10.0F, Gfx::TextPositionType::Normal);
    FontEngine::Internal::FontInfo otherFont(face, 11.0F, Gfx::TextPositionType::Subscript);
    const GlyphInfo key(face, 1, 10.0F, GlyphTransform::Slant);
    const FontEngine::Internal::ExtFontInfo set(font);

#ifdef MISUSE_FACE_DESCRIPTION_ASSIGNMENT // deleted
    other = *face;
#endif
#ifdef MISUSE_FONT_DESCRIPTION_ASSIGNMENT // deleted
    otherFont = *font;
#endif
#ifdef MISUSE_ABSTRACT_FACE_DESCRIPTION // abstract|protected
    Gfx::FontFaceInfo abstractFace;
#endif
#ifdef MISUSE_ABSTRACT_TEXT_DESCRIPTION // abstract
    Gfx::ExtFontInfo abstractSetting;
#endif
#ifdef MISUSE_FONT_DESCRIPTION_WITHOUT_FACE // deleted
    FontEngine::Internal::FontInfo faceless(nullptr, 10.0F, Gfx::TextPositionType::Normal);
#endif
#ifdef MISUSE_POSITION_BY_NUMBER // cannot convert|no matching (function|constructor)
    FontEngine::Internal::FontInfo numberedFont(face, 10.0F, 1);
#endif
#ifdef MISUSE_IMPLICIT_TEXT_DESCRIPTION // initialization|no viable|no matching
    take(font);
#endif
#ifdef MISUSE_STYLE_BY_FLAG // initialization|no viable conversion|no matching|could not bind
    FontEngine::describeFont("name", 10.0F, true);
#endif
#ifdef MISUSE_STYLE_BY_FLAGS // initialization|no matching function
    FontEngine::describeFont("name", 10.0F, {true, false});
#endif
#ifdef MISUSE_KEY_WITHOUT_DESCRIPTION // no matching (function|constructor)
    GlyphInfo nothing;
#endif
#ifdef MISUSE_KEY_OF_A_NULL_DESCRIPTION // deleted
    GlyphInfo null(nullptr, 1, 10.0F, GlyphTransform::None);
#endif
#ifdef MISUSE_TRANSFORM_BY_NUMBER // cannot convert|no matching (function|constructor)
    GlyphInfo numberedKey(face, 1, 10.0F, 2);
#endif
#ifdef MISUSE_TRANSFORM_AS_A_NUMBER // cannot convert|cannot initialize
    const int number = key.getTransform();
#endif
#ifdef MISUSE_REPLACING_A_DESCRIPTION // passing|no viable overloaded|no match|discards qualifiers
    key.getFaceInfo() = face;
#endif
    return key.isItalic() && other.isBold() && otherFont.getSize() > 0 && set.getLetterSpacing() == 0 ? 0 : 1;
}
