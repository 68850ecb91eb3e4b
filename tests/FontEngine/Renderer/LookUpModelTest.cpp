// Compares the painters' lookups with the same lookups made one by one: two factories with equal fonts do the
// same random work side by side, and must agree in every figure of their caches.

#include <FontEngine/Renderer/LookUpModel.h>
#include <FontEngine/Renderer/SameGlyphs.h>

#include <support/InjectedError.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace Vell::FontEngine {
namespace {

using Color = cinder::ColorAT<unsigned char>;

constexpr unsigned int seedCount = 20;
constexpr int stepsPerSeed = 120;
constexpr std::size_t keptRuns = 12;
constexpr std::size_t settingsPerSeed = 6;
constexpr std::size_t askedInTheEnd = 500;

/// Does the work and returns the text of the exception that ended it, or "" for none.
template <class Work>
std::string attempt(const Work& work) {
    try {
        work();
        return "";
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// Counts the events of all seeds, to prove that the model compares something.
struct Totals {
    std::uint64_t bitmapHits = 0;
    std::uint64_t bitmapEvictions = 0;
    std::uint64_t imageHits = 0;
    std::uint64_t imageEvictions = 0;
    std::uint64_t outlineHits = 0;
    int failures = 0;
    int interruptions = 0;
    int survivors = 0;
};

/// Does the work of one seed on both sides.
class Comparison {
public:
    Comparison(unsigned int seed, Totals& totals)
        : _random(seed)
        , _totals(totals) {
        for (std::size_t i = 0; i < settingsPerSeed; ++i) {
            _settings.push_back(makeRandomLookUpSetting(_random));
        }
    }

    void doStep() {
        switch (_random() % 16) {
        case 0:
            forBothFactories([](FontFactory& factory) { factory.flush(); });
            break;
        case 1:
            resetToRandomLimits();
            break;
        case 2:
        case 3:
        case 4:
            compareOutlines();
            break;
        case 5:
        case 6:
        case 7:
        case 8:
            compareDrawing();
            break;
        default:
            compareLayouts();
        }
        expectEqualFigures();
    }

    /// Requests all earlier keys, the last ones first, and compares which of them are cached.
    void expectSameSurvivors() {
        recordTotals();
        expectSameHits(_bitmapKeys, &FactoryCacheFigures::bitmaps,
                       [](const FontFactory& factory, const BitmapGlyphInfo& key) {
                           std::shared_ptr<const FontFace>(factory.getFace(key.getFaceInfo()))
                               ->getBitmapGlyph(key, false);
                       });
        expectSameHits(_images, &FactoryCacheFigures::coloredImages,
                       [](const FontFactory& factory, const std::pair<BitmapGlyph, Color>& image) {
                           factory.getGlyphBitmapWithSubpixels(image.first, image.second);
                       });
        Testing::RecordingPainter painter;
        expectSameHits(_outlineKeys, &FactoryCacheFigures::outlines,
                       [&](const FontFactory& factory, const GlyphInfo& key) {
                           std::shared_ptr<const FontFace>(factory.getFace(key.getFaceInfo()))
                               ->getOutlineGlyphPath(key, painter);
                       });
        expectEqualFigures();
    }

private:
    struct KeptRun {
        std::vector<BitmapGlyph> laid;
        RequestedGlyphs asked;
    };

    template <class Work>
    void forBothFactories(const Work& work) {
        work(_laid.getFactory());
        work(_asked.getFactory());
    }

    void expectEqualFigures() const {
        expectSameFigures(_laid.getFactory().getCacheFigures(), _asked.getFactory().getCacheFigures());
    }

    void resetToRandomLimits() {
        const unsigned long faces = _random() % 4;
        const unsigned long bytes = _random() % 3 == 0 ? 0 : _random() % 9000;
        forBothFactories([&](FontFactory& factory) { factory.reset(faces, bytes); });
    }

    const LookUpSetting& chooseSetting() { return _settings[_random() % _settings.size()]; }

    /// Makes a text that sometimes has several stretches, and rarely a glyph that FreeType cannot load.
    ModelText makeText() {
        ModelText text;
        for (auto parts = 1 + _random() % 12; parts > 0; --parts) {
            ModelText part = _random() % 90 == 0 ? ModelText{"!", {'!'}} : makeRandomText(_random);
            text.bytes += part.bytes;
            text.codePoints.insert(text.codePoints.end(), part.codePoints.begin(), part.codePoints.end());
        }
        return text;
    }

    BitmapGlyphRun layOut(const ModelText& text, const LookUpSetting& setting,
                          const Testing::ExtFontInfoPtr& extFontInfo, const Font& font) {
        Testing::RecordingPainter painter;
        Testing::RecordingGlyphPainter glyphPainter;
        return RasterTextPainter(painter, glyphPainter, setting.layout.flipVertically)
            .createGlyphRun(text.bytes, extFontInfo, font, setting.layout.ratio, setting.layout.scale);
    }

    /// In half of the cases, client code empties or limits the caches, throws, or lays out another text at
    /// one of its calls, the same on both sides.
    void armBoth() {
        const unsigned int number = _random() % 2 == 0 ? 0 : 1U + static_cast<unsigned int>(_random() % 40);
        const auto action = _random() % 4;
        const unsigned long bytes = _random() % 5000;
        const ModelText text = makeRandomText(_random);
        const LookUpSetting setting = _settings.front();
        const auto makeAction = [&](LookUpSide& side, std::function<void(const Font&)> layOutOther) {
            return [=, &side] {
                ++_totals.interruptions;
                switch (action) {
                case 0:
                    return side.getFactory().flush();
                case 1:
                    return side.getFactory().reset(2, bytes);
                case 2:
                    throw Testing::InjectedError();
                default:
                    layOutOther(
                        side.getFactory().getFont(setting.makeExtFontInfo(side.interruption)->getFontInfo()));
                }
            };
        };
        const auto extFontInfo = setting.makeExtFontInfo(_idle);
        _laid.interruption.arm(
            number, makeAction(_laid, [=](const Font& font) { layOut(text, setting, extFontInfo, font); }));
        _asked.interruption.arm(number, makeAction(_asked, [=](const Font& font) {
                                    requestOneByOne(_asked, text.codePoints, extFontInfo, font,
                                                    setting.layout, _bitmapKeys);
                                }));
    }

    template <class Lay, class Request>
    bool doBoth(const Lay& lay, const Request& ask) {
        armBoth();
        const std::string laid = attempt(lay);
        const std::string asked = attempt(ask);
        _laid.interruption.arm(0, nullptr);
        _asked.interruption.arm(0, nullptr);
        EXPECT_EQ(laid, asked);
        _totals.failures += asked.empty() ? 0 : 1;
        return asked.empty();
    }

    void compareLayouts() {
        const LookUpSetting& setting = chooseSetting();
        const ModelText text = makeText();
        const Testing::ExtFontInfoPtr infos[] = {setting.makeExtFontInfo(_laid.interruption),
                                                 setting.makeExtFontInfo(_asked.interruption)};
        // The description of a text may differ from the description of its font.
        const LookUpSetting& fontSetting = _random() % 8 == 0 ? chooseSetting() : setting;
        const auto fontInfo = fontSetting.makeExtFontInfo(_idle)->getFontInfo();
        const Font fonts[] = {_laid.getFactory().getFont(fontInfo), _asked.getFactory().getFont(fontInfo)};
        std::optional<BitmapGlyphRun> run;
        KeptRun kept;
        if (!doBoth([&] { run.emplace(layOut(text, setting, infos[0], fonts[0])); },
                    [&] {
                        kept.asked = requestOneByOne(_asked, text.codePoints, infos[1], fonts[1],
                                                     setting.layout, _bitmapKeys);
                    })) {
            return;
        }
        expectSameGlyphs(*run, kept.asked);
        expectOwnDescriptions(*run, infos[0], setting);
        expectSameBox(run->getBBox(), kept.asked);
        kept.laid = run->getGlyphs();
        keep(std::move(kept));
    }

    /// Expects that glyphs without a fallback have the text's own description if a client made it.
    void expectOwnDescriptions(const BitmapGlyphRun& run, const Testing::ExtFontInfoPtr& extFontInfo,
                               const LookUpSetting& setting) const {
        if (!setting.classes.isClientFace || setting.classes.isFaceNew) {
            return;
        }
        const auto own = extFontInfo->getFontInfo()->getFontFaceInfo();
        for (const BitmapGlyph& glyph : run.getGlyphs()) {
            const auto& held = glyph.getInfo().getFaceInfo();
            EXPECT_TRUE(held == own || Internal::FontFaceInfo::isExactly(*held));
        }
    }

    void compareOutlines() {
        const LookUpSetting& setting = chooseSetting();
        const ModelText text = makeText();
        const Testing::ExtFontInfoPtr infos[] = {setting.makeExtFontInfo(_laid.interruption),
                                                 setting.makeExtFontInfo(_asked.interruption)};
        const Font fonts[] = {_laid.getFactory().getFont(infos[0]->getFontInfo()),
                              _asked.getFactory().getFont(infos[1]->getFontInfo())};
        InterruptedPainter laidPainter(_laid.interruption);
        InterruptedPainter askedPainter(_asked.interruption);
        std::vector<OutlineGlyph> laid;
        std::vector<OutlineGlyph> asked;
        if (doBoth(
                [&] {
                    laid = VectorTextPainter(laidPainter)
                               .createGlyphRun(text.bytes, infos[0], fonts[0])
                               .getGlyphs();
                },
                [&] {
                    asked = requestOutlinesOneByOne(text.codePoints, infos[1], fonts[1], askedPainter,
                                                    _outlineKeys);
                })) {
            expectSameOutlines(laid, asked);
        }
        EXPECT_EQ(laidPainter.getOperations(), askedPainter.getOperations());
    }

    /// Draws the glyphs of two of the kept runs as one run, in either order.
    void compareDrawing() {
        if (_kept.empty()) {
            return;
        }
        KeptRun run = _kept[_random() % _kept.size()];
        const KeptRun& more = _kept[_random() % _kept.size()];
        const auto place = static_cast<std::ptrdiff_t>(_random() % (run.asked.size() + 1));
        run.laid.insert(run.laid.begin() + place, more.laid.begin(), more.laid.end());
        run.asked.insert(run.asked.begin() + place, more.asked.begin(), more.asked.end());
        const Color colors[] = {{0, 0, 0, 255}, {200, 30, 1, 255}, {200, 30, 1, 90}};
        const Color color = colors[_random() % 3];
        const auto font = Testing::makeFontInfo();
        const Font fonts[] = {_laid.getFactory().getFont(font), _asked.getFactory().getFont(font)};
        Testing::RecordingPainter painter;
        InterruptedGlyphPainter laidPainter(_laid.interruption);
        InterruptedGlyphPainter askedPainter(_asked.interruption);
        for (const RequestedGlyph& glyph : run.asked) {
            if (glyph.bitmap->bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
                _images.emplace_back(BitmapGlyph(glyph.bitmap, {0, 0}, glyph.key), color);
            }
        }
        doBoth(
            [&] {
                RasterTextPainter(painter, laidPainter, false)
                    .drawGlyphRun(BitmapGlyphRun(run.laid, {}), fonts[0], color, 1.0F);
            },
            [&] { drawOneByOne(run.asked, fonts[1], color, askedPainter); });
        expectSameDrawing(laidPainter, askedPainter);
    }

    void keep(KeptRun run) {
        if (_kept.size() < keptRuns) {
            _kept.push_back(std::move(run));
        } else {
            recordTotals();
            _kept[_random() % keptRuns] = std::move(run);
        }
    }

    void recordTotals() {
        const FactoryCacheFigures figures = _asked.getFactory().getCacheFigures();
        _totals.bitmapHits += figures.bitmaps.hits;
        _totals.bitmapEvictions += figures.bitmaps.evictions;
        _totals.imageHits += figures.coloredImages.hits;
        _totals.imageEvictions += figures.coloredImages.evictions;
        _totals.outlineHits += figures.outlines.hits;
    }

    template <class Key, class Ask>
    void expectSameHits(const std::vector<Key>& keys, CacheFigures FactoryCacheFigures::*cache,
                        const Ask& ask) {
        const std::size_t count = std::min(keys.size(), askedInTheEnd);
        for (auto key = keys.rbegin(); key != keys.rbegin() + static_cast<std::ptrdiff_t>(count); ++key) {
            const auto isHeld = [&](const FontFactory& factory) {
                const std::uint64_t before = (factory.getCacheFigures().*cache).hits;
                attempt([&] { ask(factory, *key); });
                return (factory.getCacheFigures().*cache).hits != before;
            };
            const bool isHeldByAsked = isHeld(_asked.getFactory());
            EXPECT_EQ(isHeld(_laid.getFactory()), isHeldByAsked);
            _totals.survivors += isHeldByAsked ? 1 : 0;
        }
    }

    std::mt19937 _random;
    Totals& _totals;
    Interruption _idle;
    LookUpSide _laid;
    LookUpSide _asked;
    std::vector<LookUpSetting> _settings;
    std::vector<KeptRun> _kept;
    std::vector<BitmapGlyphInfo> _bitmapKeys;
    std::vector<GlyphInfo> _outlineKeys;
    std::vector<std::pair<BitmapGlyph, Color>> _images;
};

TEST(LookUpModel, MatchesTheLookUpsOfThePainters) {
    Totals totals;
    for (unsigned int seed = 1; seed <= seedCount && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Comparison comparison(seed, totals);
        for (int step = 0; step < stepsPerSeed && !HasFailure(); ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            comparison.doStep();
        }
        if (!HasFailure()) {
            comparison.expectSameSurvivors();
        }
    }
    EXPECT_GT(totals.bitmapHits, 1000U);
    EXPECT_GT(totals.bitmapEvictions, 1000U);
    EXPECT_GT(totals.imageHits, 100U);
    EXPECT_GT(totals.imageEvictions, 100U);
    EXPECT_GT(totals.outlineHits, 1000U);
    EXPECT_GT(totals.failures, 10);
    EXPECT_GT(totals.interruptions, 100);
    EXPECT_GT(totals.survivors, 1000);
}

} // namespace
} // namespace Vell::FontEngine
