#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

/// A face with the description that it is known by.
struct DescribedFace {
    CheckedPtrImpl<const FontFaceInfo, false> faceInfo;
    CheckedPtrImpl<const FontFace, false> face;
};

/// The factory's services for one run of glyphs. The factory is asked for once, not once a glyph, and stays
/// alive meanwhile; a run whose factory has gone gets no glyphs.
class RunServices {
public:
    explicit RunServices(const FontFace& face)
        : _factory(face._fontFactory.lock()) {}

    /// Appends a glyph that has no bitmap yet. Its key is built in place from the arguments of
    /// BitmapGlyphInfo and takes over the reference to the description.
    template <class... KeyFields>
    static BitmapGlyph& addGlyph(std::vector<BitmapGlyph>& glyphs, const cinder::Vec2<float>& pos,
                                 CheckedPtrImpl<const Gfx::FontFaceInfo, false>&& faceInfo,
                                 const KeyFields&... keyFields) {
        return glyphs.emplace_back(RunAccessTag(), pos, std::move(faceInfo), keyFields...);
    }

    /// Gives a glyph that no other thread knows yet the bitmap of its key, by FontFace::getBitmapGlyph of a
    /// face of that factory. Whether there is one.
    bool fetchBitmap(BitmapGlyph& glyph, const FontFace& face, bool flipVertically) const {
        if (_factory) {
            glyph._info.hashUnshared();
            glyph._data = _factory->copyBitmapGlyph(glyph._info, face, flipVertically);
        }
        return glyph._data != nullptr;
    }

    /// FontFace::getOutlineGlyphPath of a face of that factory, for the key of an earlier glyph of the run:
    /// becomes the key of this one.
    std::shared_ptr<const Gfx::Path> getOutlineGlyphPath(GlyphInfo& key, unsigned long glyphIndex,
                                                         const CheckedPtrImpl<const FontFace, false>& face,
                                                         Gfx::Painter& painter) const {
        if (!_factory) {
            return nullptr;
        }
        key.changeGlyph(glyphIndex);
        key.hashUnshared();
        return _factory->copyOutlineGlyphPath(key, face, painter);
    }

    /// The face of FontFactory::getDefaultFontForSymbol: the same questions to loader and description, the
    /// same look into the cache of faces, but no new font and no new description while the answers repeat.
    /// Asserts that the factory still exists.
    std::optional<DescribedFace> findFallback(unsigned int codePoint,
                                              const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo);

private:
    std::shared_ptr<const FontFactory> _factory;
    std::shared_ptr<const FontFaceInfo> _lastFallback;
};

} // namespace Vell::FontEngine::Internal
