#include <TextLayout/Private/HarfBuzzFace.h>

#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

namespace {

using Bytes = std::vector<unsigned char>;

HarfBuzzPtr<hb_blob_t> shareBytes(const std::shared_ptr<const Bytes>& bytes) {
    using Shared = std::shared_ptr<const Bytes>;
    auto shared = std::make_unique<Shared>(bytes);
    HarfBuzzPtr<hb_blob_t> blob(hb_blob_create_or_fail(
        reinterpret_cast<const char*>(bytes->data()), static_cast<unsigned int>(bytes->size()),
        HB_MEMORY_MODE_READONLY, shared.get(), [](void* owner) { delete static_cast<Shared*>(owner); }));
    static_cast<void>(shared.release()); // the blob deletes it, also if it could not be made
    if (!blob) {
        throw std::bad_alloc();
    }
    return blob;
}

bool isWebFont(const Bytes& bytes) {
    constexpr std::string_view signatures[] = {"wOFF", "wOF2"};
    return std::any_of(std::begin(signatures), std::end(signatures), [&](std::string_view signature) {
        return bytes.size() > signature.size() &&
               std::equal(signature.begin(), signature.end(), bytes.begin());
    });
}

std::shared_ptr<const Bytes> loadTable(const FontLoaders::FTFacePtr& face, FT_ULong tag, FT_ULong length) {
    const auto table = std::make_shared<Bytes>(length);
    if (!FontLoaders::isFTSucceeded(FT_Load_Sfnt_Table(face.get(), tag, 0, table->data(), &length))) {
        throw FontLoaders::FreeTypeException("FT_Load_Sfnt_Table() failed for a web font");
    }
    return table;
}

/// Takes the tables from a FreeType face of its own, because the engine's face is not for all threads.
HarfBuzzPtr<hb_face_t> unpackWebFont(const NNPtr<const Bytes>& bytes) {
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    const FontLoaders::FTFacePtr face = FontLoaders::createFontFace(library, bytes);
    HarfBuzzPtr<hb_face_t> builder(hb_face_builder_create());
    FT_ULong tag = 0;
    FT_ULong length = 0;
    for (FT_UInt i = 0; FontLoaders::isFTSucceeded(FT_Sfnt_Table_Info(face.get(), i, &tag, &length)); ++i) {
        const HarfBuzzPtr<hb_blob_t> table = shareBytes(loadTable(face, tag, length));
        if (hb_face_builder_add_table(builder.get(), static_cast<hb_tag_t>(tag), table.get()) == 0) {
            throw std::bad_alloc();
        }
    }
    return builder;
}

} // namespace

HarfBuzzPtr<hb_face_t> makeHarfBuzzFace(const FontEngine::FontFace& face) {
    const NNPtr<const Bytes> bytes = face.getFaceData().bytes;
    HarfBuzzPtr<hb_face_t> made = isWebFont(*bytes)
                                      ? unpackWebFont(bytes)
                                      : HarfBuzzPtr<hb_face_t>(hb_face_create(shareBytes(bytes).get(), 0));
    if (made.get() == hb_face_get_empty()) {
        throw std::bad_alloc();
    }
    hb_face_make_immutable(made.get());
    return made;
}

} // namespace Vell::TextLayout
