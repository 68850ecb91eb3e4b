#include <support/ClientDescriptions.h>
#include <support/ExpectAssertion.h>

#include <Gfx/Gfx.h>

#include <functional>
#include <type_traits>

namespace Vell::Gfx {
namespace {

using Testing::ClientFaceInfo;
using Testing::FaceInfoPtr;
using Testing::makeClientFaceInfo;

static_assert(!std::is_copy_assignable_v<FontFaceInfo>);
static_assert(std::is_abstract_v<FontFaceInfo> && std::has_virtual_destructor_v<FontFaceInfo>);

std::uint64_t hashFace(const std::string& name, bool bold = false, bool italic = false) {
    return ClientFaceInfo(name, bold, italic).getHash();
}

TEST(FontFaceInfo, HashesNameAndFlagsToFixedValues) {
    EXPECT_EQ(hashFace("A"), 0x9efcdc8845f713c1U);
    EXPECT_EQ(hashFace("DejaVu Sans"), 0x78ddbb4c7128072fU);
    EXPECT_EQ(hashFace("DejaVu Sans", true, true), 0xa2b3bc0291f2d17fU);
}

TEST(FontFaceInfo, HashesAnEmptyName) {
    EXPECT_EQ(hashFace("", false, false), 0xf7f700b40aaacbdcU);
    EXPECT_EQ(hashFace("", true, false), 0xfbfe0838f3f9bec0U);
    EXPECT_EQ(hashFace("", false, true), 0x2547e02727617588U);
    EXPECT_EQ(hashFace("", true, true), 0x0a89cfec9b8f7bc4U);
}

TEST(FontFaceInfo, HashesBytesAbove7FAsNegativeNumbers) {
    EXPECT_EQ(hashFace("Gr\xC3\xB6\xC3\x9F"
                       "e"),
              0x8343236073aa86e9U);
    EXPECT_EQ(hashFace("\x7F\x80\xFF", true), 0x4244d645c6fed880U);
}

TEST(FontFaceInfo, HashesTheWholeNameAcrossANul) {
    EXPECT_EQ(hashFace(std::string("a\0b", 3)), 0xcbafe1f88c35bf91U);
}

TEST(FontFaceInfo, ComputesItsHashOnce) {
    const ClientFaceInfo face("A", false, false);
    EXPECT_EQ(face.getHash(), face.getHash());
    EXPECT_EQ(face.nameCalls, 1);
    EXPECT_EQ(face.boldCalls, 1);
    EXPECT_EQ(face.italicCalls, 1);
    const ClientFaceInfo copy(face);
    EXPECT_EQ(copy.getHash(), face.getHash());
    EXPECT_EQ(copy.nameCalls, 1) << "a copy computes its own";
}

TEST(FontFaceInfo, HashesLikeItsPointer) {
    const FaceInfoPtr face = makeClientFaceInfo("DejaVu Sans", true, true);
    EXPECT_EQ(std::hash<FaceInfoPtr>()(face), 0xa2b3bc0291f2d17fU);
    EXPECT_EQ(std::hash<FontFaceInfo>()(*face), face->getHash());
}

TEST(FontFaceInfo, EqualsAnotherWithTheSameNameAndFlags) {
    EXPECT_TRUE(*makeClientFaceInfo("A", true, false) == *makeClientFaceInfo("A", true, false));
    EXPECT_TRUE(*makeClientFaceInfo("A", true, false) != *makeClientFaceInfo("B", true, false));
    EXPECT_TRUE(*makeClientFaceInfo("A", true, false) != *makeClientFaceInfo("A", false, false));
    EXPECT_TRUE(*makeClientFaceInfo("A", true, false) != *makeClientFaceInfo("A", true, true));
    EXPECT_TRUE(*makeClientFaceInfo("A") != *makeClientFaceInfo("a")) << "names are compared byte by byte";
    EXPECT_TRUE(*makeClientFaceInfo("A") != *makeClientFaceInfo("A "));
}

TEST(FontFaceInfo, StopsComparingAtTheFirstDifference) {
    const ClientFaceInfo face("A", false, false);
    EXPECT_FALSE(face == ClientFaceInfo("B", true, true));
    EXPECT_EQ(face.boldCalls, 0);
    EXPECT_FALSE(face == ClientFaceInfo("A", true, true));
    EXPECT_EQ(face.boldCalls, 1);
    EXPECT_EQ(face.italicCalls, 0);
}

TEST(FontFaceInfo, SharesACacheEntryWithItsEquals) {
    MRUCache<FaceInfoPtr, int, std::hash<FaceInfoPtr>, AreDeeplyEqualComparator> cache;
    ASSERT_NE(cache.put(makeClientFaceInfo("A", true), {1, 0}), nullptr);
    EXPECT_EQ(cache.put(makeClientFaceInfo("A", true), {2, 0}), nullptr);
    EXPECT_NE(cache.put(makeClientFaceInfo("A", false), {3, 0}), nullptr);
    ASSERT_NE(cache.get(makeClientFaceInfo("A", true)), nullptr);
    EXPECT_EQ(cache.get(makeClientFaceInfo("A", true))->getValue(), 1);
}

TEST(FontFaceInfo, EqualsItselfWithoutCallingItsAccessors) {
    const auto face = makeNNPtr<const ClientFaceInfo>("A", false, false);
    const FaceInfoPtr one = face;
    const FaceInfoPtr two = face;
    EXPECT_TRUE(AreDeeplyEqualComparator()(one, two));
    EXPECT_EQ(face->nameCalls, 0);
}

TEST(FontFaceInfoDeathTest, AssertsWhenANullPointerIsComparedOrHashed) {
    FaceInfoPtr source = makeClientFaceInfo();
    const FaceInfoPtr taken = std::move(source);
    VELL_EXPECT_ASSERTION(ComparisonDetails::arePointersDeeplyEqual(source, taken),
                          "Utils/Public/Ptr/CheckedPtr:206: assertion failed: _ptr");
    VELL_EXPECT_ASSERTION(std::hash<FaceInfoPtr>()(source),
                          "Utils/Public/Ptr/CheckedPtr:145: assertion failed: _ptr");
}

} // namespace
} // namespace Vell::Gfx
