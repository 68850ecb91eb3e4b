#include <TextLayout/Private/ShapingFont.h>

#include <hb-ot.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace Vell::TextLayout {

namespace {

using Bytes = std::shared_ptr<const std::vector<unsigned char>>;

HarfBuzzPtr<hb_face_t> openFace(const Bytes& bytes) {
    auto shared = std::make_unique<Bytes>(bytes);
    const HarfBuzzPtr<hb_blob_t> blob(hb_blob_create_or_fail(
        reinterpret_cast<const char*>(bytes->data()), static_cast<unsigned int>(bytes->size()),
        HB_MEMORY_MODE_READONLY, shared.get(), [](void* owner) { delete static_cast<Bytes*>(owner); }));
    static_cast<void>(shared.release()); // the blob deletes it, also if it could not be made
    if (!blob) {
        throw std::bad_alloc();
    }
    return HarfBuzzPtr<hb_face_t>(hb_face_create(blob.get(), 0));
}

} // namespace

ShapingFont::ShapingFont(const FontEngine::FaceData& data)
    : _face(openFace(data.bytes))
    , _font(hb_font_create(_face.get()))
    , _canShape(hb_face_get_glyph_count(_face.get()) != 0) {
    if (_face.get() == hb_face_get_empty() || _font.get() == hb_font_get_empty()) {
        throw std::bad_alloc();
    }
    hb_face_make_immutable(_face.get());
    hb_font_make_immutable(_font.get());
}

ShapePlan& ShapingFont::getPlan(const ShapePlanKey& key, std::uint32_t& lastId) {
    const auto found =
        std::find_if(_plans.begin(), _plans.end(), [&](const auto& plan) { return plan->getKey() == key; });
    if (found != _plans.end()) {
        return **found;
    }
    return *_plans.emplace_back(std::make_unique<ShapePlan>(_font.get(), key, ++lastId));
}

} // namespace Vell::TextLayout
