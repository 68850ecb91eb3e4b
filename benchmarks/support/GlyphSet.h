#pragma once

#include "BenchEngine.h"

#include FT_GLYPH_H

#include <array>

namespace Vell::Benchmarks {

/// A font as a stage for single glyphs: its bytes, and how the engine has FreeType load them.
struct HintedFont {
    std::string name;
    std::shared_ptr<const Bytes> bytes;
    FT_Int32 loadFlags;
};

/// DejaVu Sans, hinted by its own bytecode, as FreeType chooses.
const HintedFont& getBytecodeFont();
/// DejaVu Sans in the name of a family that the engine gives to the auto-hinter.
const HintedFont& getAutoHintedFont();
/// DejaVu Math TeX Gyre, which has instructions neither for the font nor for its glyphs: nothing hints it.
const HintedFont& getUnhintedFont();

/// The glyphs of the printable ASCII characters and two more, at one size or at several sizes in turn, by
/// the engine and by FreeType alone.
class GlyphSet {
public:
    static constexpr std::size_t glyphCount = 96;

    GlyphSet(const HintedFont& font, unsigned int sizeCount);

    /// Asks the factory for glyph number `i`.
    std::shared_ptr<const FT_BitmapGlyphRec_> getFromEngine(std::size_t i) const;
    /// FreeType's three calls on a face of its own. The caller sizes the face and releases the glyph.
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
