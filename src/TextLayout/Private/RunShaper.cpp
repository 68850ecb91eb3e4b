#include <TextLayout/Private/RunShaper.h>

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/RunDependence.h>
#include <TextLayout/Private/TextCharacters.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <utility>

namespace Vell::TextLayout {

namespace {

bool isRightToLeft(const RunToShape& run) {
    return HB_DIRECTION_IS_BACKWARD(run.properties.direction);
}

} // namespace

/// Shapes a run word by word. A word is what stands between characters that stand for themselves, such as
/// spaces.
class RunShaper::WordWise {
public:
    WordWise(RunShaper& shaper, const RunToShape& run, ShapePlan& plan)
        : _caches(shaper._caches)
        , _text(shaper._text)
        , _clusterStarts(shaper._clusterStarts)
        , _glyphs(shaper._glyphs)
        , _parts(shaper._parts)
        , _run(run)
        , _plan(plan)
        , _lock(shaper._caches.mutex)
        , _isOneWord(runsAgainstScript(run.properties))
        , _hasFreeGlyphs(!_isOneWord && plan.hasFreeGlyphs())
        , _hasFreeSpaces(_hasFreeGlyphs && plan.findFreeGlyph(U' ') != nullptr) {}

    void append() {
        const std::size_t first = _glyphs.size();
        _needsWholeRun = staysDecomposed(_run.part);
        for (std::uint32_t position = _run.part.begin; position != _run.part.end && !_needsWholeRun;) {
            position = appendNext(position);
        }
        if (_needsWholeRun) {
            _glyphs.resize(first);
            shapeWholeRun();
        } else if (isRightToLeft(_run)) {
            turn(first);
        }
    }

private:
    using Word = TextPart;

    static constexpr std::uint32_t longBlock = 8192; // bytes; more words at once are not shaped any faster

    struct Character {
        char32_t code;
        std::uint32_t begin;
        std::uint32_t end;
    };

    /// Appends what begins at `position`: a character that stands for itself, or a word and all that must be
    /// shaped together with it. Returns its end.
    std::uint32_t appendNext(std::uint32_t position) {
        const Character character = read(position);
        if (const FreeGlyph* const free = findFree(character)) {
            append(*free, character);
            return character.end;
        }
        const Word word = findWord(position);
        const std::vector<ShapedGlyph>* const cached = find(word);
        if (cached == nullptr) {
            return shapeFrom(word);
        }
        appendCached(*cached, word);
        return word.end;
    }

    /// Decodes each character once if they are read one after the other. At the end of the text there is
    /// none.
    Character read(std::uint32_t position) {
        if (position != _last.begin) {
            const char* end = _text.data() + position;
            const bool isAtEnd = position == _text.size();
            const char32_t code = isAtEnd ? 0 : decodeUtf8(end, _text.data() + _text.size());
            _last = {code, position, static_cast<std::uint32_t>(end - _text.data())};
        }
        return _last;
    }

    /// The glyph of a character that is a cluster by itself and that nothing around it changes. HarfBuzz
    /// takes all marks into the cluster before them, also those that begin a grapheme cluster.
    const FreeGlyph* findFree(const Character& character) {
        const bool isCandidate = character.code == U' ' ? _hasFreeSpaces : isIdeographic(character.code);
        return isCandidate && _clusterStarts.test(character.end) && !isMark(read(character.end).code)
                   ? _plan.findFreeGlyph(character.code)
                   : nullptr;
    }

    bool isIdeographic(char32_t character) const {
        constexpr char32_t firstIdeographic = 0x2E80;
        return character >= firstIdeographic && _hasFreeGlyphs && getTraits(character).isIdeographOrKana();
    }

    void append(const FreeGlyph& free, const Character& character) {
        beginBlock();
        ShapedGlyph glyph{};
        glyph.cluster = character.begin;
        glyph.advance = free.advance;
        glyph.index = free.index;
        glyph.isSpaced = true;
        glyph.isLast = read(character.end).code != character.code || character.end == _text.size();
        glyph.isSafeToBreak = true;
        _glyphs.push_back(glyph);
    }

    Word findWord(std::uint32_t begin) {
        std::uint32_t end = begin;
        do {
            end = static_cast<std::uint32_t>(_clusterStarts.next(end));
        } while (end < _run.part.end && findFree(read(end)) == nullptr);
        return {begin, std::min(end, _run.part.end)};
    }

    WordKey makeKey(const Word& word) const {
        return {_plan.getId(), _text.substr(word.begin, word.end - word.begin)};
    }

    const std::vector<ShapedGlyph>* find(const Word& word) const {
        return joinsOutside(_text, _run.part, word) ? nullptr : _caches.words.find(makeKey(word));
    }

    void appendCached(const std::vector<ShapedGlyph>& cached, const Word& word) {
        beginBlock();
        const std::size_t first = _glyphs.size();
        _parts.checkGlyphCount(first + cached.size());
        _glyphs.insert(_glyphs.end(), cached.begin(), cached.end());
        for (auto glyph = _glyphs.begin() + static_cast<std::ptrdiff_t>(first); glyph != _glyphs.end();
             ++glyph) {
            glyph->cluster += word.begin;
        }
    }

    /// Shapes a word and the missing words behind it, with what stands between them. Returns the end of all
    /// that it appended.
    std::uint32_t shapeFrom(const Word& word) {
        std::vector<Word> missing{word};
        std::vector<ShapedGlyph> nextGlyphs; // of the first word that is not missing
        Word next{0, 0};
        const std::uint32_t end = _run.part.end;
        for (std::uint32_t position = word.end; position != end && position - word.begin < longBlock;) {
            const Character character = read(position);
            if (findFree(character) != nullptr) {
                position = character.end;
                continue;
            }
            const Word candidate = findWord(position);
            if (const auto* const cached = find(candidate)) {
                next = candidate;
                nextGlyphs = *cached;
                break;
            }
            missing.push_back(candidate);
            position = candidate.end;
        }
        shape(missing);
        if (_needsWholeRun) {
            return end;
        }
        if (nextGlyphs.empty()) {
            return missing.back().end;
        }
        for (std::uint32_t position = missing.back().end; position != next.begin;) {
            const Character character = read(position);
            append(*findFree(character), character);
            position = character.end;
        }
        appendCached(nextGlyphs, next);
        return next.end;
    }

    void shape(const std::vector<Word>& words) {
        const Word block{words.front().begin, words.back().end};
        beginBlock();
        const std::size_t first = _glyphs.size();
        execute(block);
        _needsWholeRun = hasCircle(first) || staysDecomposed(block) ||
                         std::any_of(words.begin(), words.end(),
                                     [this](const Word& word) { return beginsWithJoiner(word); });
        if (!_needsWholeRun) {
            remember(words, first);
        }
    }

    void execute(const Word& block) {
        _lock.unlock();
        _parts.append(PartShaper::Settings{_plan, _plan.getKey().features}, block);
        _lock.lock();
    }

    /// For runs with a word whose glyphs depend on other words.
    void shapeWholeRun() {
        const std::size_t first = _glyphs.size();
        execute(_run.part);
        if (!hasCircle(first) && !staysDecomposed(_run.part)) {
            remember(listWords(), first);
        }
    }

    std::vector<Word> listWords() {
        std::vector<Word> words;
        for (std::uint32_t position = _run.part.begin; position != _run.part.end;) {
            const Character character = read(position);
            if (findFree(character) != nullptr) {
                position = character.end;
            } else {
                position = words.emplace_back(findWord(position)).end;
            }
        }
        return words;
    }

    /// Whether there is a dotted circle, which HarfBuzz puts under marks without a base. It may take a broken
    /// syllable for the one 15 syllables before it, so what it does to a word depends on the whole run.
    bool hasCircle(std::size_t first) const {
        const std::uint16_t circle = _plan.getDottedCircle();
        return circle != 0 &&
               std::any_of(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end(),
                           [circle](const ShapedGlyph& glyph) { return glyph.index == circle; });
    }

    bool staysDecomposed(const Word& block) const {
        return _plan.mayDecompose() && TextLayout::staysDecomposed(_text, block);
    }

    bool beginsWithJoiner(const Word& word) const {
        return _plan.hasSyllables() && isJoinerAt(_text, word.begin);
    }

    /// Puts the words of a block into the cache.
    void remember(const std::vector<Word>& words, std::size_t first) {
        const auto block = _glyphs.begin() + static_cast<std::ptrdiff_t>(first);
        if (isRightToLeft(_run)) {
            std::reverse(block, _glyphs.end());
        }
        auto begin = block;
        for (const Word& word : words) {
            const auto isBefore = [](std::uint32_t offset) {
                return [offset](const ShapedGlyph& glyph) { return glyph.cluster < offset; };
            };
            begin = std::find_if_not(begin, _glyphs.end(), isBefore(word.begin));
            const auto end = std::find_if_not(begin, _glyphs.end(), isBefore(word.end));
            if (begin != end && begin->cluster == word.begin &&
                _caches.words.hasRoom(word.end - word.begin, static_cast<std::size_t>(end - begin)) &&
                mayRemember(word)) {
                put(word, {begin, end});
            }
            begin = end;
        }
        if (isRightToLeft(_run)) {
            std::reverse(block, _glyphs.end());
        }
    }

    void put(const Word& word, std::vector<ShapedGlyph> glyphs) const {
        for (ShapedGlyph& glyph : glyphs) {
            glyph.cluster -= word.begin;
        }
        if (isRightToLeft(_run)) {
            std::reverse(glyphs.begin(), glyphs.end());
        }
        _caches.words.put(makeKey(word), word.end - word.begin, std::move(glyphs));
    }

    /// Whether the word looks the same in all texts: HarfBuzz lets letters join those beyond the ends of a
    /// run, and puts a circle under a mark that begins a text.
    bool mayRemember(const Word& word) const {
        return !isMark(decodeAt(_text, word.begin)) && !beginsWithJoiner(word) &&
               !joinsOutside(_text, _run.part, word);
    }

    /// Glyphs that are appended from here on stand left of what was appended before, if the run goes to the
    /// left.
    void beginBlock() {
        if (isRightToLeft(_run)) {
            _blocks.push_back(_glyphs.size());
        }
    }

    /// Turns the order of the blocks, but not that within them.
    void turn(std::size_t first) {
        const auto at = [&](std::size_t index) {
            return _glyphs.begin() + static_cast<std::ptrdiff_t>(index);
        };
        for (std::size_t i = 0; i < _blocks.size(); ++i) {
            std::reverse(at(_blocks[i]), i + 1 < _blocks.size() ? at(_blocks[i + 1]) : _glyphs.end());
        }
        std::reverse(at(first), _glyphs.end());
    }

    ShapingCaches& _caches;
    std::string_view _text;
    const ByteSet& _clusterStarts;
    std::vector<ShapedGlyph>& _glyphs;
    PartShaper& _parts;
    const RunToShape& _run;
    ShapePlan& _plan;
    std::unique_lock<std::mutex> _lock;
    bool _isOneWord;
    bool _hasFreeGlyphs;
    bool _hasFreeSpaces;
    bool _needsWholeRun = false;
    Character _last{0, std::numeric_limits<std::uint32_t>::max(), 0};
    std::vector<std::size_t> _blocks; // where they begin, in a run to the left
};

RunShaper::RunShaper(ShapingCaches& caches, std::string_view text, const ByteSet& clusterStarts,
                     std::vector<ShapedGlyph>& glyphs)
    : _caches(caches)
    , _text(text)
    , _clusterStarts(clusterStarts)
    , _glyphs(glyphs)
    , _parts(text, clusterStarts, caches.scratch, glyphs) {}

void RunShaper::append(const RunToShape& run) {
    const SelectedFeatures& selected = run.features.select(run.part);
    if (!selected.holdForAll) {
        appendPartlySet(run);
    } else if (const KnownPlan& known = findPlan(run, selected); known.plan) {
        WordWise(*this, run, *known.plan).append();
    } else {
        appendUnshaped(run);
    }
}

const RunShaper::KnownPlan& RunShaper::findPlan(const RunToShape& run, const SelectedFeatures& selected) {
    const auto found = std::find_if(_knownPlans.begin(), _knownPlans.end(), [&](const KnownPlan& known) {
        return known.face == &run.face && known.features == &run.features &&
               known.selection == selected.version &&
               hb_segment_properties_equal(&known.properties, &run.properties) != 0;
    });
    if (found != _knownPlans.end()) {
        return *found;
    }
    KnownPlan& place = _knownPlans[_oldestPlan++ % _knownPlans.size()];
    return place = makePlan(run, selected);
}

RunShaper::KnownPlan RunShaper::makePlan(const RunToShape& run, const SelectedFeatures& selected) {
    KnownPlan known{&run.face, run.properties, &run.features, selected.version, _caches.getFont(run.face),
                    nullptr};
    if (known.font->canShape()) {
        known.plan = &_caches.getPlan(*known.font, {run.properties, selected.settings});
    }
    return known;
}

/// Shapes a run with settings for parts of it. Its words are not cached.
void RunShaper::appendPartlySet(const RunToShape& run) {
    const std::shared_ptr<ShapingFont> font = _caches.getFont(run.face);
    if (!font->canShape()) {
        appendUnshaped(run);
        return;
    }
    const auto findSettings = [&](const TextPart& piece) -> PartShaper::Settings {
        const std::vector<hb_feature_t>& settings = run.features.select(piece).settings;
        return {_caches.getPlan(*font, {run.properties, settings}), settings};
    };
    _parts.append(PartShaper::FindSettings(findSettings), run.part);
}

void RunShaper::appendUnshaped(const RunToShape& run) {
    const Gfx::CharMap& charMap = run.face.getBasicMetrics().getCharMap();
    const auto unitsPerEM = static_cast<float>(run.face.getHandle()->units_per_EM);
    const std::size_t first = _glyphs.size();
    for (std::uint32_t position = run.part.begin; position != run.part.end;) {
        const std::uint32_t behind = findCharacterBehind(_text, position);
        const auto entry = charMap[decodeAt(_text, position)];
        const float advance = entry.advance * unitsPerEM;
        ShapedGlyph glyph{};
        glyph.cluster = position;
        glyph.advance = std::isfinite(advance) ? static_cast<std::int32_t>(std::lround(advance)) : 0;
        glyph.index = entry.glyphIndex;
        glyph.isSpaced = true;
        glyph.isLast = isOtherCharacter(_text, position, behind);
        glyph.isSafeToBreak = true;
        _glyphs.push_back(glyph);
        position = behind;
    }
    if (isRightToLeft(run)) {
        std::reverse(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end());
    }
}

} // namespace Vell::TextLayout
