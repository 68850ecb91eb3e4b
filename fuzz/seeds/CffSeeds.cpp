#include <fuzz/seeds/Seeds.h>

#include <support/CffFont.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vell::Fuzz {

using Testing::CffFont;

namespace {

CffFont makeBoxes(std::size_t glyphCount) {
    return {{}, std::vector<Bytes>(glyphCount, Testing::makeBoxCharString())};
}

Bytes wrap(const CffFont& outlines) {
    Testing::FontBuilder font = makeBoxFont();
    font.setTable("CFF ", outlines.build());
    Bytes file = font.omitTable("glyf").omitTable("loca").build();
    constexpr unsigned char signature[] = {'O', 'T', 'T', 'O'};
    std::copy(std::begin(signature), std::end(signature), file.begin());
    return file;
}

} // namespace

std::vector<Seed> makeCffSeeds() {
    return {makeFontSeed("cff", makeBoxes(80).build()), makeFontSeed("cff-wrapped", wrap(makeBoxes(30))),
            makeFontSeed("cff-busy-wrapped", wrap(Testing::makeBusyCffFont(30, 3)))};
}

} // namespace Vell::Fuzz
