#include <FontEngine/Renderer/LayoutModel.h>

#include <support/FontBuilder.h>

#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <iterator>
#include <map>
#include <utility>

namespace Vell::FontEngine {

namespace {

constexpr const char* ownFamily = "Test Sans";
constexpr const char* symbolFamily = "Symbols";

constexpr unsigned int snowman = 0x2603;
constexpr unsigned int rocket = 0x1F680;
constexpr unsigned int scissors = 0x2702;
constexpr unsigned int grin = 0x1F600;
constexpr unsigned int ideograph = 0x20000;
constexpr unsigned int alpha = 0x3B1;        // its block has no family
constexpr unsigned int unassigned = 0x40000; // in no block

/// The characters and their advances, in the order of their glyphs from 1 on.
struct Advance {
    unsigned int codePoint;
    unsigned int units;
};

std::vector<Advance> listOwnAdvances() {
    std::vector<Advance> advances = {{'_', 500}, {' ', 250}, {grin, 1117}, {ideograph, 1000}};
    for (unsigned int i = 0; i < 26; ++i) {
        advances.push_back({'A' + i, 401 + 13 * i});
        advances.push_back({'a' + i, 303 + 7 * i});
    }
    return advances;
}

std::vector<Advance> listSymbolAdvances() {
    return {{rocket, 733}, {snowman, 411}};
}

Testing::FontGlyph makeGlyph(const Advance& advance) {
    if (advance.codePoint == ' ') {
        return {advance.units, {}, {}};
    }
    const int right = static_cast<int>(advance.units) - 30;
    const int bottom = advance.codePoint == '_' ? -100 : 0;
    return Testing::makeBoxGlyph(advance.units, 20, bottom, right, bottom + right / 2);
}

Testing::FontBuilder makeFont(const char* family, unsigned int unitsPerEm, unsigned int missingUnits,
                              const std::vector<Advance>& advances) {
    Testing::FontBuilder font(family);
    font.setUnitsPerEm(unitsPerEm);
    font.setNotdef(Testing::makeBoxGlyph(missingUnits, 10, 0, 200, 300));
    for (const Advance& advance : advances) {
        font.map(advance.codePoint, font.addGlyph(makeGlyph(advance)));
    }
    return font;
}

/// Builds the text's own font, with a glyph whose part does not exist.
Testing::Bytes buildOwnFont() {
    Testing::FontBuilder font = makeFont(ownFamily, 1000, 470, listOwnAdvances());
    constexpr unsigned int noGlyph = 999;
    font.map('!', font.addGlyph({300, {}, {}, {{noGlyph}}}));
    return font.build();
}

ModelGlyph findIn(const char* family, float unitsPerEm, float missingUnits,
                  const std::vector<Advance>& advances, unsigned int codePoint) {
    for (std::size_t i = 0; i < advances.size(); ++i) {
        if (advances[i].codePoint == codePoint) {
            return {family, i + 1, static_cast<float>(advances[i].units) / unitsPerEm};
        }
    }
    return {family, 0, missingUnits / unitsPerEm};
}

/// The pieces of texts: their bytes, and the characters that they decode to.
struct Piece {
    std::string bytes;
    std::vector<unsigned int> codePoints;
};

const std::vector<Piece>& getPieces() {
    static const std::vector<Piece> pieces = {
        {"_", {'_'}},
        {"__", {'_', '_'}},
        {" ", {' '}},
        {"\xE2\x98\x83", {snowman}},
        {"\xF0\x9F\x9A\x80", {rocket}},
        {"\xE2\x9C\x82", {scissors}},
        {"\xF0\x9F\x98\x80", {grin}},
        {"\xF0\xA0\x80\x80", {ideograph}},
        {"\xCE\xB1", {alpha}},
        {"\xF1\x80\x80\x80", {unassigned}},
        {"\xED\xA0\xBD", {0xFFFD, 0xFFFD, 0xFFFD}}, // half a surrogate pair
        {"\xF0\x9F\x98", {0xFFFD}},                 // truncated
        {"\xC0\xAF", {0xFFFD, 0xFFFD}},             // overlong
    };
    return pieces;
}

Piece makeRandomPiece(std::mt19937& random) {
    if (random() % 2 == 0) {
        const std::vector<Piece>& pieces = getPieces();
        return pieces[random() % pieces.size()];
    }
    const auto letter = static_cast<unsigned int>((random() % 2 == 0 ? 'A' : 'a') + random() % 26);
    return {std::string(1, static_cast<char>(letter)), {letter}};
}

template <class T, std::size_t count>
T choose(std::mt19937& random, const T (&values)[count]) {
    return values[random() % count];
}

/// A float from 0 to `limit`, in steps that are not powers of two.
float chooseUpTo(std::mt19937& random, float limit) {
    return limit * static_cast<float>(random() % 100003) / 100003.0F;
}

} // namespace

ModelFonts::ModelFonts(std::shared_ptr<Testing::CountingLoader> loader)
    : _factory(FontFactory::create(loader, ownFamily)) {
    loader->setFont(ownFamily, false, false, buildOwnFont());
    loader->setFont(symbolFamily, false, false,
                    makeFont(symbolFamily, 500, 290, listSymbolAdvances()).build());
    for (const unsigned int served : {snowman, rocket, scissors}) {
        loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(served), symbolFamily);
    }
}

ModelGlyph ModelFonts::findOwn(unsigned int codePoint) const {
    static const std::vector<Advance> advances = listOwnAdvances();
    return findIn(ownFamily, 1000.0F, 470.0F, advances, codePoint);
}

ModelGlyph ModelFonts::find(unsigned int codePoint) const {
    static const std::vector<Advance> advances = listSymbolAdvances();
    const bool isServed = codePoint == snowman || codePoint == rocket || codePoint == scissors;
    return isServed ? findIn(symbolFamily, 500.0F, 290.0F, advances, codePoint) : findOwn(codePoint);
}

ModelText makeRandomText(std::mt19937& random) {
    ModelText text;
    Piece piece = makeRandomPiece(random);
    for (auto count = random() % 16; count > 0; --count) {
        text.bytes += piece.bytes;
        text.codePoints.insert(text.codePoints.end(), piece.codePoints.begin(), piece.codePoints.end());
        if (random() % 4 != 0) { // else the same again
            piece = makeRandomPiece(random);
        }
    }
    return text;
}

Testing::ExtFontInfoPtr ModelSetting::makeExtFontInfo() const {
    return Testing::makeExtFontInfo(Testing::makeFontInfo(Testing::makeFaceInfo(ownFamily), size, position),
                                    letterSpacing);
}

ModelSetting makeRandomSetting(std::mt19937& random) {
    using Position = Gfx::TextPositionType;
    ModelSetting setting{};
    setting.size = choose(random, {8.0F, 10.0F, 13.7F, 4.0F + chooseUpTo(random, 30.0F)});
    setting.position =
        choose(random, {Position::Normal, Position::Normal, Position::Superscript, Position::Subscript});
    setting.letterSpacing = choose(random, {0.0F, 0.3F, -4.0F, chooseUpTo(random, 9.0F) - 6.0F});
    setting.ratio = choose(random, {0.5F, 1.0F, 1.25F, 1.4999F, 1.5F, 2.0F});
    const float scale = 0.3F + chooseUpTo(random, 2.0F);
    setting.scale = choose<cinder::Vec2<float>>(random, {{1.0F, 1.0F}, {scale, scale}, {scale, 1.5F}});
    setting.flipVertically = random() % 4 == 0;
    return setting;
}

} // namespace Vell::FontEngine
