#include <fuzz/support/ColorPaintScript.h>

#include <fuzz/support/CairoGlyphs.h>
#include <fuzz/support/CairoScript.h>

#include <FontEngine/Color/FE_ColorVectorPainter.h>
#include <FontEngine/FE_FontFactory.h>
#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace Vell::Fuzz {

namespace {

using FontEngine::ColorPaintTarget;
using FontEngine::CompositeMode;
using FontEngine::GradientExtend;

constexpr unsigned int stepCount = static_cast<unsigned int>(ColorPaintStep::Exception) + 1;
constexpr unsigned int maxSteps = 64;
constexpr unsigned int glyphCount = 4;

struct ScriptedException {};

/// Two boxes, a triangle, and a glyph without an outline.
struct ClipFont {
    ClipFont()
        : factory(makeFactory())
        , face(factory->shareFace(faceInfo)) {}

    static NNPtr<FontEngine::FontFactory> makeFactory() {
        Testing::FontBuilder font;
        font.setNotdef(Testing::makeBoxGlyph(50, 0, 0, 40, 30));
        font.map('A', font.addGlyph(Testing::makeBoxGlyph(50, -5, 8, 22, 40)));
        font.addGlyph({50, {{{0, 0}, {10, 30}, {40, 5}}}, {}});
        font.addGlyph({});
        const auto loader = std::make_shared<Testing::CountingLoader>();
        loader->setFont("Test Sans", false, false, font.build());
        return FontEngine::FontFactory::create(loader, "Test Sans");
    }

    Testing::FaceInfoPtr faceInfo = Testing::makeFaceInfo();
    NNPtr<FontEngine::FontFactory> factory;
    NNPtr<const FontEngine::FontFace> face;
};

/// Coordinates in fonts have 16 bits, and stay below 10^12 under the transforms of a graph.
float takeCoordinate(ByteReader& reader) {
    constexpr float most = 1e12F;
    const float measure = reader.takeMeasure() - originOfPoints;
    return std::isfinite(measure) ? std::clamp(measure, -most, most) : 0.0F;
}

cinder::Vec2<float> takePoint(ByteReader& reader) {
    const float x = takeCoordinate(reader);
    return {x, takeCoordinate(reader)};
}

FontEngine::PaintBox takeBox(ByteReader& reader) {
    const cinder::Vec2<float> first = takePoint(reader);
    const cinder::Vec2<float> second = takePoint(reader);
    return {first.x, first.y, second.x, second.y};
}

/// Two stops at least; the first is at 0 and the last at 1.
FontEngine::ColorLine takeLine(ByteReader& reader) {
    const unsigned int head = reader.takeU8();
    FontEngine::ColorLine line{{}, static_cast<GradientExtend>(head % 3)};
    const unsigned int count = 2 + head / 3 % 6;
    for (unsigned int i = 0; i < count; ++i) {
        line.stops.push_back({static_cast<float>(reader.takeU8()) / 255.0F, takeColor(reader)});
    }
    std::sort(line.stops.begin(), line.stops.end(),
              [](const auto& a, const auto& b) { return a.offset < b.offset; });
    line.stops.front().offset = 0.0F;
    line.stops.back().offset = 1.0F;
    return line;
}

class ColorPaintScript {
public:
    ColorPaintScript(ByteReader& reader, ColorPaintTarget& target)
        : _reader(reader)
        , _target(target) {}

    void run() {
        for (unsigned int i = 0; i < maxSteps && !_reader.isAtEnd(); ++i) {
            const auto step = static_cast<ColorPaintStep>(_reader.takeU8() % stepCount);
            if (step == ColorPaintStep::End) {
                break;
            }
            play(step);
        }
        while (!_pushed.empty()) {
            pop();
        }
    }

private:
    using Step = ColorPaintStep;

    void play(Step step) {
        switch (step) {
        case Step::Transform:
        case Step::GlyphClip:
        case Step::BoxClip:
        case Step::Group:
            push(step);
            return _pushed.push_back(step);
        case Step::Pop:
            return _pushed.empty() ? void() : pop();
        case Step::Image:
            return drawImage();
        case Step::Exception:
            throw ScriptedException();
        default:
            return fill(step);
        }
    }

    void push(Step step) {
        switch (step) {
        case Step::Transform:
            return _target.pushTransform(takeMatrix());
        case Step::GlyphClip:
            return _target.pushClip(static_cast<unsigned short>(_reader.takeU8() % glyphCount));
        case Step::BoxClip:
            return _target.pushClip(takeBox(_reader));
        default:
            return _target.pushGroup();
        }
    }

    void pop() {
        const Step step = _pushed.back();
        _pushed.pop_back();
        if (step == Step::Transform) {
            _target.popTransform();
        } else if (step == Step::Group) {
            constexpr unsigned int modes = static_cast<unsigned int>(CompositeMode::Luminosity) + 1;
            _target.popGroup(static_cast<CompositeMode>(_reader.takeU8() % modes));
        } else {
            _target.popClip();
        }
    }

    cinder::MatrixAffine2<float> takeMatrix() {
        float factors[4];
        for (float& factor : factors) {
            factor = _reader.takeFactor();
        }
        const cinder::Vec2<float> offset = takePoint(_reader);
        return {factors[0], factors[1], factors[2], factors[3], offset.x, offset.y};
    }

    void fill(Step step) {
        switch (step) {
        case Step::Linear:
            return fillLinearly();
        case Step::Radial:
            return fillRadially();
        case Step::Sweep:
            return sweep();
        default:
            return _target.fill(takeColor(_reader));
        }
    }

    void fillLinearly() {
        const FontEngine::ColorLine line = takeLine(_reader);
        const cinder::Vec2<float> p0 = takePoint(_reader);
        const cinder::Vec2<float> p1 = takePoint(_reader);
        const cinder::Vec2<float> p2 = takePoint(_reader);
        if ((p1.x - p0.x) * (p2.y - p0.y) != (p1.y - p0.y) * (p2.x - p0.x)) { // not on one line
            _target.fill(FontEngine::LinearGradient{line, p0, p1, p2});
        }
    }

    void fillRadially() {
        const FontEngine::ColorLine line = takeLine(_reader);
        const cinder::Vec2<float> center0 = takePoint(_reader);
        const float radius0 = std::abs(takeCoordinate(_reader));
        const cinder::Vec2<float> center1 = takePoint(_reader);
        const float radius1 = std::abs(takeCoordinate(_reader));
        if (center0 != center1 || radius0 != radius1) {
            _target.fill(FontEngine::RadialGradient{line, center0, radius0, center1, radius1});
        }
    }

    float takeAngle() { return static_cast<float>(_reader.takeU16()) / 4096.0F - 4.0F; }

    void sweep() {
        const FontEngine::ColorLine line = takeLine(_reader);
        const cinder::Vec2<float> center = takePoint(_reader);
        const float start = takeAngle();
        const float end = takeAngle();
        if (start != end || line.extend == GradientExtend::Pad) {
            _target.fill(FontEngine::SweepGradient{line, center, start, end});
        }
    }

    void drawImage() {
        const ScriptedGlyph glyph(_reader);
        const FontEngine::PaintBox box = takeBox(_reader);
        if (glyph.isSound()) {
            _target.drawImage(glyph.getImage(), box);
        }
    }

    ByteReader& _reader;
    ColorPaintTarget& _target;
    std::vector<Step> _pushed;
};

} // namespace

bool drawScriptedColors(ByteReader& reader, CairoAdapter::CairoPainter& painter) {
    static const ClipFont font;
    const FontEngine::ColorGlyphInfo info(font.faceInfo, 0, 16.0F, 1.0F, 1.0F, nullptr, {0, 0, 0, 255});
    try {
        return painter.drawColorGlyph(info, font.face, [&reader](ColorPaintTarget& target) {
            ColorPaintScript(reader, target).run();
            return true;
        });
    } catch (const ScriptedException&) {
        return false;
    }
}

} // namespace Vell::Fuzz
