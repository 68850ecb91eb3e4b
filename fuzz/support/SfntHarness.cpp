#include <fuzz/support/SfntHarness.h>

#include <fuzz/support/ByteReader.h>
#include <fuzz/support/Finding.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>
#include <FontLoaders/Public/Exceptions.h>

#include <hb.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::Fuzz {

using FontLoaders::Internal::extractFace;
using FontLoaders::Internal::isCollection;

namespace {

constexpr std::size_t headerBytes = 12;
constexpr std::size_t recordBytes = 16;

std::uint32_t readU32(const Bytes& bytes, std::size_t position) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | bytes[position + i];
    }
    return value;
}

struct TableRecord {
    std::uint32_t tag;
    std::size_t offset;
    std::size_t length;
};

std::vector<TableRecord> readDirectory(const Bytes& file) {
    require(file.size() >= headerBytes, "a font file has a header");
    const std::size_t count = readU32(file, 4) >> 16;
    require(file.size() >= headerBytes + count * recordBytes, "a font file has its whole directory");
    std::vector<TableRecord> records;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t position = headerBytes + i * recordBytes;
        records.push_back(
            {readU32(file, position), readU32(file, position + 8), readU32(file, position + 12)});
    }
    return records;
}

void checkTags(const std::vector<TableRecord>& records) {
    for (std::size_t i = 1; i < records.size(); ++i) {
        require(records[i - 1].tag < records[i].tag, "the tags of a font file are in ascending order");
    }
}

void checkPlaces(std::vector<TableRecord> records, std::size_t fileBytes) {
    std::sort(records.begin(), records.end(),
              [](const TableRecord& lhs, const TableRecord& rhs) { return lhs.offset < rhs.offset; });
    std::size_t end = headerBytes + records.size() * recordBytes;
    for (const TableRecord& record : records) {
        if (record.length > 0) {
            require(record.offset >= end, "the tables of a font file do not overlap");
            end = record.offset + record.length;
        }
    }
    require(end <= fileBytes, "the tables of a font file lie within it");
}

struct HarfBuzzDeleter {
    void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
    void operator()(hb_face_t* face) const { hb_face_destroy(face); }
};

using BlobPtr = std::unique_ptr<hb_blob_t, HarfBuzzDeleter>;

Bytes readTable(hb_face_t* face, hb_tag_t tag) {
    const BlobPtr table(hb_face_reference_table(face, tag));
    unsigned int length = 0;
    const char* const data = hb_blob_get_data(table.get(), &length);
    return Bytes(data, data + length);
}

/// Reads the tables of one face of a collection through HarfBuzz.
std::map<std::uint32_t, Bytes> readFaceTables(const Bytes& file, unsigned int index) {
    const BlobPtr blob(hb_blob_create(reinterpret_cast<const char*>(file.data()),
                                      static_cast<unsigned int>(file.size()), HB_MEMORY_MODE_READONLY,
                                      nullptr, nullptr));
    const std::unique_ptr<hb_face_t, HarfBuzzDeleter> face(hb_face_create(blob.get(), index));
    unsigned int count = hb_face_get_table_tags(face.get(), 0, nullptr, nullptr);
    std::vector<hb_tag_t> tags(count);
    hb_face_get_table_tags(face.get(), 0, &count, tags.data());
    std::map<std::uint32_t, Bytes> tables;
    for (const hb_tag_t tag : tags) {
        tables[tag] = readTable(face.get(), tag);
    }
    return tables;
}

/// Clears the checksum in the font header: it covers the whole file, and so it differs after extraction.
void clearChecksum(std::map<std::uint32_t, Bytes>& tables) {
    constexpr std::size_t position = 8;
    const auto head = tables.find(HB_TAG('h', 'e', 'a', 'd'));
    if (head != tables.end() && head->second.size() >= position + 4) {
        std::fill_n(head->second.begin() + position, 4, static_cast<unsigned char>(0));
    }
}

} // namespace

std::map<std::uint32_t, Bytes> readSoundSfnt(const Bytes& file) {
    const std::vector<TableRecord> records = readDirectory(file);
    checkTags(records);
    checkPlaces(records, file.size());
    std::map<std::uint32_t, Bytes> tables;
    for (const TableRecord& record : records) {
        const auto first = file.begin() + static_cast<std::ptrdiff_t>(record.offset);
        tables[record.tag] = Bytes(first, first + static_cast<std::ptrdiff_t>(record.length));
    }
    return tables;
}

void checkExtractedFace(const Bytes& collection, unsigned int index, const Bytes& face) {
    require(!isCollection(face), "an extracted face is not a collection");
    std::map<std::uint32_t, Bytes> tables = readSoundSfnt(face);
    std::map<std::uint32_t, Bytes> expected = readFaceTables(collection, index);
    clearChecksum(tables);
    clearChecksum(expected);
    // HarfBuzz omits a table with this tag, which no meaningful table has.
    constexpr std::uint32_t namelessTag = 0xFFFFFFFF;
    expected.erase(namelessTag);
    require(tables == expected, "every table is extracted unchanged");
    const std::size_t directoryBytes =
        headerBytes + tables.size() * (recordBytes + 3); // 3: tables are padded
    require(face.size() <= collection.size() + directoryBytes, "a face is not longer than its collection");
}

void runSfnt(const Bytes& input) {
    ByteReader reader(input);
    const unsigned int index = reader.takeU8();
    const Bytes file = reader.takeRest();
    Bytes face;
    try {
        face = extractFace(file, index);
    } catch (const FontLoaders::FontLoaderException&) {
        return; // there is no such face, or its tables claim too much
    }
    checkExtractedFace(file, index, face);
    require(extractFace(face, 0) == face, "extracting a face from itself changes nothing");
}

} // namespace Vell::Fuzz
