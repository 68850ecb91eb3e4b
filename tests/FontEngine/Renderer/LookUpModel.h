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

/// Runs a function at one of the calls to client code.
class Interruption {
public:
    /// Sets the function to run at the `number`-th call from now on, or never for 0.
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

    /// The number of calls to client code so far.
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

/// Which of the three parts of a description have a client's class.
struct DescriptionClasses {
    bool isClientExt;
    bool isClientFont;
    bool isClientFace;
    bool isFaceNew; ///< the client's font description returns a new face description each time
};

/// The description of a text and its setting.
struct LookUpSetting {
    ModelSetting layout;
    std::string family;
    bool bold;
    bool italic;
    DescriptionClasses classes;

    /// The client's parts call `interruption` in each accessor.
    Testing::ExtFontInfoPtr makeExtFontInfo(Interruption& interruption) const;
};

LookUpSetting makeRandomLookUpSetting(std::mt19937& random);

/// A glyph of a run with the key that it was requested with.
struct RequestedGlyph {
    BitmapGlyphInfo key;
    float pen;
    std::shared_ptr<const FT_BitmapGlyphRec_> bitmap;
};
using RequestedGlyphs = std::vector<RequestedGlyph>;

/// A factory and the client code that interrupts it.
struct LookUpSide {
    Interruption interruption;
    ModelFonts fonts{std::make_shared<InterruptedLoader>(interruption)};

    FontFactory& getFactory() const { return *fonts.getFactory(); }
};

/// Requests the glyphs of a run one by one from the face, with the same calls to the client's objects in
/// between as the painters make. Adds every requested key to `asked`, even if the request fails.
RequestedGlyphs requestOneByOne(const LookUpSide& side, const std::vector<unsigned int>& text,
                                const Testing::ExtFontInfoPtr& extFontInfo, const Font& font,
                                const ModelSetting& setting, std::vector<BitmapGlyphInfo>& asked);
std::vector<OutlineGlyph> requestOutlinesOneByOne(const std::vector<unsigned int>& text,
                                                  const Testing::ExtFontInfoPtr& extFontInfo,
                                                  const Font& font, Gfx::Painter& painter,
                                                  std::vector<GlyphInfo>& asked);
void drawOneByOne(const RequestedGlyphs& glyphs, const Font& font,
                  const cinder::ColorAT<unsigned char>& color, BitmapGlyphPainter& painter);

} // namespace Vell::FontEngine
