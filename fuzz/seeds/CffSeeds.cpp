#include <fuzz/seeds/Seeds.h>

#include <support/CffFont.h>

namespace Vell::Fuzz {

using Testing::CffFont;

namespace {

CffFont makeBoxes(std::size_t glyphCount) {
    return {{}, std::vector<Bytes>(glyphCount, Testing::makeBoxCharString())};
}

Bytes wrap(const CffFont& outlines, Testing::FontBuilder font) {
    font.setTable("CFF ", outlines.build());
    return signAsCff(font.build());
}

Bytes wrap(const CffFont& outlines) {
    return wrap(outlines, makeBoxFont().omitTable("glyf").omitTable("loca"));
}

/// FreeType never reads the TrueType tables beside the outlines, so nothing corrects them.
Bytes wrapWithShortLoca() {
    constexpr std::size_t lastOffset = 4;
    return moveToEnd(wrap(makeBoxes(30), makeBoxFont()), "loca", lastOffset);
}

} // namespace

std::vector<Seed> makeCffSeeds() {
    return {makeFontSeed("cff", makeBoxes(80).build()), makeFontSeed("cff-wrapped", wrap(makeBoxes(30))),
            makeFontSeed("cff-ends-with-loca", wrapWithShortLoca()),
            makeFontSeed("cff-busy-wrapped", wrap(Testing::makeBusyCffFont(30, 3)))};
}

} // namespace Vell::Fuzz
