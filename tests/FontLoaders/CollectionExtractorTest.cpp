#include "LoaderFonts.h"

#include <FontLoaders/Private/Installed/CollectionExtractor.h>

#include <gmock/gmock.h>
#include <hb.h>

#include <random>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using Internal::extractFace;
using Internal::isCollection;

Bytes makeCollection() {
    return buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta", 700)});
}

/// The tables of a face and their bytes, as HarfBuzz reads them.
std::vector<std::pair<hb_tag_t, std::string>> readTables(const Bytes& file, unsigned int index) {
    hb_blob_t* blob =
        hb_blob_create(reinterpret_cast<const char*>(file.data()), static_cast<unsigned int>(file.size()),
                       HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* face = hb_face_create(blob, index);
    unsigned int count = 32;
    hb_tag_t tags[32];
    hb_face_get_table_tags(face, 0, &count, tags);
    std::vector<std::pair<hb_tag_t, std::string>> tables;
    for (unsigned int i = 0; i < count; ++i) {
        hb_blob_t* table = hb_face_reference_table(face, tags[i]);
        unsigned int length = 0;
        const char* data = hb_blob_get_data(table, &length);
        tables.emplace_back(tags[i], std::string(data, length));
        hb_blob_destroy(table);
    }
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return tables;
}

/// Clears the checksum in the font header: it covers the whole file, which the extractor changes.
void clearChecksum(std::vector<std::pair<hb_tag_t, std::string>>& tables) {
    for (auto& [tag, table] : tables) {
        if (tag == HB_TAG('h', 'e', 'a', 'd')) {
            table.replace(8, 4, 4, '\0');
        }
    }
}

} // namespace

TEST(CollectionExtractor, KnowsACollectionByItsFirstFourBytes) {
    EXPECT_TRUE(isCollection(makeCollection()));
    EXPECT_TRUE(isCollection({'t', 't', 'c', 'f'}));
    EXPECT_FALSE(isCollection({'t', 't', 'c'}));
    EXPECT_FALSE(isCollection({}));
    EXPECT_FALSE(isCollection(makeBlankFont("Alpha").build()));
}

TEST(CollectionExtractor, CopiesEveryTableOfTheFace) {
    const Bytes collection = makeCollection();
    for (const unsigned int index : {0U, 1U}) {
        auto expected = readTables(collection, index);
        auto tables = readTables(extractFace(collection, index), 0);
        ASSERT_EQ(expected.size(), 10U);
        clearChecksum(expected);
        clearChecksum(tables);
        EXPECT_EQ(tables, expected);
    }
}

TEST(CollectionExtractor, WritesTheSignatureOfTheOutlineFormat) {
    const Bytes trueType = extractFace(makeCollection(), 1);
    EXPECT_EQ(Bytes(trueType.begin(), trueType.begin() + 4), (Bytes{0, 1, 0, 0}));
    const Bytes postScript = extractFace(readFile(std::string(notoCjk) + "NotoSansCJK-Regular.ttc"), 2);
    EXPECT_EQ(Bytes(postScript.begin(), postScript.begin() + 4), (Bytes{'O', 'T', 'T', 'O'}));
}

TEST(CollectionExtractor, ThrowsForAMissingFace) {
    EXPECT_THROW(extractFace(makeCollection(), 2), FontLoaderException);
    EXPECT_THROW(extractFace(makeCollection(), ~0U), FontLoaderException);
}

TEST(CollectionExtractor, ThrowsForBytesThatAreNotAFont) {
    EXPECT_THROW(extractFace({}, 0), FontLoaderException);
    EXPECT_THROW(extractFace({'t', 't', 'c', 'f'}, 0), FontLoaderException);
    EXPECT_THROW(extractFace(Bytes(1000, 0xFF), 0), FontLoaderException);
}

TEST(CollectionExtractor, ThrowsForManyTablesOverTheSameBytes) {
    // 200 tables, each of which spans the whole file.
    Bytes bomb = {0, 1, 0, 0, 0, 200, 0, 0, 0, 0, 0, 0};
    const std::size_t size = 12 + 200 * 16;
    for (unsigned char i = 0; i < 200; ++i) {
        const Bytes entry = {'t', 'a', 'b', i, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, size >> 8, size & 0xFF};
        bomb.insert(bomb.end(), entry.begin(), entry.end());
    }
    EXPECT_THROW(extractFace(bomb, 0), FontLoaderException);
}

TEST(CollectionExtractor, ThrowsIfTheOnlyTableCannotBeWritten) {
    // HarfBuzz does not write a table of this name.
    const Bytes file = {0, 1, 0, 0, 0, 1, 0, 0,  0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
                        0, 0, 0, 0, 0, 0, 0, 28, 0, 0, 0, 4, 1,    2,    3,    4};
    EXPECT_THROW(extractFace(file, 0), FontLoaderException);
}

TEST(CollectionExtractor, SurvivesEveryTruncation) {
    const Bytes collection = makeCollection();
    for (std::size_t length = 0; length < collection.size(); ++length) {
        const Bytes part(collection.begin(), collection.begin() + static_cast<std::ptrdiff_t>(length));
        try {
            EXPECT_LE(extractFace(part, 1).size(), 2 * collection.size()) << length;
        } catch (const FontLoaderException&) {
            continue;
        }
    }
}

TEST(CollectionExtractor, SurvivesDamagedBytes) {
    const Bytes collection = makeCollection();
    std::mt19937 random(20250101);
    for (unsigned int round = 0; round < 3000; ++round) {
        Bytes damaged = collection;
        for (int change = 0; change < 4; ++change) {
            // Most errors can be planted in the first bytes: the header and the two directories.
            const std::size_t range = round % 2 == 0 ? 256 : damaged.size();
            damaged[random() % range] = static_cast<unsigned char>(random());
        }
        try {
            EXPECT_LE(extractFace(damaged, round % 2).size(), 3 * collection.size());
        } catch (const FontLoaderException&) {
            continue;
        }
    }
}

} // namespace Vell::Testing
