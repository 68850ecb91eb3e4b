// Entries whose destructors call the factory: descriptions, font files and paths have classes of the client,
// whose destructors may do anything.

#include <FontEngine/Faults/Services.h>

#include <support/ExpectAssertion.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Call = std::function<void()>;

constexpr const char* newEntryHasGone = "Utils/Public/MRUCache:199: assertion failed: value";

/// A description that runs a function when its last owner releases it.
class EndingFaceInfo : public Internal::FontFaceInfo {
public:
    EndingFaceInfo(const std::string& name, Call end)
        : FontFaceInfo(name, false, false)
        , _end(std::move(end)) {}
    ~EndingFaceInfo() override {
        if (_end) {
            _end();
        }
    }

private:
    Call _end;
};

/// An engine with the families "0" to "9", all with the same font.
struct Families : Engine {
    Families() {
        const auto bytes = std::make_shared<const Testing::Bytes>(makeTestFont().build());
        for (int i = 0; i < 10; ++i) {
            loader->setFont(std::to_string(i), false, false, bytes);
        }
    }

    FacePtr face = getFace();
};

using Answer = std::shared_ptr<const void>;

/// One of the caches: a function that limits it to so many entries, and the request for an entry by its
/// description.
struct CacheCase {
    const char* name;
    std::function<void(Families&, unsigned long count)> limit;
    std::function<Answer(Families&, const Testing::FaceInfoPtr&)> request;
};

BitmapGlyphInfo makeBitmapKey(const Testing::FaceInfoPtr& face) {
    return KeyFields()
        .with(&KeyFields::face, face)
        .with(&KeyFields::glyph, TestGlyph::underscore)
        .with(&KeyFields::mode, FT_RENDER_MODE_LCD)
        .with(&KeyFields::size, 40.0F)
        .makeBitmap();
}

Answer getBitmap(Families& engine, const Testing::FaceInfoPtr& face) {
    return engine.face->getBitmapGlyph(makeBitmapKey(face), false);
}

/// Colours a bitmap that is not in the cache.
Answer getImage(Families& engine, const Testing::FaceInfoPtr& face) {
    static const auto bitmap =
        Engine().getFace()->getBitmapGlyph(makeBitmapKey(Testing::makeFaceInfo()), false);
    const BitmapGlyph glyph(bitmap, {0, 0}, makeBitmapKey(face));
    return engine.factory->getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 255});
}

void limitFaces(Families& engine, unsigned long count) {
    engine.factory->reset(count, 0);
}

void limitBitmaps(Families& engine, unsigned long count) {
    const auto glyph = Engine().getFace()->getBitmapGlyph(makeBitmapKey(Testing::makeFaceInfo()), false);
    engine.factory->reset(0, count *
                                 (static_cast<unsigned long>(glyph->bitmap.pitch) * glyph->bitmap.rows + 48));
}

void limitImages(Families& engine, unsigned long count) {
    Families other;
    const auto image =
        std::static_pointer_cast<const BitmapGlyphImageWithDeleter>(getImage(other, Testing::makeFaceInfo()));
    engine.factory->reset(0, count * image->rows * 4UL * static_cast<unsigned long>(image->pitch));
}

const CacheCase limitedCaches[] = {
    {"font files", limitFaces,
     [](Families& engine, const auto& face) { return engine.factory->getFaceDataBytes(face); }},
    {"faces", limitFaces,
     [](Families& engine, const auto& face) {
         return std::shared_ptr<const FontFace>(engine.factory->getFace(face));
     }},
    {"bitmaps", limitBitmaps, getBitmap},
    {"images", limitImages, getImage}};

std::vector<CacheCase> getAllCaches() {
    std::vector<CacheCase> cases(std::begin(limitedCaches), std::end(limitedCaches));
    cases.push_back({"outlines", nullptr, [](Families& engine, const auto& face) {
                         Testing::RecordingPainter painter;
                         const GlyphInfo key = KeyFields().with(&KeyFields::face, face).makeOutline();
                         return engine.face->getOutlineGlyphPath(key, painter);
                     }});
    return cases;
}

Answer request(const CacheCase& cache, Families& engine, int number) {
    return cache.request(engine, Testing::makeFaceInfo(std::to_string(number)));
}

void addEnding(const CacheCase& cache, Families& engine, int number, Call end) {
    cache.request(engine, makeNNPtr<const EndingFaceInfo>(std::to_string(number), std::move(end)));
}

TEST(EvictionReentrancy, MayAddAnEntryThatEvictsAnother) {
    for (const CacheCase& cache : limitedCaches) {
        SCOPED_TRACE(cache.name);
        Families engine;
        cache.limit(engine, 3);
        Answer added;
        addEnding(cache, engine, 0, [&] { added = request(cache, engine, 4); });
        const Answer first = request(cache, engine, 1);
        const Answer second = request(cache, engine, 2);
        const Answer third = request(cache, engine, 3);
        EXPECT_NE(added, nullptr);
        EXPECT_EQ(request(cache, engine, 4), added);
        EXPECT_EQ(request(cache, engine, 3), third);
        EXPECT_EQ(request(cache, engine, 2), second);
        engine.loader->setFont("1", false, false,
                               makeTestFont().build()); // another file, so that the test can tell them apart
        EXPECT_NE(request(cache, engine, 1), first) << "evicted by the entry that was added last";
    }
}

TEST(EvictionReentrancyDeathTest, AssertsThatTheNewEntryIsNotEvicted) {
    for (const CacheCase& cache : limitedCaches) {
        VELL_EXPECT_ASSERTION(
            {
                Families engine;
                cache.limit(engine, 1);
                addEnding(cache, engine, 0, [&] { request(cache, engine, 4); });
                request(cache, engine, 1);
            },
            newEntryHasGone);
    }
}

TEST(EvictionReentrancyDeathTest, AssertsThatTheCacheIsNotEmptied) {
    for (const CacheCase& cache : limitedCaches) {
        for (const bool isReset : {false, true}) {
            VELL_EXPECT_ASSERTION(
                {
                    Families engine;
                    cache.limit(engine, 1);
                    addEnding(cache, engine, 0,
                              [&] { isReset ? engine.factory->reset(1, 1) : engine.factory->flush(); });
                    request(cache, engine, 1);
                },
                newEntryHasGone);
        }
    }
}

/// Empties the caches while each of four dying entries of one cache looks up its neighbours and adds an
/// entry.
void expectSurvivesEmptying(const CacheCase& cache, const std::function<void(Families&)>& empty) {
    Families engine;
    std::vector<Answer> inside;
    for (int number = 0; number < 4; ++number) {
        addEnding(cache, engine, number, [&, number] {
            inside.push_back(request(cache, engine, (number + 1) % 4));
            inside.push_back(request(cache, engine, number + 5));
        });
    }
    empty(engine);
    EXPECT_EQ(inside.size(), 8U);
    for (const Answer& answer : inside) {
        EXPECT_NE(answer, nullptr);
    }
    for (int number = 0; number < 10; ++number) {
        const Answer answer = request(cache, engine, number);
        EXPECT_NE(answer, nullptr);
        EXPECT_EQ(request(cache, engine, number), answer) << "cached again";
    }
}

TEST(EvictionReentrancy, MayUseTheCachesWhileTheyAreFlushed) {
    for (const CacheCase& cache : getAllCaches()) {
        SCOPED_TRACE(cache.name);
        expectSurvivesEmptying(cache, [](Families& engine) { engine.factory->flush(); });
    }
}

TEST(EvictionReentrancy, MayUseTheCachesWhileTheyAreReset) {
    for (const CacheCase& cache : limitedCaches) {
        SCOPED_TRACE(cache.name);
        expectSurvivesEmptying(cache, [](Families& engine) { engine.factory->reset(0, 0); });
    }
}

TEST(EvictionReentrancy, MayEmptyTheCachesWhileTheyAreEmptied) {
    for (const CacheCase& cache : getAllCaches()) {
        SCOPED_TRACE(cache.name);
        Families engine;
        int ends = 0;
        for (int number = 0; number < 4; ++number) {
            addEnding(cache, engine, number, [&, number] {
                ++ends;
                number % 2 == 0 ? engine.factory->flush() : engine.factory->reset(2, 1000);
            });
        }
        engine.factory->flush();
        EXPECT_EQ(ends, 4);
        const Answer answer = request(cache, engine, 1);
        EXPECT_EQ(request(cache, engine, 1), answer);
    }
}

/// Serves each family with a separate font file that runs a function when its last owner releases it.
class EndingLoader : public Testing::CountingLoader {
public:
    std::shared_ptr<const Testing::Bytes>
    loadFont(const NNPtr<const Gfx::FontFaceInfo>& face) const override {
        CountingLoader::loadFont(face);
        return std::shared_ptr<const Testing::Bytes>(new Testing::Bytes(_font),
                                                     [this](const Testing::Bytes* bytes) {
                                                         delete bytes;
                                                         if (const auto once = std::exchange(end, nullptr)) {
                                                             once();
                                                         }
                                                     });
    }

    mutable Call end;

private:
    Testing::Bytes _font = makeTestFont().build();
};

TEST(EvictionReentrancy, OfAFaceMayOpenAnother) {
    const auto loader = std::make_shared<EndingLoader>();
    const FactoryPtr factory = FontFactory::create(loader, "Default Family");
    const auto open = [&](const char* family) {
        return std::shared_ptr<const FontFace>(factory->getFace(Testing::makeFaceInfo(family)));
    };
    factory->reset(3, 0);
    for (const char* const family : {"0", "1", "2"}) {
        open(family);
    }
    std::shared_ptr<const FontFace> added;
    loader->end = [&] { added = open("4"); };
    const auto third = open("3");
    ASSERT_NE(added, nullptr) << "the first face was destroyed, and its file with it";
    EXPECT_EQ(open("3"), third);
    EXPECT_EQ(open("4"), added);
    EXPECT_EQ(added->getBasicMetrics().getCharMap()['A'].glyphIndex, TestGlyph::a);
}

/// Makes paths that run a function when their last owner releases them.
class EndingPathPainter : public Testing::RecordingPainter {
public:
    explicit EndingPathPainter(Call end)
        : _end(std::move(end)) {}

    std::shared_ptr<const Gfx::Path> takePath() override {
        RecordingPainter::takePath();
        return std::shared_ptr<const Gfx::Path>(new Gfx::Path, [end = _end](const Gfx::Path* path) {
            delete path;
            end();
        });
    }

private:
    Call _end;
};

TEST(EvictionReentrancy, OfAPathMayBuildAnother) {
    Families engine;
    const CacheCase outlines = getAllCaches().back();
    std::vector<Answer> built;
    EndingPathPainter painter([&] { built.push_back(request(outlines, engine, 7)); });
    for (const unsigned int glyph : {TestGlyph::a, TestGlyph::x, TestGlyph::underscore}) {
        engine.face->getOutlineGlyphPath(KeyFields().with(&KeyFields::glyph, glyph).makeOutline(), painter);
    }
    engine.factory->flush();
    ASSERT_EQ(built.size(), 3U);
    EXPECT_NE(built.front(), nullptr);
    EXPECT_EQ(request(outlines, engine, 7), request(outlines, engine, 7));
}

} // namespace
} // namespace Vell::FontEngine
