// The layout half of the raster painter.

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_HeldGlyphs.h>
#include <FontEngine/Private/FE_OwnDescriptions.h>
#include <FontEngine/Private/FE_SymbolFallback.h>
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
using GlyphEntry = Gfx::CharMap::GlyphIndexWithAdvance;

/// std::floor without the call that a build for any x86-64 machine makes.
float floorOf(float x) {
    constexpr float fractionless = 8388608.0F; // 2^23: from here on every number is whole
    if (!(std::fabs(x) < fractionless)) {
        return x;
    }
    const auto whole = static_cast<float>(static_cast<int>(x));
    return whole > x ? whole - 1.0F : whole;
}

/// The pen's fraction in 1/64 pixel, quantised down to sixteenths of a pixel so that neighbouring positions
/// share a bitmap. 0..60; a position just below a whole pixel rounds up to 64, one that is no number gives 0.
unsigned char getOffsetInsidePixel(float x, float devicePixelRatio) {
    const float fraction = x - floorOf(x);
    if (Internal::isDense(devicePixelRatio) || !(fraction > 0.0F)) {
        return 0;
    }
    constexpr int unitsInSixteenth = 4;
    return static_cast<unsigned char>(static_cast<int>(16.0F * fraction) * unitsInSixteenth);
}

/// One layout: the state of the pen while it walks over the characters. Glyphs wait for their bitmaps until
/// there are enough of them to be worth the lock, or until a client's object is about to be called: to that
/// object it looks as if each had been fetched at once.
class Layout {
public:
    Layout(const ExtFontInfoPtr& extFontInfo, const Font& font, float devicePixelRatio,
           const cinder::Vec2<float>& scale, bool flipVertically, std::size_t capacity)
        : _extFontInfo(extFontInfo)
        , _ownExtFontInfo(Internal::findOwn(*extFontInfo))
        , _silentFaceInfo(Internal::findSilentFaceInfo(_ownExtFontInfo))
        , _letterSpacing(extFontInfo->getLetterSpacing())
        , _face(*font.getFace())
        , _charMap(_face.getBasicMetrics().getCharMap())
        , _factory(_silentFaceInfo == nullptr ? _face.shareFontFactory() : nullptr)
        , _fontSize(font.getFontSize())
        , _devicePixelRatio(devicePixelRatio)
        , _scale(scale)
        , _flipVertically(flipVertically)
        , _run(capacity) {}

    /// The text's own face draws, or the fallback face where it lacks the character; without a fallback the
    /// face's missing-glyph symbol is drawn.
    void add(unsigned int codePoint, bool isLast) {
        if (_silentFaceInfo == nullptr) {
            addAskingForTheFace(codePoint, isLast);
            return;
        }
        const GlyphEntry glyph = _charMap[codePoint];
        if (glyph.glyphIndex == 0 && addFallback(codePoint, isLast)) {
            return;
        }
        if (!_source || &_source->faceInfo != _silentFaceInfo) {
            changeSource(*_silentFaceInfo, _face);
        }
        append(glyph, codePoint, isLast);
    }

    BitmapGlyphRun finish() {
        fetch();
        return std::move(_run).finish();
    }

private:
    /// The description may be another one for each character, and of a client's class: nothing of it is kept.
    void addAskingForTheFace(unsigned int codePoint, bool isLast) {
        // This library's own kind of description need not count one more reference for the step in between.
        const FaceInfoPtr faceInfo = _ownExtFontInfo != nullptr
                                         ? _ownExtFontInfo->viewFontInfo().getFontFaceInfo()
                                         : _extFontInfo->getFontInfo()->getFontFaceInfo();
        const GlyphEntry glyph = _charMap[codePoint];
        if (glyph.glyphIndex != 0 || !addFallback(codePoint, isLast)) {
            changeSource(faceInfo, _face);
            append(glyph, codePoint, isLast);
        }
        fetch();
        _source.reset();
    }

    /// Keeps references to both.
    void changeSource(const FaceInfoPtr& faceInfo, const FontFace& face) {
        fetch();
        const Internal::StrikeInfo info{faceInfo.get(), _fontSize, face.getTransform(), _scale,
                                        _devicePixelRatio};
        _source.emplace(
            Internal::BitmapSource{Internal::BitmapCache::Road(info), faceInfo, face, _flipVertically});
    }

    /// Whether there is a fallback for the character.
    bool addFallback(unsigned int codePoint, bool isLast) {
        fetch(); // the loader is asked next
        if (_factory == nullptr) {
            _factory = _face.shareFontFactory();
        }
        auto found = _fallback.find(derefNN(_factory.get()), codePoint, _extFontInfo->getFontInfo());
        if (!found) {
            return false;
        }
        if (!_source || !_fallbackFace || &_source->faceInfo != &_fallbackFace->faceInfo ||
            _fallbackFace->face != found->face || _fallbackFace->faceInfo != found->faceInfo) {
            _source.reset();
            _fallbackFace = std::move(found);
            changeSource(_fallbackFace->faceInfo, *_fallbackFace->face);
        }
        append(_source->face.getBasicMetrics().getCharMap()[codePoint], codePoint, isLast);
        return true;
    }

    void append(const GlyphEntry& glyph, unsigned int codePoint, bool isLast) {
        const float advance = (_fontSize * glyph.advance) * _scale.x + _scale.x * _letterSpacing;
        _waiting.push_back(
            {glyph.glyphIndex, getOffsetInsidePixel(_penX, _devicePixelRatio), isLast, codePoint, _penX});
        _penX = advance + _penX;
        if (_waiting.size() == Internal::stretch) {
            fetch();
        }
    }

    void fetch() {
        if (!_waiting.empty()) {
            _face.getGlyphDoor().append(*_source, _waiting, _run, _factory);
        }
        _waiting.clear();
    }

    const ExtFontInfoPtr& _extFontInfo;
    const Internal::ExtFontInfo* _ownExtFontInfo;
    const FaceInfoPtr* _silentFaceInfo;
    float _letterSpacing;
    const FontFace& _face;
    const Gfx::CharMap& _charMap;
    Internal::FactoryPin _factory; // while glyphs are made or clients are called
    float _fontSize;
    float _devicePixelRatio;
    cinder::Vec2<float> _scale;
    bool _flipVertically;

    float _penX = 0.0F;
    std::optional<Internal::BitmapSource> _source; // of the glyphs that wait
    Internal::LaidGlyphs _waiting;
    Internal::RunFallback _fallback;
    std::optional<Internal::DescribedFace> _fallbackFace; // of the source, if that is not the text's own
    Internal::HeldGlyphs _run;
};

} // namespace

BitmapGlyphRun RasterTextPainter::createGlyphRun(boost::string_ref text, const ExtFontInfoPtr& extFontInfo,
                                                 const Font& font, float devicePixelRatio,
                                                 const cinder::Vec2<float>& scale) {
    Layout layout(extFontInfo, font, devicePixelRatio, scale, _flipVertically,
                  text.size()); // bytes: no fewer than characters
    const char* position = text.data();
    const char* const end = position + text.size();
    std::optional<unsigned int> waiting; // until it is known what follows
    while (position != end) {
        const unsigned int codePoint = decodeUtf8(position, end);
        if (waiting) {
            layout.add(*waiting, codePoint != *waiting);
        }
        waiting = codePoint;
    }
    if (waiting) {
        layout.add(*waiting, true);
    }
    return layout.finish();
}

} // namespace Vell::FontEngine
