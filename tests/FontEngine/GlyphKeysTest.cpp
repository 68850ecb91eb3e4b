#include <FontEngine/AssertionText.h>
#include <FontEngine/GlyphKeyFields.h>

#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::makeFaceInfo;
using Testing::makeMovedFrom;
using Testing::printsAssertion;
using Testing::printsNullDereference;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

KeyFields makeFields() {
    KeyFields fields;
    fields.glyph = 36;
    fields.size = 12.5F;
    return fields;
}

/// Keys that differ from the original in one field each, for every field of an outline's identity.
std::vector<KeyFields> makeOutlineVariants() {
    const KeyFields fields = makeFields();
    return {fields.with(&KeyFields::face, makeFaceInfo("Test Serif")),
            fields.with(&KeyFields::face, makeFaceInfo("Test Sans", true)),
            fields.with(&KeyFields::face, makeFaceInfo("Test Sans", false, true)),
            fields.with(&KeyFields::glyph, 37),
            fields.with(&KeyFields::glyph, 0x100000024),
            fields.with(&KeyFields::size, std::nextafter(12.5F, 13.0F)),
            fields.with(&KeyFields::transform, GlyphTransform::Embolden),
            fields.with(&KeyFields::transform, GlyphTransform::Slant),
            fields.with(&KeyFields::transform, GlyphTransform::EmboldenAndSlant)};
}

/// The same for the fields of a bitmap's identity.
std::vector<KeyFields> makeBitmapVariants() {
    const KeyFields fields = makeFields();
    std::vector<KeyFields> variants = makeOutlineVariants();
    variants.insert(variants.end(), {fields.with(&KeyFields::mode, FT_RENDER_MODE_LCD),
                                     fields.with(&KeyFields::scale, cinder::Vec2<float>(2, 1)),
                                     fields.with(&KeyFields::scale, cinder::Vec2<float>(1, 2)),
                                     fields.with(&KeyFields::ratio, 2.0F), fields.with(&KeyFields::offset, 4),
                                     fields.with(&KeyFields::isLast, false)});
    return variants;
}

TEST(GlyphKeysOfOutlines, ReturnTheirArguments) {
    const auto face = makeFaceInfo("Test Sans", true, false);
    const GlyphInfo key(face, 0x123456789AUL, 12.5F, GlyphTransform::Slant);
    EXPECT_EQ(key.getFaceInfo().get(), face.get());
    EXPECT_EQ(key.getGlyphIndex(), 0x123456789AUL);
    EXPECT_EQ(key.getFontSize(), 12.5F);
    EXPECT_EQ(key.getTransform(), GlyphTransform::Slant);
}

TEST(GlyphKeysOfOutlines, HaveTheStyleOfTheDescriptionNotOfTheTransform) {
    const GlyphInfo bold(makeFaceInfo("a", true, false), 1, 1.0F, GlyphTransform::Slant);
    EXPECT_TRUE(bold.isBold());
    EXPECT_FALSE(bold.isItalic());
    const GlyphInfo italic(makeFaceInfo("a", false, true), 1, 1.0F, GlyphTransform::Embolden);
    EXPECT_FALSE(italic.isBold());
    EXPECT_TRUE(italic.isItalic());
}

TEST(GlyphKeysOfBitmaps, ReturnTheirArguments) {
    const BitmapGlyphInfo key(makeFaceInfo(), FT_RENDER_MODE_LCD, 7, 0x1F600, 12.5F, {1.5F, -2.0F}, 2.25F,
                              255, false, GlyphTransform::Embolden);
    EXPECT_EQ(key.getGlyphIndex(), 7U);
    EXPECT_EQ(key.getFontSize(), 12.5F);
    EXPECT_EQ(key.getTransform(), GlyphTransform::Embolden);
    EXPECT_EQ(key.getRenderMode(), FT_RENDER_MODE_LCD);
    EXPECT_EQ(key.getUnicode(), 0x1F600U);
    EXPECT_EQ(key.getScale(), (cinder::Vec2<float>(1.5F, -2.0F)));
    EXPECT_EQ(key.getDevicePixelRatio(), 2.25F);
    EXPECT_EQ(key.getOffsetInsidePixel(), 255);
    EXPECT_FALSE(key.isLast());
}

TEST(GlyphKeys, StoreTheTransformAsFlagsInOneByte) {
    EXPECT_EQ(static_cast<int>(GlyphTransform::None), 0);
    EXPECT_EQ(static_cast<int>(GlyphTransform::Embolden), 1);
    EXPECT_EQ(static_cast<int>(GlyphTransform::Slant), 2);
    EXPECT_EQ(static_cast<int>(GlyphTransform::EmboldenAndSlant), 3);
    static_assert(std::is_same_v<std::underlying_type_t<GlyphTransform>, unsigned char>);
}

TEST(GlyphKeysOfOutlines, HashFaceThenGlyphThenSizeThenTransform) {
    const KeyFields fields = makeFields();
    EXPECT_EQ(fields.makeOutline().hash(), 0x73CC07A02F13733CU);
    EXPECT_EQ(fields.with(&KeyFields::transform, GlyphTransform::EmboldenAndSlant).makeOutline().hash(),
              0x07CCCE4D666826A0U);
    EXPECT_EQ(fields.with(&KeyFields::glyph, 0x100000024).makeOutline().hash(), 0x002CEB3B44296A19U)
        << "all 64 bits of the index";
}

TEST(GlyphKeysOfOutlines, HashZerosInfinitiesAndNaNByFixedNumbers) {
    const auto hash = [](float size) {
        return makeFields().with(&KeyFields::size, size).makeOutline().hash();
    };
    EXPECT_EQ(hash(0.0F), 0x96CDA3F38FA51A28U);
    EXPECT_EQ(hash(-0.0F), 0x96CDA3F38FA51A28U);
    EXPECT_EQ(hash(-12.5F), 0xD68039D4A814C746U);
    EXPECT_EQ(hash(std::numeric_limits<float>::denorm_min()), 0xADD215EEEAF352D4U);
    EXPECT_EQ(hash(infinity), 0xC1FBFCFA60355F81U);
    EXPECT_EQ(hash(-infinity), 0x67D592B53C4EF267U);
    EXPECT_EQ(hash(notANumber), 0xE94ADD660B06ED69U);
}

TEST(GlyphKeysOfBitmaps, HashTheBaseThenTheirOwnFields) {
    KeyFields fields = makeFields();
    EXPECT_EQ(fields.makeBitmap().hash(), 0x71A6DF3BD1043A90U);
    EXPECT_EQ(makeHashedFields().makeBitmap().hash(), 0x4653F0FAEA8A898EU);
    fields.scale = {-0.0F, notANumber};
    fields.ratio = infinity;
    fields.offset = 255;
    fields.isLast = true;
    EXPECT_EQ(fields.makeBitmap().hash(), 0x0AE7A61AF4F0F4C3U);
}

TEST(GlyphKeysOfImages, HashTheBitmapThenTheColor) {
    EXPECT_EQ(makeFields().makeColored().hash(), 0x25BA13711E810AA2U);
    EXPECT_EQ(makeHashedFields().makeColored().hash(), 0x7EC5E218F99CFE4CU);
}

TEST(GlyphKeys, AreHashedByTheirOwnHash) {
    const KeyFields fields = makeFields();
    EXPECT_EQ(GlyphInfoHash()(fields.makeOutline()), fields.makeOutline().hash());
    EXPECT_EQ(BitmapGlyphInfoHash()(fields.makeBitmap()), fields.makeBitmap().hash());
    EXPECT_EQ(ColoredBitmapGlyphInfoHash()(fields.makeColored()), fields.makeColored().hash());
}

TEST(GlyphKeys, DifferInEveryFieldOfAnOutline) {
    const KeyFields fields = makeFields();
    EXPECT_EQ(fields.makeOutline(), makeFields().makeOutline()) << "over another description object";
    for (const KeyFields& variant : makeOutlineVariants()) {
        EXPECT_FALSE(variant.makeOutline() == fields.makeOutline());
        EXPECT_TRUE(variant.makeOutline() != fields.makeOutline());
        EXPECT_NE(variant.makeOutline().hash(), fields.makeOutline().hash());
    }
}

TEST(GlyphKeys, DifferInEveryFieldOfABitmapExceptTheCharacter) {
    const KeyFields fields = makeFields();
    for (const KeyFields& variant : makeBitmapVariants()) {
        EXPECT_FALSE(variant.makeBitmap() == fields.makeBitmap());
        EXPECT_NE(variant.makeBitmap().hash(), fields.makeBitmap().hash());
    }
    const KeyFields other = fields.with(&KeyFields::unicode, 'B');
    EXPECT_EQ(other.makeBitmap(), fields.makeBitmap());
    EXPECT_EQ(other.makeBitmap().hash(), fields.makeBitmap().hash());
}

TEST(GlyphKeys, DifferInEveryFieldOfAnImageExceptTheCharacter) {
    const KeyFields fields = makeFields();
    std::vector<KeyFields> variants = makeBitmapVariants();
    variants.push_back(fields.with(&KeyFields::color, 1));
    variants.push_back(fields.with(&KeyFields::color, 0x010000));
    for (const KeyFields& variant : variants) {
        EXPECT_FALSE(variant.makeColored() == fields.makeColored());
        EXPECT_NE(variant.makeColored().hash(), fields.makeColored().hash());
    }
    EXPECT_EQ(fields.with(&KeyFields::unicode, 'B').makeColored(), fields.makeColored());
}

TEST(GlyphKeysOfImages, PackTheColorWithoutAlpha) {
    EXPECT_EQ(ColoredBitmapGlyphInfo::packColor({1, 2, 3, 4}), 0x010203U);
    EXPECT_EQ(ColoredBitmapGlyphInfo::packColor({255, 254, 253, 255}), 0xFFFEFDU);
    EXPECT_EQ(ColoredBitmapGlyphInfo::packColor({1, 2, 3, 0}),
              ColoredBitmapGlyphInfo::packColor({1, 2, 3, 9}));
}

TEST(GlyphKeys, TreatBothZerosAsEqual) {
    const KeyFields fields = makeFields().with(&KeyFields::size, 0.0F);
    const KeyFields negative = makeFields().with(&KeyFields::size, -0.0F);
    EXPECT_EQ(fields.makeOutline(), negative.makeOutline());
    const KeyFields scaled =
        fields.with(&KeyFields::scale, cinder::Vec2<float>(0, 0)).with(&KeyFields::ratio, 0);
    const KeyFields negatively =
        fields.with(&KeyFields::scale, cinder::Vec2<float>(-0.0F, -0.0F)).with(&KeyFields::ratio, -0.0F);
    EXPECT_EQ(scaled.makeBitmap(), negatively.makeBitmap());
    EXPECT_EQ(scaled.makeBitmap().hash(), negatively.makeBitmap().hash());
}

TEST(GlyphKeys, EqualNothingIfAFieldIsNaN) {
    const KeyFields fields = makeFields();
    const GlyphInfo outline = fields.with(&KeyFields::size, notANumber).makeOutline();
    EXPECT_FALSE(outline == outline);
    EXPECT_EQ(outline.hash(), outline.hash());
    for (const KeyFields& variant :
         {fields.with(&KeyFields::size, notANumber), fields.with(&KeyFields::ratio, notANumber),
          fields.with(&KeyFields::scale, cinder::Vec2<float>(notANumber, 1)),
          fields.with(&KeyFields::scale, cinder::Vec2<float>(1, notANumber))}) {
        const BitmapGlyphInfo key = variant.makeBitmap();
        EXPECT_FALSE(key == key);
        EXPECT_FALSE(AreDeeplyEqualComparator()(key, key));
    }
}

/// A description that counts calls and can throw.
class CountingFaceInfo : public Gfx::FontFaceInfo {
public:
    std::string getName() const override {
        ++nameCalls;
        if (isThrowing) {
            throw std::runtime_error("no name");
        }
        return "Test Sans";
    }
    bool isBold() const override { return false; }
    bool isItalic() const override { return false; }

    mutable int nameCalls = 0;
    bool isThrowing = false;
};

TEST(GlyphKeys, CallTheDescriptionForEveryComparisonEvenWithItself) {
    const auto face = makeNNPtr<CountingFaceInfo>();
    const GlyphInfo key(face, 36, 12.5F, GlyphTransform::None);
    EXPECT_TRUE(key == key);
    EXPECT_EQ(face->nameCalls, 2);
    EXPECT_EQ(key, makeFields().makeOutline());
}

/// A description whose accessor returns another name than the stored one.
class RenamedFaceInfo : public Internal::FontFaceInfo {
public:
    RenamedFaceInfo()
        : Internal::FontFaceInfo("Held Sans", false, false) {}
    std::string getName() const override { return "Test Sans"; }
};

TEST(GlyphKeys, CallTheAccessorsOfADerivedDescription) {
    const GlyphInfo renamed(makeNNPtr<const RenamedFaceInfo>(), 36, 12.5F, GlyphTransform::None);
    EXPECT_EQ(renamed, makeFields().makeOutline());
    EXPECT_EQ(makeFields().makeOutline(), renamed);
    EXPECT_NE(renamed, makeFields().with(&KeyFields::face, makeFaceInfo("Held Sans")).makeOutline());
    EXPECT_EQ(renamed, GlyphInfo(makeNNPtr<const RenamedFaceInfo>(), 36, 12.5F, GlyphTransform::None));
}

TEST(GlyphKeys, HashTheNameOncePerDescription) {
    const auto face = makeNNPtr<CountingFaceInfo>();
    const GlyphInfo key(face, 36, 12.5F, GlyphTransform::None);
    EXPECT_EQ(key.hash(), 0x73CC07A02F13733CU);
    EXPECT_EQ(key.hash(), 0x73CC07A02F13733CU);
    const GlyphInfo copy(key); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.hash(), key.hash()) << "computed again";
    EXPECT_EQ(face->nameCalls, 1);
}

TEST(GlyphKeys, HashAgainAfterAnException) {
    const auto face = makeNNPtr<CountingFaceInfo>();
    const GlyphInfo key(face, 36, 12.5F, GlyphTransform::None);
    face->isThrowing = true;
    EXPECT_THROW(key.hash(), std::runtime_error);
    EXPECT_THROW(static_cast<void>(key == key), std::runtime_error);
    face->isThrowing = false;
    EXPECT_EQ(key.hash(), 0x73CC07A02F13733CU);
}

TEST(GlyphKeys, ShareTheirDescription) {
    const std::shared_ptr<const Gfx::FontFaceInfo> face = makeFaceInfo();
    {
        const BitmapGlyphInfo key =
            makeFields().with(&KeyFields::face, Testing::FaceInfoPtr(face)).makeBitmap();
        const long before = face.use_count();
        const BitmapGlyphInfo copy(key);
        EXPECT_EQ(face.use_count(), before + 1);
        EXPECT_EQ(copy, key);
        EXPECT_EQ(copy.getUnicode(), key.getUnicode());
    }
    EXPECT_EQ(face.use_count(), 1);
}

TEST(GlyphKeys, CopyADescriptionThatIsMovedIn) {
    Testing::FaceInfoPtr face = makeFaceInfo("Test Sans", true);
    const GlyphInfo outline(std::move(face), 36, 12.5F, GlyphTransform::None);
    const BitmapGlyphInfo bitmap(std::move(face), FT_RENDER_MODE_NORMAL, 36, 'A', 12.5F, {1, 1}, 1.0F, 0,
                                 true, GlyphTransform::None);
    const ColoredBitmapGlyphInfo colored(std::move(face), FT_RENDER_MODE_NORMAL, 36, 'A', 12.5F, {1, 1}, 1.0F,
                                         0, true, GlyphTransform::None, 0);
    EXPECT_TRUE(face->isBold());
    EXPECT_TRUE(outline.isBold());
    EXPECT_TRUE(bitmap.isBold());
    EXPECT_TRUE(colored.isBold());
}

template <class Key>
void expectThatMovingCopies(const Key& key) {
    Key constructedFrom = key;
    const Key constructed(std::move(constructedFrom));
    EXPECT_EQ(constructedFrom, key);
    EXPECT_EQ(constructed, key);
    Key assignedFrom = key;
    Key assigned = key;
    assigned = std::move(assignedFrom);
    EXPECT_EQ(assignedFrom, key);
    EXPECT_EQ(assigned, key);
}

TEST(GlyphKeys, KeepTheirDescriptionWhenTheyAreMovedFrom) {
    expectThatMovingCopies(makeFields().makeOutline());
    expectThatMovingCopies(makeFields().makeBitmap());
    expectThatMovingCopies(makeFields().makeColored());
}

TEST(GlyphKeys, HashAgainAfterAnAssignment) {
    GlyphInfo key = makeFields().makeOutline();
    const GlyphInfo other = makeFields().with(&KeyFields::glyph, 37).makeOutline();
    EXPECT_NE(key.hash(), other.hash());
    key = other;
    EXPECT_EQ(key.hash(), other.hash());
}

static_assert(!std::is_polymorphic_v<ColoredBitmapGlyphInfo>, "keys are plain values");
static_assert(std::is_base_of_v<GlyphInfo, BitmapGlyphInfo> &&
              std::is_base_of_v<BitmapGlyphInfo, ColoredBitmapGlyphInfo>);

TEST(GlyphKeysDeathTest, AssertOnANullDescription) {
    const KeyFields fields = makeFields();
    const KeyFields null = fields.with(&KeyFields::face, makeMovedFrom(makeFaceInfo()));
    EXPECT_DEATH(null.makeOutline().hash(), printsNullDereference());
    EXPECT_DEATH(null.makeColored().hash(), printsNullDereference());
    EXPECT_DEATH(null.makeOutline().isBold(), printsNullDereference());
    EXPECT_DEATH(null.makeOutline().isItalic(), printsNullDereference());
    const auto compared = printsAssertion("Utils/Public/Ptr/CheckedPtr:139", "_ptr");
    EXPECT_DEATH(static_cast<void>(null.makeOutline() == fields.makeOutline()), compared);
    EXPECT_DEATH(static_cast<void>(fields.makeOutline() == null.makeOutline()), compared);
    EXPECT_DEATH(static_cast<void>(fields.makeColored() == null.makeColored()), compared);
}

} // namespace
} // namespace Vell::FontEngine
