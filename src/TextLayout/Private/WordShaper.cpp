#include <TextLayout/Private/WordShaper.h>

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/RunDependence.h>
#include <TextLayout/Private/TextCharacters.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

WordShaper::WordShaper(const TextToShape& text, const RunToShape& run, ShapePlan& plan)
    : _caches(text.caches)
    , _text(text.text)
    , _clusterStarts(text.clusterStarts)
    , _glyphs(text.glyphs)
    , _parts(text.parts)
    , _run(run)
    , _plan(plan)
    , _lock(text.caches.mutex)
    , _isOneWord(runsAgainstScript(run.properties))
    , _hasFreeGlyphs(!_isOneWord && plan.hasFreeGlyphs())
    , _hasFreeSpaces(_hasFreeGlyphs && plan.findFreeGlyph(U' ') != nullptr) {}

void WordShaper::append() {
    const std::size_t first = _glyphs.size();
    _needsWholeRun = staysDecomposed(_run.part);
    for (std::uint32_t position = _run.part.begin; position != _run.part.end && !_needsWholeRun;) {
        position = appendNext(position);
    }
    if (_needsWholeRun) {
        _glyphs.resize(first);
        shapeWholeRun();
    } else if (_run.isRightToLeft()) {
        turn(first);
    }
}

std::uint32_t WordShaper::appendNext(std::uint32_t position) {
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

WordShaper::Character WordShaper::read(std::uint32_t position) {
    if (position != _last.begin) {
        const char* end = _text.data() + position;
        const bool isAtEnd = position == _text.size();
        const char32_t code = isAtEnd ? 0 : decodeUtf8(end, _text.data() + _text.size());
        _last = {code, position, static_cast<std::uint32_t>(end - _text.data())};
    }
    return _last;
}

const FreeGlyph* WordShaper::findFree(const Character& character) {
    const bool isCandidate = character.code == U' ' ? _hasFreeSpaces : isIdeographic(character.code);
    return isCandidate && _clusterStarts.test(character.end) && !isMark(read(character.end).code)
               ? _plan.findFreeGlyph(character.code)
               : nullptr;
}

bool WordShaper::isIdeographic(char32_t character) const {
    constexpr char32_t firstIdeographic = 0x2E80;
    return character >= firstIdeographic && _hasFreeGlyphs && getTraits(character).isIdeographOrKana();
}

void WordShaper::append(const FreeGlyph& free, const Character& character) {
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

WordShaper::Word WordShaper::findWord(std::uint32_t begin) {
    std::uint32_t end = begin;
    do {
        end = static_cast<std::uint32_t>(_clusterStarts.next(end));
    } while (end < _run.part.end && findFree(read(end)) == nullptr);
    return {begin, std::min(end, _run.part.end)};
}

WordKey WordShaper::makeKey(const Word& word) const {
    return {_plan.getId(), _text.substr(word.begin, word.end - word.begin)};
}

const std::vector<ShapedGlyph>* WordShaper::find(const Word& word) const {
    return joinsOutside(_text, _run.part, word) ? nullptr : _caches.words.find(makeKey(word));
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

void WordShaper::shape(const std::vector<Word>& words) {
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
    _lock.unlock();
    _parts.append(PartShaper::Settings{_plan, _plan.getKey().features}, block);
    _lock.lock();
}

void WordShaper::shapeWholeRun() {
    const std::size_t first = _glyphs.size();
    execute(_run.part);
    if (!hasCircle(first) && !staysDecomposed(_run.part)) {
        remember(listWords(), first);
    }
}

std::vector<WordShaper::Word> WordShaper::listWords() {
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

bool WordShaper::hasCircle(std::size_t first) const {
    const std::uint16_t circle = _plan.getDottedCircle();
    return circle != 0 && std::any_of(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end(),
                                      [circle](const ShapedGlyph& glyph) { return glyph.index == circle; });
}

bool WordShaper::staysDecomposed(const Word& block) const {
    return _plan.mayDecompose() && TextLayout::staysDecomposed(_text, block);
}

bool WordShaper::beginsWithJoiner(const Word& word) const {
    return _plan.hasSyllables() && isJoinerAt(_text, word.begin);
}

void WordShaper::remember(const std::vector<Word>& words, std::size_t first) {
    const auto block = _glyphs.begin() + static_cast<std::ptrdiff_t>(first);
    if (_run.isRightToLeft()) {
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
    if (_run.isRightToLeft()) {
        std::reverse(block, _glyphs.end());
    }
}

void WordShaper::put(const Word& word, std::vector<ShapedGlyph> glyphs) const {
    for (ShapedGlyph& glyph : glyphs) {
        glyph.cluster -= word.begin;
    }
    if (_run.isRightToLeft()) {
        std::reverse(glyphs.begin(), glyphs.end());
    }
    _caches.words.put(makeKey(word), word.end - word.begin, std::move(glyphs));
}

bool WordShaper::mayRemember(const Word& word) const {
    return !isMark(decodeAt(_text, word.begin)) && !beginsWithJoiner(word) &&
           !joinsOutside(_text, _run.part, word);
}

void WordShaper::beginBlock() {
    if (_run.isRightToLeft()) {
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
