// The totals of the caches after a failure, judged by what their limits let them keep.

#include <FontEngine/Faults/Operations.h>

#include <support/FailingAllocations.h>
#include <support/spy/FreeTypeMemory.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <new>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::FailingAllocations;
using Testing::FreeTypeMemory;
using Testing::FreeTypeSpy;

constexpr cinder::ColorAT<unsigned char> color(10, 20, 30, 255);

using Request = std::function<void(World&, unsigned int number)>;

/// A cache with room for exactly two entries, and requests for its entries 0, 1 and 2 that do not affect the
/// other entries.
struct LimitedCache {
    std::function<void(World&)> limit;
    Request request;
    std::function<std::size_t(World&)> countMisses; ///< since the world was made
};

/// Expects that the cache holds exactly the two entries used last: both are hits, and a third evicts one.
void expectRoomForTwo(const LimitedCache& cache, World& world) {
    cache.request(world, 0);
    cache.request(world, 1);
    const std::size_t misses = cache.countMisses(world);
    cache.request(world, 0);
    cache.request(world, 1);
    EXPECT_EQ(cache.countMisses(world), misses) << "something else takes room";
    cache.request(world, 2);
    EXPECT_EQ(cache.countMisses(world), misses + 1);
    cache.request(world, 0);
    EXPECT_EQ(cache.countMisses(world), misses + 2) << "something takes no room";
}

/// Makes every allocation of the request for entry 0 fail in turn, by operator new and inside FreeType.
void expectCorrectTotalsAfterEveryFailure(const LimitedCache& cache) {
    FreeTypeMemory memory;
    for (const bool isFreeType : {false, true}) {
        bool hasFailed = true;
        for (std::size_t number = 1; hasFailed; ++number) {
            SCOPED_TRACE((isFreeType ? "FreeType's allocation " : "allocation ") + std::to_string(number));
            World world;
            world.getFace();
            cache.limit(world);
            cache.request(world, 1);
            {
                const FreeTypeSpy::Pause pause; // it allocates, too
                const FailingAllocations failing(isFreeType ? 0 : number);
                memory.failAt(isFreeType ? number : 0);
                try {
                    cache.request(world, 0);
                } catch (const std::bad_alloc&) {
                } catch (const FontLoaders::FreeTypeException&) {
                }
                hasFailed = isFreeType ? memory.hasFailed() : failing.hasFailed();
                memory.failAt(0);
            }
            expectRoomForTwo(cache, world);
        }
    }
}

BitmapGlyphInfo makeBitmapKey(unsigned int number) {
    return KeyFields()
        .with(&KeyFields::glyph, TestGlyph::underscore)
        .with(&KeyFields::mode, FT_RENDER_MODE_LCD)
        .with(&KeyFields::unicode, '_')
        .with(&KeyFields::size, 40.0F)
        .with(&KeyFields::offset, 64 * number)
        .with(&KeyFields::ratio, 2.0F)
        .makeBitmap();
}

std::shared_ptr<const FT_BitmapGlyphRec_> renderBitmap(const Engine& engine, unsigned int number) {
    return engine.getFace()->getBitmapGlyph(makeBitmapKey(number), false);
}

unsigned long getWeight(unsigned int number) {
    const auto glyph = renderBitmap(Engine(), number);
    return static_cast<unsigned long>(glyph->bitmap.pitch) * glyph->bitmap.rows + 48;
}

TEST(CacheTotals, OfBitmapsStayCorrect) {
    const unsigned long weight = getWeight(0);
    ASSERT_EQ(getWeight(1), weight);
    ASSERT_EQ(getWeight(2), weight);
    const FreeTypeSpy spy;
    expectCorrectTotalsAfterEveryFailure(
        {[&](World& world) { world.factory->reset(0, 2 * weight); },
         [](World& world, unsigned int number) { renderBitmap(world, number); },
         [&](World&) { return spy.countCalls("FT_Load_Glyph"); }});
}

/// Colours images of bitmaps that outlive every world. The identity of an image shows whether it was a hit.
class Images {
public:
    Images() {
        for (unsigned int number = 0; number < 3; ++number) {
            _glyphs.emplace_back(renderBitmap(Engine(), number), cinder::Vec2<float>(),
                                 makeBitmapKey(number));
        }
    }

    std::shared_ptr<const BitmapGlyphImageWithDeleter> paint(const Engine& engine, unsigned int number) {
        auto image = engine.factory->getGlyphBitmapWithSubpixels(_glyphs.at(number), color);
        _misses += image == _known[number].lock() ? 0 : 1;
        _known[number] = image;
        return image;
    }

    std::size_t countMisses() const { return _misses; }

private:
    std::vector<BitmapGlyph> _glyphs;
    std::map<unsigned int, std::weak_ptr<const BitmapGlyphImageWithDeleter>> _known;
    std::size_t _misses = 0;
};

TEST(CacheTotals, OfImagesStayCorrect) {
    Images images;
    const auto image = images.paint(Engine(), 0);
    const unsigned long weight = image->rows * 4UL * static_cast<unsigned long>(image->pitch);
    ASSERT_EQ(images.paint(Engine(), 1)->width, image->width);
    ASSERT_EQ(images.paint(Engine(), 2)->width, image->width);
    expectCorrectTotalsAfterEveryFailure(
        {[=](World& world) { world.factory->reset(0, 2 * weight); },
         [&](World& world, unsigned int number) { images.paint(world, number); },
         [&](World&) { return images.countMisses(); }});
}

const char* const families[] = {"Test Sans", "First", "Second"};

void installFamilies(World& world) {
    static const auto font = std::make_shared<const Testing::Bytes>(makeTestFont().build());
    for (const char* const family : families) {
        world.loader->setFont(family, false, false, font);
    }
    world.factory->reset(2, 0);
}

TEST(CacheTotals, OfFacesStayCorrect) {
    const FreeTypeSpy spy;
    expectCorrectTotalsAfterEveryFailure(
        {installFamilies, [](World& world, unsigned int number) { world.getFace(families[number]); },
         [&](World&) { return spy.countCalls("FT_Get_First_Char"); }});
}

TEST(CacheTotals, OfFontFilesStayCorrect) {
    expectCorrectTotalsAfterEveryFailure({installFamilies,
                                          [](World& world, unsigned int number) {
                                              world.factory->getFaceDataBytes(
                                                  Testing::makeFaceInfo(families[number]));
                                          },
                                          [](World& world) { return world.loader->countCalls("loadFont"); }});
}

TEST(CacheTotals, AndContentsAreUnchangedIfAResetFails) {
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        World world;
        renderBitmap(world, 0);
        renderBitmap(world, 1);
        const FreeTypeSpy spy;
        world.loader->clearCalls();
        {
            const FreeTypeSpy::Pause pause;
            const FailingAllocations failing(number);
            try {
                world.factory->reset(1, 1);
            } catch (const std::bad_alloc&) {
            }
            hasFailed = failing.hasFailed();
        }
        renderBitmap(world, 0);
        renderBitmap(world, 1);
        renderBitmap(world, 0);
        world.factory->getFaceDataBytes(Testing::makeFaceInfo());
        EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), hasFailed ? 0U : 3U) << "allocation " << number;
        EXPECT_EQ(spy.countCalls("FT_New_Library"), hasFailed ? 0U : 1U) << "allocation " << number;
        EXPECT_EQ(world.loader->countCalls(), hasFailed ? 0U : 1U) << "allocation " << number;
    }
}

} // namespace
} // namespace Vell::FontEngine
