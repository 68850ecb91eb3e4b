// Implements the layout of the raster painter, and runs of glyphs that a client has placed.

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_Fallback.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_HeldGlyphs.h>
#include <FontEngine/Private/FE_OwnDescriptions.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Utf8.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

namespace {

using ExtFontInfoPtr = NNPtr<const Gfx::ExtFontInfo>;
using FaceInfoPtr = NNPtr<const Gfx::FontFaceInfo>;
using FacePtr = NNPtr<const FontFace>;
using GlyphEntry = Gfx::CharMap::GlyphIndexWithAdvance;

/// Like std::floor, but without the function call that a build for the x86-64 baseline makes.
float floorOf(float x) {
    constexpr float fractionless = 8388608.0F; // 2^23: from here on, every float is whole
    if (!(std::fabs(x) < fractionless)) {
        return x;
    }
    const auto whole = static_cast<float>(static_cast<int>(x));
    return whole > x ? whole - 1.0F : whole;
}

/// Returns the pen's fraction in 1/64 pixel, rounded down to sixteenths of a pixel so that neighbouring
/// positions share a bitmap. The result is 0 to 60, or 64 if the position is so little below zero that its
/// fraction rounds to 1. NaN gives 0.
unsigned char getOffsetInsidePixel(float x, float devicePixelRatio) {
    const float fraction = x - floorOf(x);
    if (Internal::isDense(devicePixelRatio) || !(fraction > 0.0F)) {
        return 0;
    }
    constexpr int unitsInSixteenth = 4;
    return static_cast<unsigned char>(static_cast<int>(16.0F * fraction) * unitsInSixteenth);
}

/// Glyphs of one face that wait for their bitmaps, so that one lock serves many.
class GlyphBatch {
public:
    /// Keeps references to the last two arguments.
    GlyphBatch(float devicePixelRatio, const cinder::Vec2<float>& scale, bool flipVertically,
               Internal::HeldGlyphs& run, Internal::FactoryPin& factory)
        : _devicePixelRatio(devicePixelRatio)
        , _scale(scale)
        , _flipVertically(flipVertically)
        , _run(run)
        , _factory(factory) {}

    /// Null unless glyphs may be added.
    const FaceInfoPtr* findFaceInfo() const { return _source ? &_source->faceInfo : nullptr; }

    /// The glyphs added from now on come from `face`. Keeps references to the first two arguments.
    void start(const FaceInfoPtr& faceInfo, const FontFace& face, float fontSize) {
        fetch();
        const Internal::StrikeInfo info{faceInfo.get(), fontSize, face.getTransform(), _scale,
                                        _devicePixelRatio};
        _source.emplace(
            Internal::BitmapSource{Internal::BitmapCache::Handle(info), faceInfo, face, _flipVertically});
    }

    /// Lets go of what `start` was given.
    void stop() {
        fetch();
        _source.reset();
    }

    void add(const PlacedGlyph& glyph) {
        _pending.push_back({glyph.glyphIndex, getOffsetInsidePixel(glyph.position.x, _devicePixelRatio),
                            glyph.isLast, glyph.unicode, glyph.position.x, glyph.position.y});
        if (_pending.size() == Internal::maxBatchSize) {
            fetch();
        }
    }

    void fetch() {
        if (!_pending.empty()) {
            _source->face.getGlyphAccess().append(*_source, _pending, _run, _factory);
        }
        _pending.clear();
    }

private:
    float _devicePixelRatio;
    cinder::Vec2<float> _scale;
    bool _flipVertically;
    Internal::HeldGlyphs& _run;
    Internal::FactoryPin& _factory;
    std::optional<Internal::BitmapSource> _source; // of the pending glyphs
    Internal::PendingGlyphs _pending;
};

/// Lays out one text. The glyphs wait in a batch only until the layout is about to call a client's object. So
/// the client cannot tell that they were not fetched one by one.
class Layout {
public:
    Layout(const ExtFontInfoPtr& extFontInfo, const Font& font, float devicePixelRatio,
           const cinder::Vec2<float>& scale, bool flipVertically, std::size_t capacity)
        : _extFontInfo(extFontInfo)
        , _ownExtFontInfo(Internal::findOwn(*extFontInfo))
        , _storedFaceInfo(Internal::findStoredFaceInfo(_ownExtFontInfo))
        , _letterSpacing(extFontInfo->getLetterSpacing())
        , _face(*font.getFace())
        , _charMap(_face.getBasicMetrics().getCharMap())
        , _factory(_storedFaceInfo == nullptr ? _face.shareFontFactory() : nullptr)
        , _fontSize(font.getFontSize())
        , _scaleX(scale.x)
        , _run(capacity)
        , _batch(devicePixelRatio, scale, flipVertically, _run, _factory) {}

    /// Adds the character's glyph from the text's own face or, if that lacks the character, from the fallback
    /// face. If there is no fallback, adds the missing-glyph symbol of the text's own face.
    void add(unsigned int codePoint, bool isLast) {
        if (_storedFaceInfo == nullptr) {
            addWithNewFaceInfo(codePoint, isLast);
            return;
        }
        const GlyphEntry glyph = _charMap[codePoint];
        if (glyph.glyphIndex == 0 && addFallback(codePoint, isLast)) {
            return;
        }
        if (_batch.findFaceInfo() != _storedFaceInfo) {
            _batch.start(*_storedFaceInfo, _face, _fontSize);
        }
        append(glyph, codePoint, isLast);
    }

    BitmapGlyphRun finish() {
        _batch.fetch();
        return std::move(_run).finish();
    }

private:
    /// Reads the face description anew for each character and keeps none of it, because it may be of a
    /// client's class and change every time.
    void addWithNewFaceInfo(unsigned int codePoint, bool isLast) {
        // A description of this library's own class saves the reference to the font description in between.
        const FaceInfoPtr faceInfo = _ownExtFontInfo != nullptr
                                         ? _ownExtFontInfo->viewFontInfo().getFontFaceInfo()
                                         : _extFontInfo->getFontInfo()->getFontFaceInfo();
        const GlyphEntry glyph = _charMap[codePoint];
        if (glyph.glyphIndex != 0 || !addFallback(codePoint, isLast)) {
            _batch.start(faceInfo, _face, _fontSize);
            append(glyph, codePoint, isLast);
        }
        _batch.stop();
    }

    /// Whether there is a fallback for the character.
    bool addFallback(unsigned int codePoint, bool isLast) {
        _batch.fetch(); // the next step calls the loader
        if (_factory == nullptr) {
            _factory = _face.shareFontFactory();
        }
        auto found = _fallback.find(derefNN(_factory.get()), codePoint, _extFontInfo->getFontInfo());
        if (!found) {
            return false;
        }
        if (!_fallbackFace || _batch.findFaceInfo() != &_fallbackFace->faceInfo ||
            _fallbackFace->face != found->face || _fallbackFace->faceInfo != found->faceInfo) {
            _batch.stop();
            _fallbackFace = std::move(found);
            _batch.start(_fallbackFace->faceInfo, *_fallbackFace->face, _fontSize);
        }
        append(_fallbackFace->face->getBasicMetrics().getCharMap()[codePoint], codePoint, isLast);
        return true;
    }

    void append(const GlyphEntry& glyph, unsigned int codePoint, bool isLast) {
        const float advance = (_fontSize * glyph.advance) * _scaleX + _scaleX * _letterSpacing;
        _batch.add({glyph.glyphIndex, isLast, codePoint, {_penX, 0.0F}});
        _penX = advance + _penX;
    }

    const ExtFontInfoPtr& _extFontInfo;
    const Internal::ExtFontInfo* _ownExtFontInfo;
    const FaceInfoPtr* _storedFaceInfo;
    float _letterSpacing;
    const FontFace& _face;
    const Gfx::CharMap& _charMap;
    Internal::FactoryPin _factory; // keeps the factory alive while glyphs are made or clients are called
    float _fontSize;
    float _scaleX;

    float _penX = 0.0F;
    Internal::RunFallback _fallback;
    std::optional<Internal::DescribedFace> _fallbackFace; // of the batch, unless that has the text's own face
    Internal::HeldGlyphs _run;
    GlyphBatch _batch;
};

/// Empty at the end of the text.
std::optional<unsigned int> decodeNext(const char*& position, const char* end) {
    return position == end ? std::nullopt : std::optional<unsigned int>(decodeUtf8(position, end));
}

} // namespace

BitmapGlyphRun RasterTextPainter::createGlyphRun(boost::string_ref text, const ExtFontInfoPtr& extFontInfo,
                                                 const Font& font, float devicePixelRatio,
                                                 const cinder::Vec2<float>& scale) {
    Layout layout(extFontInfo, font, devicePixelRatio, scale, _flipVertically,
                  text.size()); // the number of bytes, which is at least the number of characters
    const char* position = text.data();
    const char* const end = position + text.size();
    std::optional<unsigned int> next = decodeNext(position, end);
    while (next) {
        const unsigned int codePoint = *next;
        next = decodeNext(position, end);
        layout.add(codePoint, next != codePoint);
    }
    return layout.finish();
}

PlacedGlyphRun::PlacedGlyphRun(float devicePixelRatio, const cinder::Vec2<float>& scale, bool flipVertically,
                               std::size_t capacity)
    : _devicePixelRatio(devicePixelRatio)
    , _scale(scale)
    , _flipVertically(flipVertically)
    , _run(capacity) {}

PlacedGlyphRun::~PlacedGlyphRun() = default;

void PlacedGlyphRun::append(const FaceInfoPtr& faceInfo, const FacePtr& face, float fontSize,
                            const PlacedGlyph* glyphs, std::size_t count) {
    face->getGlyphAccess().makeRoom(_run, count);
    Internal::FactoryPin factory;
    GlyphBatch batch(_devicePixelRatio, _scale, _flipVertically, _run, factory);
    batch.start(faceInfo, *face, fontSize);
    for (std::size_t i = 0; i != count; ++i) {
        batch.add(glyphs[i]);
    }
    batch.fetch();
}

BitmapGlyphRun PlacedGlyphRun::finish() && {
    return std::move(_run).finish();
}

} // namespace Vell::FontEngine
