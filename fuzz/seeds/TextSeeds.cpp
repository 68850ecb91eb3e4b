#include <fuzz/seeds/Seeds.h>

#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;

namespace {

/// Measures in the order of the script: size, spacing, width, angle, translation x and y, ratio,
/// scale x and y.
using Measures = std::vector<unsigned int>;

Seed makeSeed(std::string name, unsigned int flags, const Measures& measures, const std::string& text) {
    ByteWriter writer;
    writer.addU8(flags);
    for (const unsigned int measure : measures) {
        writer.addU16(measure);
    }
    writer.addText(text);
    return {std::move(name), writer.getBytes()};
}

constexpr unsigned int one = 0x0100;

Measures makeUsual() {
    return {12 * one, 0, 50 * one, 0, 3 * one, 4 * one, oneFold, oneFold, oneFold};
}

Measures replaceAll(unsigned int measure) {
    return Measures(makeUsual().size(), measure);
}

} // namespace

std::vector<Seed> makeTextSeeds() {
    const std::string text = "a few words_ ___ \xD0\x96 \xF0\x9F\x98\x80";
    std::vector<Seed> seeds = {
        makeSeed("empty", 0, makeUsual(), ""),
        makeSeed("words", 0, makeUsual(), text),
        makeSeed("flipped", 1, makeUsual(), text),
        makeSeed("fallback", 2, makeUsual(), "\xCE\xA9 \xE4\xB8\x80 A \xEF\xBF\xBD"),
        makeSeed("fallback-missing", 6, makeUsual(), "a \xCE\xA9"),
        makeSeed("bold-superscript", 0x18, makeUsual(), text),
        makeSeed("subscript", 0x20, makeUsual(), text),
        makeSeed("broken", 0, makeUsual(),
                 "\xFF\xC0\x80 \xED\xA0\x80\xF4\x90\x80\x80 \xE4\xB8 x\xF0\x9F\x98"),
        makeSeed("zeros", 0, makeUsual(), std::string(3, '\0')),
        makeSeed("turned", 0, {12 * one, one, 50 * one, one, 0, 0, 2 * oneFold, oneFold, 2 * oneFold}, text),
        makeSeed("long", 0, makeUsual(), std::string(2000, 'a') + std::string(500, '_'))};
    for (unsigned int absurd = 0; absurd < 23; ++absurd) {
        seeds.push_back(makeSeed("absurd-" + std::to_string(absurd), 0, replaceAll(0xC000 + absurd), text));
        for (std::size_t place = 0; place < makeUsual().size(); ++place) {
            Measures measures = makeUsual();
            measures[place] = 0xC000 + absurd;
            seeds.push_back(makeSeed("absurd-" + std::to_string(absurd) + "-" + std::to_string(place), 2,
                                     measures, text));
        }
    }
    return seeds;
}

} // namespace Vell::Fuzz
