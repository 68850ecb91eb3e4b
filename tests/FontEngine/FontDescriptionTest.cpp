#include <FontEngine/AssertionText.h>
#include <support/ClientDescriptions.h>

#include <FontEngine/FE_FontDescriptions.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace Vell::FontEngine::Internal {
namespace {

using Testing::FaceInfoPtr;
using Testing::makeFaceInfo;

static_assert(!std::is_copy_assignable_v<FontInfo>, "descriptions are immutable");

TEST(FontDescription, ReturnsItsArguments) {
    const FaceInfoPtr face = makeFaceInfo("a");
    const FontInfo font(face, 12.25F, Gfx::TextPositionType::Subscript);
    EXPECT_EQ(font.getFontFaceInfo().get(), face.get()) << "the same object";
    EXPECT_EQ(font.getSize(), 12.25F);
    EXPECT_EQ(font.getTextPositionType(), Gfx::TextPositionType::Subscript);
}

TEST(FontDescription, KeepsMeaninglessSizesAndPositions) {
    const FontInfo font(makeFaceInfo(), -3.0F, static_cast<Gfx::TextPositionType>(200));
    EXPECT_EQ(font.getSize(), -3.0F);
    EXPECT_EQ(font.getTextPositionType(), static_cast<Gfx::TextPositionType>(200));
}

TEST(FontDescription, SharesItsFaceDescriptionWhileItLives) {
    const std::shared_ptr<const Gfx::FontFaceInfo> face = makeFaceInfo("a");
    {
        const FontInfo font(face, 1.0F, Gfx::TextPositionType::Normal);
        EXPECT_EQ(face.use_count(), 2);
        const FaceInfoPtr taken = font.getFontFaceInfo();
        EXPECT_EQ(face.use_count(), 3);
    }
    EXPECT_EQ(face.use_count(), 1);
}

TEST(FontDescriptionDeathTest, AssertsOnANullFace) {
    const std::shared_ptr<const Gfx::FontFaceInfo> null;
    EXPECT_DEATH(FontInfo(null, 1.0F, Gfx::TextPositionType::Normal),
                 Testing::printsAssertion("Utils/Public/Ptr/CheckedPtr:206", "_ptr"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
