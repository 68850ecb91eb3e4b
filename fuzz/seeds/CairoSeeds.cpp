#include <fuzz/seeds/Seeds.h>

#include <fuzz/support/CairoScript.h>
#include <fuzz/support/ColorPaintScript.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;

namespace {

/// Writes a script: the scene, then its operations.
class ScriptWriter {
public:
    explicit ScriptWriter(unsigned int flags = 0, unsigned int format = 0) {
        for (const unsigned int byte : {40U, 24U, format, flags, 0U}) {
            _writer.addU8(byte);
        }
        for (const unsigned int number :
             {2 * oneFold, 2 * oneFold, 0x0300U, 0x0280U, oneFold, oneFold, oneFold / 4, oneFold}) {
            _writer.addU16(number);
        }
        _writer.addU32(0x2040C0FF); // a colour
    }

    ScriptWriter& add(CairoOperation operation, const std::vector<unsigned int>& numbers = {}) {
        _writer.addU8(static_cast<unsigned int>(operation));
        for (const unsigned int number : numbers) {
            _writer.addU16(number);
        }
        return *this;
    }

    ScriptWriter& addGlyph(unsigned int pixelMode, unsigned int flags, unsigned int x, unsigned int y) {
        _writer.addU8(static_cast<unsigned int>(CairoOperation::Glyph));
        return addGlyphOfRun(pixelMode, flags, x, y);
    }

    ScriptWriter& addGlyphOfRun(unsigned int pixelMode, unsigned int flags, unsigned int x, unsigned int y) {
        for (const unsigned int byte : {pixelMode, 9U, 7U, 16U, flags, pixelMode + 5}) {
            _writer.addU8(byte);
        }
        _writer.addU16(x);
        _writer.addU16(y);
        return *this;
    }

    ScriptWriter& addByte(unsigned int byte) {
        _writer.addU8(byte);
        return *this;
    }

    Seed build(std::string name) const { return {std::move(name), _writer.getBytes()}; }

private:
    ByteWriter _writer;
};

/// The script's encoding of a whole coordinate.
unsigned int at(int coordinate) {
    return static_cast<unsigned int>(coordinate + static_cast<int>(originOfPoints)) << 8;
}

void addShape(ScriptWriter& script) {
    using Kind = CairoOperation;
    script.add(Kind::MoveTo, {at(2), at(2)}).add(Kind::LineTo, {at(30), at(4)});
    script.add(Kind::QuadTo, {at(35), at(20), at(20), at(18)});
    script.add(Kind::CubicTo, {at(10), at(30), at(-10), at(12), at(2), at(2)});
    script.add(Kind::TakePath).add(Kind::Fill).add(Kind::LineWidth, {0x0180}).add(Kind::Stroke);
}

Seed makePathSeed(std::string name, unsigned int flags, unsigned int format) {
    using Kind = CairoOperation;
    ScriptWriter script(flags, format);
    addShape(script);
    script.add(Kind::Push).add(Kind::Translate, {at(3), at(1)}).add(Kind::Scale, {oneFold / 2, 0xE7FF});
    script.add(Kind::Rotate, {oneFold / 3}).add(Kind::Fill).add(Kind::Pop).add(Kind::Stroke);
    script.add(Kind::Reset).add(Kind::Color, {0xFF00, 0x0080}).add(Kind::Fill);
    return script.build(std::move(name));
}

Seed makeGlyphSeed(std::string name, unsigned int flags, unsigned int format, unsigned int fraction) {
    ScriptWriter script(flags, format);
    for (unsigned int pixelMode = 0; pixelMode <= FT_PIXEL_MODE_BGRA + 1U; ++pixelMode) {
        script.addGlyph(pixelMode, 4 * (pixelMode % 2), at(static_cast<int>(4 * pixelMode)) + fraction,
                        at(3) + fraction);
    }
    script.add(CairoOperation::GlyphRun).addByte(3);
    for (const unsigned int pixelMode : {FT_PIXEL_MODE_GRAY, FT_PIXEL_MODE_LCD, FT_PIXEL_MODE_BGRA}) {
        script.addGlyphOfRun(pixelMode, 0, at(-2) + fraction, at(12));
    }
    return script.build(std::move(name));
}

Seed makeAbsurdSeed(unsigned int absurd) {
    using Kind = CairoOperation;
    const unsigned int number = 0xC000 + absurd;
    ScriptWriter script;
    addShape(script);
    script.add(Kind::LineTo, {number, at(3)})
        .add(Kind::CubicTo, {at(1), number, number, at(1), at(9), at(9)});
    script.add(Kind::TakePath).add(Kind::Fill).add(Kind::LineWidth, {number}).add(Kind::Stroke);
    script.addGlyph(FT_PIXEL_MODE_GRAY, 0, number, at(2));
    script.add(Kind::Scale, {number, oneFold}).add(Kind::Fill).add(Kind::Stroke);
    script.addGlyph(FT_PIXEL_MODE_GRAY, 0, at(2), at(2));
    return script.build("absurd-" + std::to_string(absurd));
}

ScriptWriter& addLine(ScriptWriter& script, unsigned int extend) {
    script.addByte(extend + 3); // three stops
    for (const unsigned int byte :
         {0U, 255U, 0U, 0U, 255U, 128U, 20U, 200U, 30U, 90U, 255U, 0U, 0U, 255U, 255U}) {
        script.addByte(byte);
    }
    return script;
}

void addNumbers(ScriptWriter& script, const std::vector<unsigned int>& numbers) {
    for (const unsigned int number : numbers) {
        script.addByte(number >> 8).addByte(number & 0xFF);
    }
}

void addStep(ScriptWriter& script, ColorPaintStep step) {
    script.addByte(static_cast<unsigned int>(step));
}

void addFills(ScriptWriter& script, unsigned int extend) {
    addStep(script, ColorPaintStep::Linear);
    addNumbers(addLine(script, extend), {at(2), at(3), at(9), at(5), at(1), at(12)});
    addStep(script, ColorPaintStep::Radial);
    addNumbers(addLine(script, extend), {at(9), at(9), at(1), at(12), at(10), at(8)});
    addStep(script, ColorPaintStep::Sweep);
    addNumbers(addLine(script, extend), {at(10), at(11), 0x4800, 0x6000});
    addStep(script, ColorPaintStep::Solid);
    addNumbers(script, {0x10C0, 0x2080});
}

Seed makeColorSeed(std::string name, unsigned int flags, unsigned int mode) {
    using Step = ColorPaintStep;
    ScriptWriter script(flags);
    script.add(CairoOperation::Translate, {at(3), at(20)}).add(CairoOperation::ColorGlyph);
    addStep(script, Step::GlyphClip);
    script.addByte(2);
    addFills(script, mode % 3);
    addStep(script, Step::Group);
    addStep(script, Step::Transform);
    addNumbers(script, {oneFold, oneFold / 4, oneFold / 3, oneFold, at(1), at(-2)});
    addStep(script, Step::BoxClip);
    addNumbers(script, {at(1), at(2), at(30), at(14)});
    addFills(script, (mode + 1) % 3);
    addStep(script, Step::Image);
    for (const unsigned int byte : {7U, 9U, 7U, 16U, 0U, 12U}) {
        script.addByte(byte);
    }
    addNumbers(script, {at(4), at(1), at(13), at(9)});
    addStep(script, Step::Pop);
    addStep(script, Step::Pop);
    addStep(script, Step::Pop);
    script.addByte(mode);
    addStep(script, mode % 4 == 0 ? Step::Exception : Step::End);
    return script.build(std::move(name));
}

Seed makeBrokenSeed(std::string name, unsigned int way) {
    ScriptWriter script;
    addShape(script);
    script.add(CairoOperation::Break).addByte(way).addByte(way);
    addShape(script);
    script.addGlyph(FT_PIXEL_MODE_GRAY, 0, at(2), at(2));
    return script.build(std::move(name));
}

} // namespace

std::vector<Seed> makeCairoSeeds() {
    std::vector<Seed> seeds = {ScriptWriter().build("nothing-drawn"), makeBrokenSeed("singular", 0),
                               makeBrokenSeed("finished", 1)};
    for (unsigned int format = 0; format < 4; ++format) {
        seeds.push_back(makePathSeed("paths-" + std::to_string(format), 0, format));
        seeds.push_back(makeGlyphSeed("glyphs-" + std::to_string(format), 0, format, 0));
        seeds.push_back(makeGlyphSeed("displaced-glyphs-" + std::to_string(format), 0, format, 0x55));
    }
    for (unsigned int flag = 1; flag < 256; flag *= 2) {
        seeds.push_back(makePathSeed("paths-flag-" + std::to_string(flag), flag, 0));
        seeds.push_back(makeGlyphSeed("glyphs-flag-" + std::to_string(flag), flag, 0, 0x55));
    }
    for (unsigned int mode = 0; mode < 28; ++mode) {
        seeds.push_back(makeColorSeed("colors-" + std::to_string(mode), 1U << mode % 8, mode));
    }
    for (unsigned int absurd = 0; absurd < 23; ++absurd) {
        seeds.push_back(makeAbsurdSeed(absurd));
    }
    return seeds;
}

} // namespace Vell::Fuzz
