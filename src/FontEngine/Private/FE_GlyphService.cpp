#include <FontEngine/Private/FE_GlyphService.h>

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Private/FE_FaceSizing.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontEngine/Private/FE_PathBuilder.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace Vell::FontEngine::Internal {

namespace {

std::uint64_t weigh(const FT_Bitmap& bitmap) {
    constexpr std::uint64_t recordBytes = 48; // the cost of a glyph's record, in addition to its pixels
    const std::uint32_t pixelBytes = static_cast<std::uint32_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    return pixelBytes + recordBytes;
}

std::uint64_t weigh(const BitmapGlyphImage& image) {
    // Four times the size of the buffer, because the pitch already counts four bytes per pixel. This is on
    // purpose: a coloured image is cheap to make again from its bitmap, so the cache may evict it sooner.
    const std::uint32_t bytes = image.rows * 4U * static_cast<std::uint32_t>(image.pitch);
    return bytes;
}

static_assert(maxGlyphPixels <= FontLoaders::maxPixelsInMemory);

/// Returns null if the face cannot be sized.
GlyphOwner renderOnSizedFace(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) {
    FaceSizing sizing(face, info);
    if (!sizing) {
        return nullptr;
    }
    GlyphOwner glyph = renderBitmapGlyph(info, face.getHandle(), flipVertically);
    sizing.confirm();
    return glyph;
}

/// Returns null if the face cannot be sized, or if the glyph has no outline because the face has only
/// bitmaps.
PathPtr buildPathOnSizedFace(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                             Gfx::Painter& painter) {
    FaceSizing sizing(*face, info);
    if (!sizing) {
        return nullptr;
    }
    const std::shared_ptr<FT_GlyphRec_> glyph = createOutlineGlyph(info, face);
    sizing.confirm();
    if (glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
        return nullptr;
    }
    return buildPath(reinterpret_cast<FT_OutlineGlyph>(glyph.get())->outline, info, painter);
}

ImagePtr paint(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) {
    ImagePtr image = getColoredGlyphImage(derefNN(glyph.getData().get()), color);
    if (!image) {
        throw FontEngineException("Failed to create glyph with subpixel support");
    }
    return image;
}

StrikeInfo describe(const BitmapGlyphInfo& info, unsigned int color) {
    return {info.getFaceInfo().get(), info.getFontSize(),         info.getTransform(),
            info.getScale(),          info.getDevicePixelRatio(), color};
}

/// Like ==, but false for zeros of different signs, which a client can tell apart. Also false for NaN.
bool areSame(float lhs, float rhs) {
    return lhs == rhs && std::signbit(lhs) == std::signbit(rhs);
}

bool hasSameNumbers(const BitmapGlyphInfo& key, const StrikeInfo& info) {
    return areSame(key.getFontSize(), info.fontSize) && areSame(key.getScale().x, info.scale.x) &&
           areSame(key.getScale().y, info.scale.y) &&
           areSame(key.getDevicePixelRatio(), info.devicePixelRatio);
}

/// Whether a client cannot tell the key of a cached glyph from the key of the pending one. Equal keys may
/// still differ in their character, or have different objects of a client's class as their face descriptions.
bool isKeyFor(const BitmapGlyphInfo& key, const PendingGlyph& pending, const BitmapSource& source) {
    return key.getUnicode() == pending.unicode && hasSameNumbers(key, source.strike.getInfo()) &&
           (key.getFaceInfo() == source.faceInfo ||
            (source.strike.isPlain() && FontFaceInfo::isExactly(*key.getFaceInfo())));
}

/// Keeps the factory alive until the cache has the glyph to be made. Returns false if the factory is already
/// being destroyed.
bool tryPinFactory(const FontFace& face, FactoryPin& pin) {
    if (pin == nullptr) {
        pin = face.shareFontFactory();
    }
    return pin != nullptr;
}

} // namespace

GlyphService::GlyphService()
    : _bitmaps(&_holds)
    , _access(std::make_shared<GlyphAccess>(*this, _bitmaps.shareMutex(), _outlines.shareMutex())) {}

GlyphService::~GlyphService() {
    _access->close();
    const RecursiveLock lock(_bitmaps.getMutex());
    _holds.addAllReferences();
}

const BitmapCache::Node& GlyphService::getBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                                 bool flipVertically) const {
    if (const auto* const held = _bitmaps.get({&info})) {
        return *held;
    }
    const auto rendered =
        std::make_shared<RenderedGlyph>(info, renderOnSizedFace(info, face, flipVertically));
    const FT_BitmapGlyphRec_* const glyph = rendered->getBitmapGlyph();
    const std::uint64_t bytes = glyph != nullptr ? weigh(glyph->bitmap) : 0;
    return _bitmaps.putNew({rendered.get()}, BitmapCache::Node(CachedBitmap(rendered), bytes));
}

const BitmapCache::Node& GlyphService::getBitmapFor(BitmapSource& source, const PendingGlyph& glyph) const {
    _bitmaps.prepare(source.strike, source.faceInfo);
    const BitmapCache::Node& node = getBitmap(source.makeKey(glyph), source.face, source.flipVertically);
    _bitmaps.open(source.strike); // making the glyph may have destroyed strikes
    if (hasSameNumbers(*node.getValue().data, source.strike.getInfo())) {
        _bitmaps.remember(source.strike, glyph.getSlot(), node);
    }
    return node;
}

const ImageCache::Node& GlyphService::getImage(const BitmapGlyph& glyph,
                                               const cinder::ColorAT<unsigned char>& color) const {
    const ColoredBitmapGlyphInfo key(glyph.getInfo(), ColoredBitmapGlyphInfo::packColor(color));
    return _images.getOrPut(key, [&] {
        ImagePtr image = paint(glyph, color);
        const std::uint64_t bytes = weigh(*image);
        return ImageCache::Node(std::move(image), bytes);
    });
}

const OutlineCache::Node& GlyphService::getPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                                                Gfx::Painter& painter) const {
    return _outlines.getOrPut(
        info, [&] { return OutlineCache::Node(buildPathOnSizedFace(info, face, painter), 0); });
}

inline const OutlineCache::Node* GlyphService::getPathFor(OutlineSource& source, unsigned short glyphIndex,
                                                          Gfx::Painter& painter, FactoryPin& pin) const {
    if (const OutlineCache::Node* const node = _outlines.find(source.strike, glyphIndex)) {
        _outlines.use(*node);
        return node;
    }
    return makePathFor(source, glyphIndex, painter, pin);
}

const OutlineCache::Node* GlyphService::makePathFor(OutlineSource& source, unsigned short glyphIndex,
                                                    Gfx::Painter& painter, FactoryPin& pin) const {
    if (!tryPinFactory(*source.face, pin)) {
        return nullptr;
    }
    _outlines.prepare(source.strike, source.faceInfo);
    const OutlineCache::Node& node = getPath(source.makeKey(glyphIndex), source.face, painter);
    _outlines.remember(source.strike, glyphIndex, node);
    return &node;
}

const BitmapPtr& GlyphService::findBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                          bool flipVertically) const {
    const RecursiveLock lock(_bitmaps.getMutex());
    return getBitmap(info, face, flipVertically).getValue().data->data;
}

BitmapPtr GlyphService::copyBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                   bool flipVertically) const {
    const RecursiveLock lock(_bitmaps.getMutex());
    return getBitmap(info, face, flipVertically).getValue().data->data;
}

ImagePtr GlyphService::copyImage(const BitmapGlyph& glyph,
                                 const cinder::ColorAT<unsigned char>& color) const {
    const RecursiveLock lock(_images.getMutex());
    return getImage(glyph, color).getValue().data;
}

const PathPtr& GlyphService::findPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                                      Gfx::Painter& painter) const {
    const RecursiveLock lock(_outlines.getMutex());
    return getPath(info, face, painter).getValue().data;
}

PathPtr GlyphService::copyPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                               Gfx::Painter& painter) const {
    const RecursiveLock lock(_outlines.getMutex());
    return getPath(info, face, painter).getValue().data;
}

void GlyphService::append(BitmapSource& source, const PendingGlyphs& pending, HeldGlyphs& run,
                          FactoryPin& pin) const {
    _holds.watch(run.hold, run.glyphs, _bitmaps.shareMutex());
    _bitmaps.open(source.strike);
    for (const PendingGlyph& glyph : pending) {
        const BitmapCache::Node* node = _bitmaps.find(source.strike, glyph.getSlot());
        const bool isRemembered = node != nullptr;
        if (isRemembered) {
            _bitmaps.use(*node);
        } else {
            if (!tryPinFactory(source.face, pin)) {
                return;
            }
            node = &getBitmapFor(source, glyph);
            _holds.watch(run.hold, run.glyphs, _bitmaps.shareMutex());
        }
        RenderedGlyph& rendered = *node->getValue().data;
        if (rendered.data == nullptr) {
            continue;
        }
        run.box.add(rendered);
        const bool isSameKey =
            isRemembered ? rendered.getUnicode() == glyph.unicode : isKeyFor(rendered, glyph, source);
        if (!isSameKey) {
            run.glyphs.emplace_back(rendered.data, cinder::Vec2<float>(glyph.x, glyph.y),
                                    source.makeKey(glyph));
        } else if (node->getValue().link.isLinked()) {
            run.glyphs.emplace_back(rendered, glyph.x, glyph.y);
        } else {
            const BitmapGlyph borrowed(rendered, glyph.x, glyph.y);
            run.glyphs.push_back(borrowed); // the copy owns a reference
        }
        run.hold->setSize(run.glyphs.size());
    }
}

ImagePtr GlyphService::copyImage(std::optional<ImageCache::Handle>& strike, const BitmapGlyph& glyph,
                                 const cinder::ColorAT<unsigned char>& color) const {
    const BitmapGlyphInfo& info = glyph.getInfo();
    if (!strike || !strike->getInfo().matches(info)) {
        strike.emplace(describe(info, ColoredBitmapGlyphInfo::packColor(color)));
    }
    const std::uint32_t slot =
        getBitmapSlot(info.getGlyphIndex(), info.getRenderMode(), info.getOffsetInsidePixel(), info.isLast());
    const RecursiveLock lock(_images.getMutex());
    _images.open(*strike);
    if (const ImageCache::Node* const node = _images.find(*strike, slot)) {
        _images.use(*node);
        return node->getValue().data;
    }
    _images.prepare(*strike, info.getFaceInfo());
    const ImageCache::Node& node = getImage(glyph, color);
    _images.remember(*strike, slot, node);
    return node.getValue().data;
}

void GlyphService::append(OutlineSource& source, const PendingOutlines& pending, Gfx::Painter& painter,
                          std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const {
    _outlines.open(source.strike);
    for (const PendingOutline& outline : pending) {
        const OutlineCache::Node* const node = getPathFor(source, outline.glyphIndex, painter, pin);
        if (node == nullptr) {
            return;
        }
        if (const PathPtr& path = node->getValue().data) {
            glyphs.emplace_back(path, outline.advance);
        }
    }
}

void GlyphService::copyPaths(OutlineSource& source, const unsigned short* glyphIndices, std::size_t count,
                             Gfx::Painter& painter, PathPtr* paths, FactoryPin& pin) const {
    _outlines.open(source.strike);
    for (std::size_t i = 0; i != count; ++i) {
        const OutlineCache::Node* const node = getPathFor(source, glyphIndices[i], painter, pin);
        if (node == nullptr) {
            return;
        }
        paths[i] = node->getValue().data;
    }
}

void GlyphService::clear() {
    {
        const RecursiveLock lock(_bitmaps.getMutex());
        _bitmaps.clear();
    }
    _images.clear();
    _outlines.clear();
}

GlyphService::Budget::~Budget() {
    if (mutex != nullptr) {
        const RecursiveLock lock(*mutex);
        bitmaps.reset();
    }
}

void GlyphService::exchange(Budget& budget) {
    {
        const RecursiveLock lock(_bitmaps.getMutex()); // other threads may destroy runs
        _bitmaps.exchange(*budget.bitmaps);
    }
    budget.mutex = _bitmaps.shareMutex();
    _images.exchange(budget.images);
}

GlyphAccess::GlyphAccess(const GlyphService& glyphs, std::shared_ptr<RecursiveMutex> bitmapMutex,
                         std::shared_ptr<RecursiveMutex> outlineMutex)
    : _bitmapMutex(std::move(bitmapMutex))
    , _outlineMutex(std::move(outlineMutex))
    , _bitmaps(&glyphs)
    , _outlines(&glyphs) {}

// The thread safety analysis does not know that these are the locks of the service.
void GlyphAccess::append(BitmapSource& source, const PendingGlyphs& pending, HeldGlyphs& run,
                         FactoryPin& pin) const VELL_NO_THREAD_SAFETY_ANALYSIS {
    const RecursiveLock lock(*_bitmapMutex);
    if (_bitmaps != nullptr) {
        _bitmaps->append(source, pending, run, pin);
    }
}

void GlyphAccess::append(OutlineSource& source, const PendingOutlines& pending, Gfx::Painter& painter,
                         std::vector<OutlineGlyph>& glyphs,
                         FactoryPin& pin) const VELL_NO_THREAD_SAFETY_ANALYSIS {
    const RecursiveLock lock(*_outlineMutex);
    if (_outlines != nullptr) {
        _outlines->append(source, pending, painter, glyphs, pin);
    }
}

void GlyphAccess::copyPaths(OutlineSource& source, const unsigned short* glyphIndices, std::size_t count,
                            Gfx::Painter& painter, PathPtr* paths,
                            FactoryPin& pin) const VELL_NO_THREAD_SAFETY_ANALYSIS {
    const RecursiveLock lock(*_outlineMutex);
    if (_outlines != nullptr) {
        _outlines->copyPaths(source, glyphIndices, count, painter, paths, pin);
    }
}

void GlyphAccess::close() {
    {
        const RecursiveLock lock(*_bitmapMutex);
        _bitmaps = nullptr;
    }
    const RecursiveLock lock(*_outlineMutex);
    _outlines = nullptr;
}

} // namespace Vell::FontEngine::Internal
