#include <TextLayout/Private/BreakIterator.h>

#include <TextLayout/Private/IcuErrors.h>

namespace Vell::TextLayout {

namespace {

UBreakIterator* openIterator(UBreakIteratorType type, const std::u16string& units) {
    constexpr const char* noLanguage = "";
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* const iterator =
        ubrk_open(type, noLanguage, units.data(), static_cast<std::int32_t>(units.size()), &status);
    throwIfFailed("ubrk_open", status);
    return iterator;
}

} // namespace

BreakIterator::BreakIterator(UBreakIteratorType type, const std::u16string& units)
    : _iterator(openIterator(type, units), &ubrk_close) {}

bool BreakIterator::next() {
    _boundary = ubrk_next(_iterator.get());
    return _boundary != UBRK_DONE;
}

bool BreakIterator::isHard() const {
    const std::int32_t status = ubrk_getRuleStatus(_iterator.get());
    return status >= UBRK_LINE_HARD && status < UBRK_LINE_HARD_LIMIT;
}

} // namespace Vell::TextLayout
