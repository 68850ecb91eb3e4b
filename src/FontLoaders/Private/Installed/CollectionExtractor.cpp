#include <FontLoaders/Private/Installed/CollectionExtractor.h>

#include <FontLoaders/Private/HarfBuzz.h>
#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>
#include <hb.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Vell::FontLoaders::Internal {

namespace {

std::vector<hb_tag_t> getTableTags(hb_face_t* face) {
    unsigned int count = hb_face_get_table_tags(face, 0, nullptr, nullptr);
    std::vector<hb_tag_t> tags(count);
    hb_face_get_table_tags(face, 0, &count, tags.data());
    tags.resize(count);
    return tags;
}

/// Copies every table of `source`. Throws if together they have more than `limit` bytes.
void copyTables(hb_face_t* source, hb_face_t* target, std::size_t limit) {
    std::size_t total = 0;
    for (const hb_tag_t tag : getTableTags(source)) {
        const BlobPtr table(hb_face_reference_table(source, tag));
        // HarfBuzz rejects the tag FFFFFFFF, which no table can have.
        if (hb_face_builder_add_table(target, tag, table.get())) {
            total += hb_blob_get_length(table.get());
        }
        if (total > limit) {
            throw FontLoaderException("the tables of the face overlap");
        }
    }
    if (total == 0) {
        throw FontLoaderException("the face has no tables");
    }
}

} // namespace

bool isCollection(const std::vector<unsigned char>& bytes) {
    static constexpr unsigned char signature[] = {'t', 't', 'c', 'f'};
    return bytes.size() >= std::size(signature) &&
           std::equal(std::begin(signature), std::end(signature), bytes.begin());
}

std::vector<unsigned char> extractFace(const std::vector<unsigned char>& bytes, unsigned int index) {
    const BlobPtr file = makeView(bytes);
    const unsigned int count = hb_face_count(file.get());
    if (index >= count) {
        throw FontLoaderException(fmt::format("there is no face {} among {}", index, count));
    }
    const HarfBuzzFacePtr source(hb_face_create(file.get(), index));
    const HarfBuzzFacePtr target(hb_face_builder_create());
    copyTables(source.get(), target.get(), bytes.size());
    std::vector<unsigned char> face = serialize(target.get());
    if (face.empty()) {
        throw FontLoaderException("the face cannot be written as a file of its own");
    }
    return face;
}

} // namespace Vell::FontLoaders::Internal
