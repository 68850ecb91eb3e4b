#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/FE_FontFactory.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>

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

    /// FontFace::getBitmapGlyph of a face of that factory, for a key that no other thread knows yet.
    std::shared_ptr<const FT_BitmapGlyphRec_>
    getBitmapGlyph(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) const {
        if (!_factory) {
            return nullptr;
        }
        info.hashUnshared();
        return _factory->copyBitmapGlyph(info, face, flipVertically);
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
