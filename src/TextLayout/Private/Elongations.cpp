#include <TextLayout/Private/Elongations.h>

#include <TextLayout/Private/RunClusters.h>
#include <TextLayout/Private/TextCharacters.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace Vell::TextLayout {

namespace {

constexpr std::uint8_t lastRank = 6;

int getJoiningType(char32_t character) {
    return u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_JOINING_TYPE);
}

int getJoiningGroup(char32_t character) {
    return u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_JOINING_GROUP);
}

template <std::size_t count>
bool contains(const int (&groups)[count], int group) {
    return std::find(std::begin(groups), std::end(groups), group) != std::end(groups);
}

/// A letter, or a ligature of several.
struct Letter {
    int firstGroup;
    int lastGroup;
    bool isTatweel;
    bool joinsNext;
    bool isOfWord; ///< false for spaces, digits and punctuation
};

Letter readLetter(std::string_view text, const RunCluster& cluster) {
    const char32_t first = decodeAt(text, cluster.begin);
    char32_t last = first;
    for (std::uint32_t at = cluster.begin; at < cluster.end; at = findCharacterBehind(text, at)) {
        const char32_t character = decodeAt(text, at);
        last = getJoiningType(character) == U_JT_TRANSPARENT ? last : character;
    }
    const int type = getJoiningType(last);
    return {getJoiningGroup(first), getJoiningGroup(last), last == U'\u0640' || first == U'\u0640',
            type == U_JT_DUAL_JOINING || type == U_JT_JOIN_CAUSING,
            type != U_JT_NON_JOINING || u_isalpha(static_cast<UChar32>(first)) != 0};
}

/// Ranks the joints of words. Whether a letter has its final form shows only behind it.
class WordJoints {
public:
    explicit WordJoints(std::vector<Elongation>& found)
        : _found(found) {}

    /// Takes a letter that joins the one before it at `offset`, if that is given.
    void add(const Letter& letter, std::optional<std::uint32_t> offset) {
        decide(!offset);
        _offset = offset;
        _before = _last;
        _last = letter;
    }

    /// Ends a word.
    void finish() {
        decide(true);
        if (_best) {
            _found.push_back(*_best);
        }
        _best.reset();
        _last.reset();
    }

private:
    /// Ranks the joint in front of the last letter.
    void decide(bool isFinal) {
        if (!_offset) {
            return;
        }
        const std::optional<std::uint8_t> rank = findRank(*_before, *_last, isFinal);
        if (rank && (!_best || *rank <= _best->rank)) {
            _best = Elongation{*_offset, *rank};
        }
        _offset.reset();
    }

    static std::optional<std::uint8_t> findRank(const Letter& before, const Letter& letter, bool isFinal) {
        constexpr int sequences[] = {U_JG_SEEN, U_JG_SAD};
        constexpr int round[] = {U_JG_TEH_MARBUTA, U_JG_TEH_MARBUTA_GOAL, U_JG_HEH, U_JG_HEH_GOAL, U_JG_DAL};
        constexpr int tall[] = {U_JG_ALEF, U_JG_TAH, U_JG_LAM, U_JG_KAF, U_JG_SWASH_KAF, U_JG_GAF};
        constexpr int low[] = {U_JG_REH, U_JG_YEH, U_JG_FARSI_YEH};
        constexpr int others[] = {U_JG_WAW, U_JG_AIN, U_JG_QAF, U_JG_FEH};
        const int group = letter.firstGroup;
        if (before.lastGroup == U_JG_LAM && group == U_JG_ALEF) {
            return std::nullopt; // they look like a ligature in every font
        }
        if (before.isTatweel || letter.isTatweel) {
            return std::uint8_t{0};
        }
        if (contains(sequences, before.lastGroup)) {
            return std::uint8_t{1};
        }
        if (isFinal && contains(round, group)) {
            return std::uint8_t{2};
        }
        if (isFinal && contains(tall, group)) {
            return std::uint8_t{3};
        }
        if (isFinal && before.lastGroup == U_JG_BEH && contains(low, group)) {
            return std::uint8_t{4};
        }
        return isFinal && contains(others, group) ? std::uint8_t{5} : lastRank;
    }

    std::vector<Elongation>& _found;
    std::optional<Letter> _before;
    std::optional<Letter> _last;
    std::optional<std::uint32_t> _offset; // of the joint between them
    std::optional<Elongation> _best;
};

/// Whether the letters of a cluster stand on the base line, where the elongation will.
bool standsOnBaseLine(const ShapedText& text, const RunCluster& cluster) {
    const auto begin = text.getGlyphs().begin();
    return std::all_of(begin + cluster.glyphBegin, begin + cluster.glyphEnd,
                       [](const ShapedGlyph& glyph) { return glyph.advance <= 0 || glyph.yOffset == 0; });
}

bool allowsElongation(const ShapedText& text, const RunCluster& cluster) {
    const auto begin = text.getGlyphs().begin();
    return cluster.glyphBegin != cluster.glyphEnd &&
           std::all_of(begin + cluster.glyphBegin, begin + cluster.glyphEnd,
                       [](const ShapedGlyph& glyph) { return glyph.allowsElongation; });
}

void addRun(const ShapedText& text, const ShapedRun& run, WordJoints& joints) {
    RunCluster cluster = getFirstCluster(text, run);
    bool mayJoin = false; // the one before
    while (true) {
        const Letter letter = readLetter(text.getText(), cluster);
        const bool isLow = standsOnBaseLine(text, cluster);
        const bool isJoined = mayJoin && isLow && allowsElongation(text, cluster);
        if (letter.isOfWord) {
            joints.add(letter, isJoined ? std::make_optional(cluster.begin) : std::nullopt);
        } else {
            joints.finish();
        }
        mayJoin = isLow && letter.joinsNext;
        if (cluster.end >= run.end) {
            break;
        }
        cluster = getNextCluster(text, run, cluster);
    }
    joints.finish();
}

} // namespace

std::vector<Elongation> findElongations(const ShapedText& text, const std::vector<std::uint32_t>& runs) {
    std::vector<Elongation> found;
    WordJoints joints(found);
    for (const std::uint32_t index : runs) {
        const ShapedRun& run = text.getRuns()[index];
        if (run.script == ScriptCode("Arab") && run.isRightToLeft()) {
            addRun(text, run, joints);
        }
    }
    return found;
}

} // namespace Vell::TextLayout
