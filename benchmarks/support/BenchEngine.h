#pragma once

#include "Workload.h"

#include <FontEngine/FontEngine.h>
#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

using Bytes = std::vector<unsigned char>;

std::shared_ptr<const Bytes> readFontFile(const std::string& path);

/// Serves one file as "Bench" regular, and another one for every Unicode range.
class OneFontLoader : public FontLoaders::FontLoader {
public:
    OneFontLoader(std::shared_ptr<const Bytes> font, std::shared_ptr<const Bytes> fallback = nullptr);

    std::shared_ptr<const Bytes> loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    std::shared_ptr<const Bytes> loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

private:
    std::shared_ptr<const Bytes> _font;
    std::shared_ptr<const Bytes> _fallback;
};

/// A factory over one font file, the description of its font at a size, and the font.
struct BenchEngine {
    /// The font of a text at the size of that text, without or with another font for what it lacks.
    explicit BenchEngine(const Workload& workload, const std::string& fallbackFile = {});
    explicit BenchEngine(const std::shared_ptr<const Bytes>& bytes,
                         const std::shared_ptr<const Bytes>& fallback = nullptr, float size = usualPixelSize);

    NNPtr<FontEngine::FontFactory> factory;
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    NNPtr<const Gfx::FontInfo> fontInfo;
    NNPtr<const Gfx::ExtFontInfo> extFontInfo;
    FontEngine::Font font;
};

/// A painter of glyphs and shapes that does nothing, for what comes before it.
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
