#pragma once

// One class of a client for each interface that clients implement.

#include <FontEngine/FontEngine.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Client {

using namespace Vell;

class FaceInfo : public Gfx::FontFaceInfo {
public:
    explicit FaceInfo(std::string name)
        : _name(std::move(name)) {}
    std::string getName() const override { return _name; }
    bool isBold() const override { return false; }
    bool isItalic() const override { return false; }

private:
    std::string _name;
};

/// Returns another name than the one that its base class stores.
class RenamedFaceInfo : public FontEngine::Internal::FontFaceInfo {
public:
    explicit RenamedFaceInfo(std::string name)
        : FontEngine::Internal::FontFaceInfo("held", false, false)
        , _name(std::move(name)) {}
    std::string getName() const override { return _name; }

private:
    std::string _name;
};

class FontInfo : public Gfx::FontInfo {
public:
    explicit FontInfo(CheckedPtrImpl<const Gfx::FontFaceInfo, false> face)
        : _face(std::move(face)) {}
    CheckedPtrImpl<const Gfx::FontFaceInfo, false> getFontFaceInfo() const override { return _face; }
    float getSize() const override { return 20.0F; }
    Gfx::TextPositionType getTextPositionType() const override { return Gfx::TextPositionType::Normal; }

private:
    CheckedPtrImpl<const Gfx::FontFaceInfo, false> _face;
};

class ExtFontInfo : public Gfx::ExtFontInfo {
public:
    explicit ExtFontInfo(CheckedPtrImpl<const Gfx::FontInfo, false> font)
        : _font(std::move(font)) {}
    CheckedPtrImpl<const Gfx::FontInfo, false> getFontInfo() const override { return _font; }
    float getLetterSpacing() const override { return 0.5F; }

private:
    CheckedPtrImpl<const Gfx::FontInfo, false> _font;
};

/// Loads the installed fonts, and has one family for all ranges.
class Loader : public FontLoaders::FontLoader {
public:
    explicit Loader(std::string fallback)
        : _fallback(std::move(fallback)) {}
    std::shared_ptr<const std::vector<unsigned char>>
    loadFont(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& face) const override {
        return _installed->loadFont(face);
    }
    std::shared_ptr<const std::vector<unsigned char>> loadDefaultFont(bool bold, bool italic) const override {
        return _installed->loadDefaultFont(bold, italic);
    }
    std::string getFamilyNameForRange(unsigned int) const override { return _fallback; }

private:
    CheckedPtrImpl<FontLoaders::FontLoader, false> _installed =
        FontLoaders::createPlatformDefaultFontLoader("DejaVu Sans");
    std::string _fallback;
};

class Path : public Gfx::Path {
public:
    int segments = 0;
};

/// Counts paths and segments, and ignores transforms.
class Painter : public Gfx::Painter {
public:
    void beginPath() override { _path = std::make_shared<Path>(); }
    void moveTo(const cinder::Vec2<float>&) override { ++_path->segments; }
    void lineTo(const cinder::Vec2<float>&) override { ++_path->segments; }
    void cubicTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&,
                 const cinder::Vec2<float>&) override {
        ++_path->segments;
    }
    void quadTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&) override { ++_path->segments; }
    std::shared_ptr<const Gfx::Path> takePath() override { return _path; }
    void drawPath(const Gfx::Path& path, bool) override {
        ++paths;
        segments += static_cast<const Path&>(path).segments; // all paths of its factory are its own
    }
    void resetTransform() override {}
    void translate(const cinder::Vec2<float>&) override {}
    void scale(const cinder::Vec2<float>&) override {}
    cinder::MatrixAffine2<float> getTransform() const override { return {}; }
    void rotate(float) override {}
    void pushTransform() override {}
    void popTransform() override {}

    int paths = 0;
    int segments = 0;

private:
    std::shared_ptr<Path> _path = std::make_shared<Path>();
};

inline bool hasInk(const FontEngine::BitmapGlyphImage& image) {
    for (unsigned int row = 0; row < image.rows; ++row) {
        for (int byte = 0; byte < image.pitch; ++byte) {
            if (image.buffer[static_cast<int>(row) * image.pitch + byte] != 0) {
                return true;
            }
        }
    }
    return false;
}

class GlyphPainter : public FontEngine::BitmapGlyphPainter {
public:
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>&) override {
        inked += hasInk(image) ? 1 : 0;
    }

    int inked = 0;
};

class RunPainter : public FontEngine::BitmapGlyphRunPainter {
public:
    void beginGlyphRun() override { calls += '('; }
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>&) override {
        calls += hasInk(image) ? 'g' : ' ';
    }
    void endGlyphRun() noexcept override { calls += ')'; }

    std::string calls;
};

/// Metrics by which each byte of a text has a width of 1.
class Metrics : public Gfx::FontMetrics {
public:
    float getTextWidth(boost::string_ref text,
                       const CheckedPtrImpl<const Gfx::ExtFontInfo, false>&) const override {
        return static_cast<float>(text.size());
    }
    std::size_t countCharsForWidth(char const*& begin, char const* end, float,
                                   const CheckedPtrImpl<const Gfx::ExtFontInfo, false>&) const override {
        return static_cast<std::size_t>(end - std::exchange(begin, end));
    }
    float getHeight() const override { return 1.0F; }
    float getAscent() const override { return 1.0F; }
    float getDescent() const override { return 0.0F; }
    float getLeading() const override { return 0.0F; }
    float getCapHeight() const override { return 1.0F; }
    float getBaseLineShift() const override { return 0.0F; }
    float getStrikeOutPosition() const override { return 0.5F; }
};

class MetricsFactory : public Gfx::FontMetricsFactory {
public:
    CheckedPtrImpl<const Gfx::FontMetrics, false>
    getFontMetrics(const CheckedPtrImpl<const Gfx::FontInfo, false>&) const override {
        return makeNNPtr<const Metrics>();
    }
};

/// The metrics of a face, with an advance of two ems for each missing character.
class WideMetrics : public Gfx::UniversalFontMetrics {
public:
    using Gfx::UniversalFontMetrics::UniversalFontMetrics;
    void trySubstituteGlyph(const CheckedPtrImpl<const Gfx::ExtFontInfo, false>&, unsigned int,
                            Gfx::CharMap::GlyphIndexWithAdvance& glyph) const override {
        glyph.advance = 2.0F;
    }
};

} // namespace Client
