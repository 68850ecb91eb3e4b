#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/PartShaper.h>
#include <TextLayout/Private/RunToShape.h>
#include <TextLayout/Private/ShapePlan.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Private/TextToShape.h>
#include <TextLayout/Public/ShapedText.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Shapes a run word by word. A word is what stands between characters that stand for themselves, such as
/// spaces. Words come from the cache. Those that follow each other and are not there are shaped at once,
/// because a call of HarfBuzz for each of them takes longer. Requires the lock of the caches.
class WordShaper {
public:
    struct Context {
        const TextToShape& text;
        PartShaper& parts;
    };

    /// The arguments must outlive the object.
    WordShaper(const Context& context, const RunToShape& run, ShapePlan& plan);

    /// Appends the glyphs of the run in visual order.
    void append();

private:
    using Word = TextPart;
    using Words = boost::container::small_vector<Word, 16>;

    static constexpr std::uint32_t longBlock = 8192; // bytes; more words at once are not shaped any faster

    struct Character {
        char32_t code;
        std::uint32_t begin;
        std::uint32_t end;
    };

    /// Appends the characters that stand for themselves, from `position` up to what it returns: the end of
    /// the run, or the beginning of a word.
    std::uint32_t appendFree(std::uint32_t position);

    /// Appends the word that begins at `position`, and all that must be shaped together with it. Returns its
    /// end.
    std::uint32_t appendWord(std::uint32_t position);

    /// The character 0 at the end of the text.
    Character read(std::uint32_t position) const;

    /// The glyph of a character that is a cluster by itself and that nothing around it changes. HarfBuzz
    /// takes all marks into the cluster before them, also those that begin a grapheme cluster.
    const FreeGlyph* findFree(const Character& character) const;
    const FreeGlyph* findFree(const Character& character, const Character& next) const;

    bool mayBeFree(char32_t character) const;

    void append(const FreeGlyph& free, const Character& character, const Character& next);

    Word findWord(std::uint32_t begin) const;

    std::uint32_t findNextThatMayBeFree(std::uint32_t position) const;

    WordKey makeKey(const Word& word) const;

    const std::vector<ShapedGlyph>* find(const Word& word) const;

    void appendCached(const std::vector<ShapedGlyph>& cached, const Word& word);

    /// Shapes a word and the missing words behind it, with what stands between them. Returns the end of all
    /// that it appended.
    std::uint32_t shapeFrom(const Word& word);

    void shape(const Words& words);

    void execute(const Word& block);

    /// For runs with a word whose glyphs depend on other words.
    void shapeWholeRun();

    Words listWords() const;

    /// Whether there is a dotted circle, which HarfBuzz puts under marks without a base. It may take a broken
    /// syllable for the one 15 syllables before it, so what it does to a word depends on the whole run.
    bool hasCircle(std::size_t first) const;

    bool staysDecomposed(const Word& block) const;

    bool joinsOutside(const Word& word) const;

    bool beginsWithJoiner(const Word& word) const;

    /// Puts the words of a block into the cache.
    void remember(const Words& words, std::size_t first);

    void put(const Word& word, std::vector<ShapedGlyph> glyphs) const;

    /// Whether the word looks the same in all texts: HarfBuzz lets letters join those beyond the ends of a
    /// run, and puts a circle under a mark that begins a text.
    bool mayRemember(const Word& word) const;

    /// Glyphs that are appended from here on stand left of what was appended before, if the run goes to the
    /// left.
    void beginBlock();

    /// Turns the order of the blocks, but not that within them.
    void turn(std::size_t first);

    ShapingCaches& _caches;
    std::string_view _text;
    const ByteSet& _clusterStarts;
    std::vector<ShapedGlyph>& _glyphs;
    PartShaper& _parts;
    const RunToShape& _run;
    ShapePlan& _plan;
    bool _hasFreeGlyphs;
    bool _hasFreeSpaces;
    bool _needsWholeRun = false;
    boost::container::small_vector<std::size_t, 32> _blocks; // where they begin, in a run to the left
};

} // namespace Vell::TextLayout
