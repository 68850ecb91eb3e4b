#include <FontEngine/AssertionText.h>
#include <support/ClientDescriptions.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace Vell::FontEngine::Internal {
namespace {

using Testing::FaceInfoPtr;
using Testing::makeFaceInfo;
using Testing::makeMovedFrom;
using Testing::printsAssertion;
using Testing::printsNullDereference;

std::uint64_t hashOf(const FaceInfoPtr& face) {
    return std::hash<FaceInfoPtr>()(face);
}

TEST(FaceDescription, ReturnsItsArguments) {
    const FontFaceInfo plain("Test Sans", false, true);
    EXPECT_EQ(plain.getName(), "Test Sans");
    EXPECT_FALSE(plain.isBold());
    EXPECT_TRUE(plain.isItalic());
    const FontFaceInfo nameless("", true, false);
    EXPECT_EQ(nameless.getName(), "");
    EXPECT_TRUE(nameless.isBold());
    EXPECT_FALSE(nameless.isItalic());
}

TEST(FaceDescription, KeepsZeroBytesInTheName) {
    EXPECT_EQ(FontFaceInfo(std::string("a\0b", 3), false, false).getName(), std::string("a\0b", 3));
}

TEST(FaceDescription, HashesNameThenBoldThenItalic) {
    EXPECT_EQ(hashOf(makeFaceInfo("Test Sans", false, false)), 0x6BFC7765CA811BE7U);
    EXPECT_EQ(hashOf(makeFaceInfo("Test Sans", true, false)), 0xFEECDC14401A4ECBU);
    EXPECT_EQ(hashOf(makeFaceInfo("Test Sans", false, true)), 0xC4B63FB58F2BD23BU);
}

TEST(FaceDescription, HashesAnEmptyName) {
    EXPECT_EQ(hashOf(makeFaceInfo("", false, false)), 0xF7F700B40AAACBDCU);
    EXPECT_EQ(hashOf(makeFaceInfo("", true, true)), 0x0A89CFEC9B8F7BC4U);
}

TEST(FaceDescription, HashesBytesAbove7FAsNegativeNumbers) {
    EXPECT_EQ(hashOf(makeFaceInfo("\xC3\xA9")), 0x593DDA04664B3337U);
    EXPECT_NE(hashOf(makeFaceInfo("\xC3\xA9")), 0x280196FC7BA99E0BU) << "as positive numbers";
}

TEST(FaceDescription, HashesLikeADescriptionOfTheClientsClass) {
    const auto foreign = makeNNPtr<const Testing::ClientFaceInfo>("Test Sans", true, false);
    EXPECT_EQ(hashOf(foreign), 0xFEECDC14401A4ECBU);
    EXPECT_EQ(hashOf(foreign), 0xFEECDC14401A4ECBU);
    EXPECT_EQ(foreign->nameCalls, 1) << "the second hash is remembered";
}

TEST(FaceDescription, IsEqualByValue) {
    const AreDeeplyEqualComparator areEqual;
    EXPECT_TRUE(areEqual(makeFaceInfo("a", true, false), makeFaceInfo("a", true, false)));
    EXPECT_EQ(hashOf(makeFaceInfo("a", true, false)), hashOf(makeFaceInfo("a", true, false)));
    EXPECT_FALSE(areEqual(makeFaceInfo("a", true, false), makeFaceInfo("b", true, false)));
    EXPECT_FALSE(areEqual(makeFaceInfo("a", true, false), makeFaceInfo("A", true, false)));
    EXPECT_FALSE(areEqual(makeFaceInfo("a", true, false), makeFaceInfo("a", false, false)));
    EXPECT_FALSE(areEqual(makeFaceInfo("a", true, false), makeFaceInfo("a", true, true)));
}

TEST(FaceDescription, EqualsItselfWithoutCallingItsAccessors) {
    const auto foreign = makeNNPtr<const Testing::ClientFaceInfo>("Test Sans", true, false);
    EXPECT_TRUE(ComparisonDetails::arePointersDeeplyEqual(foreign, foreign));
    EXPECT_EQ(foreign->nameCalls, 0);
}

static_assert(!std::is_copy_assignable_v<FontFaceInfo>, "descriptions are immutable");

TEST(FaceDescriptionDeathTest, AssertsOnNullPointers) {
    const FaceInfoPtr moved = makeMovedFrom(makeFaceInfo());
    EXPECT_DEATH(hashOf(moved), printsNullDereference());
    EXPECT_DEATH(AreDeeplyEqualComparator()(moved, makeFaceInfo()),
                 printsAssertion("Utils/Public/Ptr/CheckedPtr:206", "_ptr"));
    EXPECT_DEATH(AreDeeplyEqualComparator()(makeFaceInfo(), moved),
                 printsAssertion("Utils/Public/Ptr/CheckedPtr:206", "_ptr"));
    EXPECT_DEATH(derefNN(static_cast<const FontFaceInfo*>(nullptr)),
                 printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
