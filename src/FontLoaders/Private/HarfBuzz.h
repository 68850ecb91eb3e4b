#pragma once

#include <hb.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <vector>

/// Owning handles for HarfBuzz's objects.
namespace Vell::FontLoaders::Internal {

struct HarfBuzzDeleter {
    void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
    void operator()(hb_face_t* face) const { hb_face_destroy(face); }
};
using BlobPtr = std::unique_ptr<hb_blob_t, HarfBuzzDeleter>;
using HarfBuzzFacePtr = std::unique_ptr<hb_face_t, HarfBuzzDeleter>;

/// A view of bytes that must outlive it. HarfBuzz counts bytes in 32 bits, so it sees only the beginning of a
/// longer file.
inline BlobPtr makeView(const std::vector<unsigned char>& bytes) {
    const auto* data = reinterpret_cast<const char*>(bytes.data());
    const auto length = static_cast<unsigned int>(
        std::min<std::size_t>(bytes.size(), std::numeric_limits<unsigned int>::max()));
    return BlobPtr(hb_blob_create(data, length, HB_MEMORY_MODE_READONLY, nullptr, nullptr));
}

/// A copy of the file that a face stands for. Empty if HarfBuzz could not write it.
inline std::vector<unsigned char> serialize(hb_face_t* face) {
    const BlobPtr blob(hb_face_reference_blob(face));
    unsigned int length = 0;
    const char* data = hb_blob_get_data(blob.get(), &length);
    return data == nullptr ? std::vector<unsigned char>() : std::vector<unsigned char>(data, data + length);
}

} // namespace Vell::FontLoaders::Internal
