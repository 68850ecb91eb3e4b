#pragma once

#include "BenchEngine.h"

#include FT_GLYPH_H

#include <array>

namespace Vell::Benchmarks {

/// The bytes of a font, and the flags with which the engine lets FreeType load its glyphs.
struct HintedFont {
    std::string name;
    FontLoaders::FontBytes bytes;
    FT_Int32 loadFlags;
};

/// DejaVu Sans, hinted by its own bytecode, which is FreeType's default.
const HintedFont& getBytecodeFont();
/// DejaVu Sans under the name of a family that the engine passes to the auto-hinter.
const HintedFont& getAutoHintedFont();
/// DejaVu Math TeX Gyre, which nothing hints: it has instructions neither for the font nor for its glyphs.
const HintedFont& getUnhintedFont();

/// The glyphs of the printable ASCII characters and two more, at one size or at several sizes in turn,
/// rendered by the engine and by FreeType alone.
class GlyphSet {
public:
    static constexpr std::size_t glyphCount = 96;

    GlyphSet(const HintedFont& font, unsigned int sizeCount);

    /// Requests glyph number `i` from the factory.
    std::shared_ptr<const FT_BitmapGlyphRec_> getFromEngine(std::size_t i) const;
    /// Makes FreeType's three calls on a separate face. The caller sizes the face and releases the glyph.
    FT_Glyph renderByFreeType(std::size_t i) const;
    void sizeFace(std::size_t i) const;

    /// Whether both give the same pixels for all glyphs.
    bool agrees() const;

    const BenchEngine& getEngine() const { return _engine; }

private:
    float getSize(std::size_t i) const { return usualPixelSize + static_cast<float>(i % _sizeCount); }
    bool agreesAbout(std::size_t i) const;

    BenchEngine _engine;
    unsigned int _sizeCount;
    FT_Int32 _loadFlags;
    FontLoaders::FTLibraryPtr _library;
    FontLoaders::FTFacePtr _face;
    std::array<FT_UInt, glyphCount> _glyphs{};
};

} // namespace Vell::Benchmarks
