// A factory that is asked for what a coverage fallback answers draws the face that has the characters.

#include <support/ClientDescriptions.h>
#include <support/FontBuilder.h>
#include <support/FontSandbox.h>

#include <FontEngine/FontEngine.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {
namespace {

using Testing::FontBuilder;
using Testing::FontSandbox;

struct Style {
    const char* file;
    bool bold;
    bool italic;
};

constexpr Style allStyles[] = {{"regular.ttf", false, false},
                               {"bold.ttf", true, false},
                               {"italic.ttf", false, true},
                               {"both.ttf", true, true}};
constexpr unsigned int styleCount = 4;

/// Installs one family with the styles in one set, of which those in another set have the letter A.
void installStyles(const FontSandbox& sandbox, unsigned int installed, unsigned int covering) {
    for (unsigned int i = 0; i < styleCount; ++i) {
        if ((installed >> i & 1U) != 0) {
            FontBuilder font("Own");
            font.setStyle(allStyles[i].bold, allStyles[i].italic);
            font.map((covering >> i & 1U) != 0 ? 'A' : 'B', font.addGlyph(Testing::FontGlyph()));
            sandbox.write(allStyles[i].file, font.build());
        }
    }
}

void expectFactoryDrawsAnswer(const FontFactory& factory, const Style& wanted) {
    const auto fallback = FontLoaders::createPlatformCoverageFallback(factory.getFontLoader());
    const auto text = Testing::makeClientFaceInfo("Own", wanted.bold, wanted.italic);
    const auto found = fallback->findFace({U"A", text});
    ASSERT_TRUE(found);
    const auto data = factory.getFaceData(found->drawnFace);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->bytes.get(), factory.getFontLoader().loadFont(found->face).get());
    const auto usual = factory.getFaceData(text);
    if (usual && usual->bytes.get() == data->bytes.get()) {
        EXPECT_EQ(*found->drawnFace, *text) << "the factory draws the text's own style with the same face";
    }
}

} // namespace

TEST(CoverageStyles, AreDrawnByTheFaceThatHasTheCharacters) {
    for (unsigned int installed = 1; installed < 1U << styleCount; ++installed) {
        for (unsigned int covering = 1; covering <= installed; ++covering) {
            if ((covering & ~installed) != 0) {
                continue;
            }
            const FontSandbox sandbox;
            installStyles(sandbox, installed, covering);
            const auto factory = FontFactory::create("Own");
            for (const Style& wanted : allStyles) {
                SCOPED_TRACE(std::to_string(installed) + " " + std::to_string(covering) + " " + wanted.file);
                expectFactoryDrawsAnswer(*factory, wanted);
            }
        }
    }
}

} // namespace Vell::FontEngine
