#include <TextLayout/Private/WordShaper.h>

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/RunDependence.h>
#include <TextLayout/Private/TextCharacters.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr char32_t firstIdeographic = 0x2E80;
constexpr unsigned char firstIdeographicLead = 0xE2; // of its UTF-8

} // namespace

WordShaper::WordShaper(const Context& context, const RunToShape& run, ShapePlan& plan)
    : _caches(context.text.caches)
    , _text(context.text.text)
    , _clusterStarts(context.text.clusterStarts)
    , _glyphs(context.text.glyphs)
    , _parts(context.parts)
    , _run(run)
    , _plan(plan)
    , _hasFreeGlyphs(!plan.runsAgainstScript() && plan.hasFreeGlyphs())
    , _hasFreeSpaces(_hasFreeGlyphs && plan.findFreeGlyph(U' ') != nullptr) {}

void WordShaper::append() {
    const std::size_t first = _glyphs.size();
    _needsWholeRun = staysDecomposed(_run.part);
    const std::uint32_t end = _run.part.end;
    for (std::uint32_t position = _run.part.begin; position != end && !_needsWholeRun;) {
        position = appendFree(position);
        if (position != end) {
            position = appendWord(position);
        }
    }
    if (_needsWholeRun) {
        _glyphs.resize(first);
        shapeWholeRun();
    } else if (_run.isRightToLeft) {
        turn(first);
    }
}

std::uint32_t WordShaper::appendFree(std::uint32_t position) {
    Character character = read(position);
    while (position != _run.part.end && mayBeFree(character.code)) {
        const Character next = read(character.end);
        const FreeGlyph* const free = findFree(character, next);
        if (free == nullptr) {
            break;
        }
        append(*free, character, next);
        character = next;
        position = next.begin;
    }
    return position;
}

std::uint32_t WordShaper::appendWord(std::uint32_t position) {
    const Word word = findWord(position);
    const std::vector<ShapedGlyph>* const cached = find(word);
    if (cached == nullptr) {
        return shapeFrom(word);
    }
    appendCached(*cached, word);
    return word.end;
}

WordShaper::Character WordShaper::read(std::uint32_t position) const {
    if (position == _text.size()) {
        return {0, position, position};
    }
    const char* end = _text.data() + position;
    const char32_t code = decodeNext(end, _text.data() + _text.size());
    return {code, position, static_cast<std::uint32_t>(end - _text.data())};
}

const FreeGlyph* WordShaper::findFree(const Character& character) const {
    return mayBeFree(character.code) ? findFree(character, read(character.end)) : nullptr;
}

const FreeGlyph* WordShaper::findFree(const Character& character, const Character& next) const {
    return _clusterStarts.test(next.begin) && !isMark(next.code) ? _plan.findFreeGlyph(character.code)
                                                                 : nullptr;
}

bool WordShaper::mayBeFree(char32_t character) const {
    if (character == U' ') {
        return _hasFreeSpaces;
    }
    return character >= firstIdeographic && _hasFreeGlyphs && getTraits(character).isIdeographOrKana();
}

void WordShaper::append(const FreeGlyph& free, const Character& character, const Character& next) {
    beginBlock();
    ShapedGlyph glyph{};
    glyph.cluster = character.begin;
    glyph.advance = free.advance;
    glyph.index = free.index;
    glyph.isSpaced = true;
    glyph.isLast = next.code != character.code || next.begin == _text.size();
    glyph.isSafeToBreak = true;
    _glyphs.push_back(glyph);
}

WordShaper::Word WordShaper::findWord(std::uint32_t begin) const {
    const std::uint32_t limit = _run.part.end;
    std::uint32_t end = _hasFreeGlyphs ? findCharacterBehind(_text, begin) : limit;
    while ((end = findNextThatMayBeFree(end)) != limit &&
           !(_clusterStarts.test(end) && findFree(read(end)) != nullptr)) {
        ++end;
    }
    return {begin, end};
}

/// Finds ideographs only in the scripts in which they are common: elsewhere they may stand in words.
std::uint32_t WordShaper::findNextThatMayBeFree(std::uint32_t position) const {
    const std::string_view rest = _text.substr(position, _run.part.end - position);
    const auto mayBegin = [](char byte) {
        return byte == ' ' || static_cast<unsigned char>(byte) >= firstIdeographicLead;
    };
    const std::size_t found =
        _plan.mayHaveIdeographs()
            ? static_cast<std::size_t>(std::find_if(rest.begin(), rest.end(), mayBegin) - rest.begin())
            : std::min(rest.find(' '), rest.size());
    return position + static_cast<std::uint32_t>(found);
}

WordKey WordShaper::makeKey(const Word& word) const {
    return {_plan.getId(), _text.substr(word.begin, word.end - word.begin)};
}

const std::vector<ShapedGlyph>* WordShaper::find(const Word& word) const {
    return joinsOutside(word) ? nullptr : _caches.words.find(makeKey(word));
}

void WordShaper::appendCached(const std::vector<ShapedGlyph>& cached, const Word& word) {
    beginBlock();
    const std::size_t first = _glyphs.size();
    _parts.checkGlyphCount(first + cached.size());
    _glyphs.insert(_glyphs.end(), cached.begin(), cached.end());
    for (auto glyph = _glyphs.begin() + static_cast<std::ptrdiff_t>(first); glyph != _glyphs.end(); ++glyph) {
        glyph->cluster += word.begin;
    }
}

std::uint32_t WordShaper::shapeFrom(const Word& word) {
    Words missing{word};
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
    appendFree(missing.back().end);
    appendCached(nextGlyphs, next);
    return next.end;
}

void WordShaper::shape(const Words& words) {
    const Word block{words.front().begin, words.back().end};
    beginBlock();
    const std::size_t first = _glyphs.size();
    execute(block);
    _needsWholeRun =
        hasCircle(first) || staysDecomposed(block) ||
        std::any_of(words.begin(), words.end(), [this](const Word& word) { return beginsWithJoiner(word); });
    if (!_needsWholeRun) {
        remember(words, first);
    }
}

void WordShaper::execute(const Word& block) {
    _parts.append(PartShaper::Settings{_plan, _plan.getKey().features}, block);
}

void WordShaper::shapeWholeRun() {
    const std::size_t first = _glyphs.size();
    execute(_run.part);
    if (!hasCircle(first) && !staysDecomposed(_run.part)) {
        remember(listWords(), first);
    }
}

WordShaper::Words WordShaper::listWords() const {
    Words words;
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

bool WordShaper::hasCircle(std::size_t first) const {
    const std::uint16_t circle = _plan.getDottedCircle();
    return circle != 0 && std::any_of(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end(),
                                      [circle](const ShapedGlyph& glyph) { return glyph.index == circle; });
}

bool WordShaper::staysDecomposed(const Word& block) const {
    return _plan.mayDecompose() && TextLayout::staysDecomposed(_text, block);
}

bool WordShaper::joinsOutside(const Word& word) const {
    return _plan.mayJoin() && TextLayout::joinsOutside(_text, _run.part, word);
}

bool WordShaper::beginsWithJoiner(const Word& word) const {
    return _plan.hasSyllables() && isJoinerAt(_text, word.begin);
}

void WordShaper::remember(const Words& words, std::size_t first) {
    const auto block = _glyphs.begin() + static_cast<std::ptrdiff_t>(first);
    if (_run.isRightToLeft) {
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
    if (_run.isRightToLeft) {
        std::reverse(block, _glyphs.end());
    }
}

void WordShaper::put(const Word& word, std::vector<ShapedGlyph> glyphs) const {
    for (ShapedGlyph& glyph : glyphs) {
        glyph.cluster -= word.begin;
    }
    if (_run.isRightToLeft) {
        std::reverse(glyphs.begin(), glyphs.end());
    }
    _caches.words.put(makeKey(word), word.end - word.begin, std::move(glyphs));
}

bool WordShaper::mayRemember(const Word& word) const {
    return !isMark(decodeAt(_text, word.begin)) && !beginsWithJoiner(word) && !joinsOutside(word);
}

void WordShaper::beginBlock() {
    if (_run.isRightToLeft) {
        _blocks.push_back(_glyphs.size());
    }
}

void WordShaper::turn(std::size_t first) {
    const auto at = [&](std::size_t index) { return _glyphs.begin() + static_cast<std::ptrdiff_t>(index); };
    for (std::size_t i = 0; i < _blocks.size(); ++i) {
        std::reverse(at(_blocks[i]), i + 1 < _blocks.size() ? at(_blocks[i + 1]) : _glyphs.end());
    }
    std::reverse(at(first), _glyphs.end());
}

} // namespace Vell::TextLayout
