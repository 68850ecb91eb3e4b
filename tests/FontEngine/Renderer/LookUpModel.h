#pragma once

#include <FontEngine/Renderer/LayoutModel.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

/// Does something at one of the calls that client code gets.
class Interruption {
public:
    /// At the `number`-th call from now on; 0 for never.
    void arm(unsigned int number, std::function<void()> act) {
        _left = number;
        _act = std::move(act);
    }
    void pass() {
        ++_count;
        if (_left != 0 && --_left == 0) {
            _act();
        }
    }

    /// How often client code was called so far.
    unsigned int getCount() const { return _count; }

private:
    unsigned int _count = 0;
    unsigned int _left = 0;
    std::function<void()> _act;
};

class InterruptedLoader : public Testing::CountingLoader {
public:
    explicit InterruptedLoader(Interruption& interruption)
        : _interruption(interruption) {}

    std::string getFamilyNameForRange(unsigned int rangeId) const override {
        _interruption.pass();
        return CountingLoader::getFamilyNameForRange(rangeId);
    }

private:
    Interruption& _interruption;
};

class InterruptedGlyphPainter : public Testing::RecordingGlyphPainter {
public:
    explicit InterruptedGlyphPainter(Interruption& interruption)
        : _interruption(interruption) {}

    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        _interruption.pass();
        RecordingGlyphPainter::drawGlyph(image, position);
    }

private:
    Interruption& _interruption;
};

class InterruptedPainter : public Testing::RecordingPainter {
public:
    explicit InterruptedPainter(Interruption& interruption)
        : _interruption(interruption) {}

    void moveTo(const cinder::Vec2<float>& point) override {
        _interruption.pass();
        RecordingPainter::moveTo(point);
    }
    std::shared_ptr<const Gfx::Path> takePath() override {
        _interruption.pass();
        return RecordingPainter::takePath();
    }

private:
    Interruption& _interruption;
};

/// Which of the three parts of a description are of a client's classes.
struct DescriptionClasses {
    bool isClientExt;
    bool isClientFont;
    bool isClientFace;
    bool isFaceNew; ///< each answer of a client's font description is a new face description
};

/// How a text is described and set.
struct LookUpSetting {
    ModelSetting layout;
    std::string family;
    bool bold;
    bool italic;
    DescriptionClasses classes;

    /// A client's parts pass `interruption` at every question.
    Testing::ExtFontInfoPtr makeExtFontInfo(Interruption& interruption) const;
};

LookUpSetting makeRandomLookUpSetting(std::mt19937& random);

/// A glyph of a run with the key that it was asked for by.
struct AskedGlyph {
    BitmapGlyphInfo key;
    float pen;
    std::shared_ptr<const FT_BitmapGlyphRec_> bitmap;
};
using AskedGlyphs = std::vector<AskedGlyph>;

/// A factory and what client code does to it meanwhile.
struct LookUpSide {
    Interruption interruption;
    ModelFonts fonts{std::make_shared<InterruptedLoader>(interruption)};

    FontFactory& getFactory() const { return *fonts.getFactory(); }
};

/// What a run of the painters is made of, asked for glyph by glyph through the face, with the questions to
/// the client's objects in between. Every key that is asked for goes to `asked`, those that fail included.
AskedGlyphs askOneByOne(const LookUpSide& side, const std::vector<unsigned int>& text,
                        const Testing::ExtFontInfoPtr& extFontInfo, const Font& font,
                        const ModelSetting& setting, std::vector<BitmapGlyphInfo>& asked);
std::vector<OutlineGlyph> askForOutlinesOneByOne(const std::vector<unsigned int>& text,
                                                 const Testing::ExtFontInfoPtr& extFontInfo, const Font& font,
                                                 Gfx::Painter& painter, std::vector<GlyphInfo>& asked);
void drawOneByOne(const AskedGlyphs& glyphs, const Font& font, const cinder::ColorAT<unsigned char>& color,
                  BitmapGlyphPainter& painter);

} // namespace Vell::FontEngine
