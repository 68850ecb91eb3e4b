#include <fuzz/support/SfntHarness.h>

#include <fuzz/support/Finding.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>
#include <support/FontBuilder.h>

#include <gtest/gtest.h>

namespace Vell::Fuzz {

using FontLoaders::Internal::extractFace;

namespace {

constexpr std::size_t firstRecord = 12;
constexpr std::size_t recordBytes = 16;

class ExtractedFace : public testing::Test {
protected:
    Bytes collection = Testing::buildCollection({Testing::FontBuilder("One"), Testing::FontBuilder("Two")});
    Bytes face = extractFace(collection, 1);
};

} // namespace

TEST_F(ExtractedFace, IsSound) {
    EXPECT_NO_THROW(checkExtractedFace(collection, 1, face));
    EXPECT_EQ(readSoundSfnt(face).size(), 10U);
}

TEST_F(ExtractedFace, IsCaughtWhenItIsTheWrongFace) {
    EXPECT_THROW(checkExtractedFace(collection, 0, face), Finding);
}

TEST_F(ExtractedFace, IsCaughtWhenItIsCutOff) {
    for (const std::size_t length :
         {std::size_t(0), firstRecord, firstRecord + recordBytes, face.size() - 4}) {
        face.resize(length);
        EXPECT_THROW(checkExtractedFace(collection, 1, face), Finding) << length;
        face = extractFace(collection, 1);
    }
}

TEST_F(ExtractedFace, IsCaughtWhenATableIsChanged) {
    face.back() = static_cast<unsigned char>(face.back() + 1);
    face[face.size() - 4] = static_cast<unsigned char>(face[face.size() - 4] + 1);
    EXPECT_THROW(checkExtractedFace(collection, 1, face), Finding);
}

TEST_F(ExtractedFace, IsCaughtWhenTablesOverlap) {
    for (std::size_t i = 8; i < 12; ++i) {
        face[firstRecord + recordBytes + i] = face[firstRecord + i]; // the offset
    }
    EXPECT_THROW(readSoundSfnt(face), Finding);
}

TEST_F(ExtractedFace, IsCaughtWhenATagOccursTwice) {
    for (std::size_t i = 0; i < 4; ++i) {
        face[firstRecord + recordBytes + i] = face[firstRecord + i];
    }
    EXPECT_THROW(readSoundSfnt(face), Finding);
}

} // namespace Vell::Fuzz
