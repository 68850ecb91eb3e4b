#include <TextLayout/Private/WordBoundaries.h>

#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/Utf16Text.h>

#include <unicode/ubrk.h>

#include <memory>
#include <string>

namespace Vell::TextLayout {

namespace {

using WordIterator = std::unique_ptr<UBreakIterator, decltype(&ubrk_close)>;

WordIterator openWordIterator(const std::u16string& units) {
    constexpr const char* noLanguage = "";
    UErrorCode status = U_ZERO_ERROR;
    WordIterator words(
        ubrk_open(UBRK_WORD, noLanguage, units.data(), static_cast<std::int32_t>(units.size()), &status),
        &ubrk_close);
    throwIfFailed("ubrk_open", status);
    return words;
}

} // namespace

WordBoundaries::WordBoundaries(std::string_view text)
    : begins(static_cast<std::uint32_t>(text.size()))
    , ends(static_cast<std::uint32_t>(text.size())) {
    const std::u16string units = toUtf16(text);
    const WordIterator words = openWordIterator(units);
    ByteCursor bytes(text);
    std::uint32_t begin = 0;
    for (std::int32_t unit = ubrk_next(words.get()); unit != UBRK_DONE; unit = ubrk_next(words.get())) {
        const auto end = static_cast<std::uint32_t>(bytes.moveTo(static_cast<std::size_t>(unit)));
        if (ubrk_getRuleStatus(words.get()) >= UBRK_WORD_NONE_LIMIT) {
            begins.insert(begin);
            ends.insert(end);
        }
        begin = end;
    }
}

} // namespace Vell::TextLayout
