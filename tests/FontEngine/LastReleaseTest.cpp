// The last owners of everything that a factory returned release it at the same time, each on its own thread.

#include <FontEngine/FactoryStress.h>

#include <support/Threads.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <vector>

namespace Vell::FontEngine {
namespace {

/// A factory and the objects that it returned. Each thread releases one of them.
struct SharedObjects {
    std::optional<StressEngine> engine = StressEngine();
    std::shared_ptr<const FontFace> bitmapFace = engine->getFont(0, 40.0F).getFace();
    std::shared_ptr<const FontFace> outlineFace = engine->getFont(1, 40.0F).getFace();
    std::optional<Font> font = engine->getFont(0, 40.0F);
    std::optional<BitmapGlyphRun> run = engine->layOutBitmaps(0, 40.0F);
    std::optional<BitmapGlyphRun> sharedRun = run;
    std::optional<OutlineGlyphRun> outlines = layOutOutlines();
    std::vector<std::shared_ptr<const BitmapGlyphImageWithDeleter>> images = paintImages();

private:
    OutlineGlyphRun layOutOutlines() const {
        Testing::RecordingPainter painter;
        return engine->layOutOutlines(1, 40.0F, painter);
    }
    std::vector<std::shared_ptr<const BitmapGlyphImageWithDeleter>> paintImages() const {
        std::vector<std::shared_ptr<const BitmapGlyphImageWithDeleter>> painted;
        for (const BitmapGlyph& glyph : run->getGlyphs()) {
            if (glyph.getData()->bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
                painted.push_back(font->getFace()->getGlyphBitmapWithSubpixels(glyph, {9, 8, 7, 255}));
            }
        }
        return painted;
    }
};

template <class T>
std::uint64_t digest(const T& value) {
    Digest result;
    result.add(value);
    return result.get();
}

/// Functions that each read an object a last time and release it.
std::vector<std::function<std::uint64_t()>> listEndings(SharedObjects& all) {
    return {[&all] {
                all.engine.reset();
                return std::uint64_t(0);
            },
            [&all] {
                const float height = all.bitmapFace->getBasicMetrics().getHeight();
                all.bitmapFace.reset();
                return digest(height);
            },
            [&all] {
                const std::uint64_t size = all.outlineFace->getFaceData().bytes->size();
                all.outlineFace.reset();
                return size;
            },
            [&all] {
                const float width = all.font->getAscent();
                all.font.reset();
                return digest(width);
            },
            [&all] {
                const std::uint64_t pixels = digest(*all.run);
                all.run.reset();
                return pixels;
            },
            [&all] {
                const std::uint64_t pixels = digest(*all.sharedRun);
                all.sharedRun.reset();
                return pixels;
            },
            [&all] {
                const std::uint64_t segments = digest(*all.outlines);
                all.outlines.reset();
                return segments;
            },
            [&all] {
                const std::uint64_t pixels = digest(*all.images.at(0)) ^ digest(*all.images.at(1));
                all.images.clear();
                return pixels;
            }};
}

/// Weak references to everything that must be destroyed at the end.
std::vector<std::weak_ptr<const void>> watch(const SharedObjects& all) {
    return {all.engine->getFactory().weak_from_this(),
            all.bitmapFace,
            all.outlineFace,
            all.run->getGlyphs().at(0).getData(),
            all.images.at(0),
            all.outlines->getGlyphs().at(0).getPath()};
}

std::vector<std::uint64_t> endAlone() {
    SharedObjects all;
    std::vector<std::uint64_t> results;
    for (const auto& end : listEndings(all)) {
        results.push_back(end());
    }
    return results;
}

TEST(LastRelease, ReadsTheSameOnSeparateThreadsAndLeaksNothing) {
    const std::vector<std::uint64_t> expected = endAlone();
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same order in every run
    for (int round = 0; round < 60; ++round) {
        SharedObjects all;
        const auto watched = watch(all);
        const auto endings = listEndings(all);
        const auto shift = static_cast<unsigned int>(random() % endings.size());
        std::vector<std::uint64_t> results(endings.size());
        const auto count = static_cast<unsigned int>(endings.size());
        Testing::runOnThreads(count, [&](unsigned int thread) {
            const unsigned int index = (thread + shift) % count;
            results[index] = endings[index]();
        });
        ASSERT_EQ(results, expected);
        for (const auto& reference : watched) {
            EXPECT_TRUE(reference.expired());
        }
    }
}

TEST(LastRelease, MayDestroyAFactoryWhileItsFacesRequestGlyphs) {
    const StressEngine alone;
    const std::uint64_t expected = digest(alone.layOutBitmaps(0, 20.0F));
    for (int round = 0; round < 40; ++round) {
        std::optional<StressEngine> engine = StressEngine();
        const BitmapGlyphRun run = engine->layOutBitmaps(0, 20.0F);
        const std::shared_ptr<const FontFace> face = engine->getFont(0, 20.0F).getFace();
        std::vector<std::size_t> served(4);
        Testing::runOnThreads(5, [&](unsigned int thread) {
            if (thread == 4) {
                engine.reset();
                return;
            }
            for (const BitmapGlyph& glyph : run.getGlyphs()) {
                const auto bitmap = face->getBitmapGlyph(glyph.getInfo(), false);
                served[thread] += bitmap == nullptr || digest(*bitmap) == digest(*glyph.getData()) ? 1 : 0;
            }
        });
        for (const std::size_t count : served) {
            ASSERT_EQ(count, run.getGlyphs().size()) << "the right glyph, or none after the end";
        }
        ASSERT_EQ(digest(run), expected);
        ASSERT_EQ(face->getBitmapGlyph(run.getGlyphs().at(0).getInfo(), false), nullptr);
    }
}

} // namespace
} // namespace Vell::FontEngine
