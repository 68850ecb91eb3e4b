#include <support/ClientDescriptions.h>

#include <Gfx/Gfx.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <type_traits>

namespace Vell::Gfx {
namespace {

using Testing::ClientFaceInfo;
using Testing::ClientFontInfo;
using Testing::FaceInfoPtr;
using Testing::FontInfoPtr;
using Testing::makeClientFaceInfo;

static_assert(!std::is_copy_assignable_v<FontInfo>);
static_assert(std::is_abstract_v<FontInfo> && std::is_abstract_v<ExtFontInfo>);
static_assert(std::has_virtual_destructor_v<FontInfo>);
static_assert(static_cast<int>(TextPositionType::Normal) == 0);
static_assert(static_cast<int>(TextPositionType::Superscript) == 1);
static_assert(static_cast<int>(TextPositionType::Subscript) == 2);
static_assert(sizeof(TextPositionType) == 1);

FontInfoPtr makeInfo(float size, TextPositionType type, const FaceInfoPtr& face = makeClientFaceInfo()) {
    return makeNNPtr<ClientFontInfo>(face, size, type);
}

TEST(FontInfo, HashesFaceSizeAndPosition) {
    EXPECT_EQ(makeInfo(10.0F, TextPositionType::Normal)->getHash(), 0xf82f153c3dfc43c5U);
    EXPECT_EQ(makeInfo(-12.5F, TextPositionType::Superscript)->getHash(), 0x3c71257485d86f34U);
    EXPECT_EQ(makeInfo(0.0F, TextPositionType::Subscript)->getHash(), 0x5aee35001e398f16U);
    EXPECT_EQ(makeInfo(-0.0F, TextPositionType::Subscript)->getHash(), 0x5aee35001e398f16U);
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(makeInfo(infinity, TextPositionType::Normal)->getHash(), 0x18fd083af7dcbf17U);
    const FontInfoPtr info = makeInfo(10.0F, TextPositionType::Normal);
    EXPECT_EQ(std::hash<FontInfoPtr>()(info), info->getHash());
}

TEST(FontInfo, ComputesItsHashAgainInACopy) {
    const auto face = makeNNPtr<const ClientFaceInfo>("A", false, false);
    const ClientFontInfo info(face, 10.0F, TextPositionType::Normal);
    const std::uint64_t hash = info.getHash();
    const ClientFontInfo copy(info); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.getHash(), hash);
    EXPECT_TRUE(copy == info);
    EXPECT_EQ(copy.getFontFaceInfo(), info.getFontFaceInfo()) << "the same object";
}

TEST(FontInfo, EqualsAnotherWithTheSameValues) {
    const FontInfoPtr info = makeInfo(10.0F, TextPositionType::Normal);
    EXPECT_TRUE(*info == *makeInfo(10.0F, TextPositionType::Normal)) << "the faces are equal, not the same";
    EXPECT_TRUE(*info != *makeInfo(10.5F, TextPositionType::Normal));
    EXPECT_TRUE(*info != *makeInfo(10.0F, TextPositionType::Subscript));
    EXPECT_TRUE(*info != *makeInfo(10.0F, TextPositionType::Normal, makeClientFaceInfo("B")));
    EXPECT_TRUE(*makeInfo(0.0F, TextPositionType::Normal) == *makeInfo(-0.0F, TextPositionType::Normal));
}

} // namespace
} // namespace Vell::Gfx
