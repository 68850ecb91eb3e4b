#pragma once

#include "Workload.h"

#include <FontEngine/FontEngine.h>
#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

using Bytes = std::vector<unsigned char>;

FontLoaders::FontBytes readFontFile(const std::string& path);

/// Serves one font as the regular style of "Bench", and another one for every Unicode range.
class OneFontLoader : public FontLoaders::FontLoader {
public:
    OneFontLoader(FontLoaders::FontBytes font, FontLoaders::FontBytes fallback = nullptr);

    FontLoaders::FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontLoaders::FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

private:
    FontLoaders::FontBytes _font;
    FontLoaders::FontBytes _fallback;
};

/// A factory for one font file, the description of its font at a size, and the font.
struct BenchEngine {
    /// Takes font and size of the workload, and optionally a font for the characters that it lacks.
    explicit BenchEngine(const Workload& workload, const std::string& fallbackFile = {});
    explicit BenchEngine(const FontLoaders::FontBytes& bytes,
                         const FontLoaders::FontBytes& fallback = nullptr, float size = usualPixelSize);
    BenchEngine(const NNPtr<const FontLoaders::FontLoader>& loader, const std::string& family,
                float size = usualPixelSize);

    NNPtr<FontEngine::FontFactory> factory;
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    NNPtr<const Gfx::FontInfo> fontInfo;
    NNPtr<const Gfx::ExtFontInfo> extFontInfo;
    FontEngine::Font font;
};

/// A painter of glyphs and paths that does nothing, to measure only the work before it.
class IdlePainter : public Gfx::Painter, public FontEngine::BitmapGlyphPainter {
public:
    void beginPath() override {}
    void moveTo(const cinder::Vec2<float>&) override {}
    void lineTo(const cinder::Vec2<float>&) override {}
    void cubicTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&,
                 const cinder::Vec2<float>&) override {}
    void quadTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&) override {}
    std::shared_ptr<const Gfx::Path> takePath() override { return nullptr; }
    void drawPath(const Gfx::Path&, bool) override {}
    void resetTransform() override {}
    void translate(const cinder::Vec2<float>&) override {}
    void scale(const cinder::Vec2<float>&) override {}
    cinder::MatrixAffine2<float> getTransform() const override { return {}; }
    void rotate(float) override {}
    void pushTransform() override {}
    void popTransform() override {}
    void drawGlyph(const FontEngine::BitmapGlyphImage&, const cinder::Vec2<float>&) override {}
};

} // namespace Vell::Benchmarks
