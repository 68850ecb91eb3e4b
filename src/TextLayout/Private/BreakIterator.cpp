#include <TextLayout/Private/BreakIterator.h>

#include <TextLayout/Private/IcuErrors.h>

namespace Vell::TextLayout {

namespace {

/// Never closed: another thread may copy a prototype while the process ends.
template <UBreakIteratorType type>
const UBreakIterator* getPrototype() {
    static const UBreakIterator* const prototype = [] {
        constexpr const char* noLanguage = "";
        UErrorCode status = U_ZERO_ERROR;
        const UBreakIterator* const opened = ubrk_open(type, noLanguage, nullptr, 0, &status);
        throwIfFailed("ubrk_open", status);
        return opened;
    }();
    return prototype;
}

const UBreakIterator* getPrototype(UBreakIteratorType type) {
    switch (type) {
    case UBRK_LINE:
        return getPrototype<UBRK_LINE>();
    case UBRK_WORD:
        return getPrototype<UBRK_WORD>();
    default:
        return getPrototype<UBRK_CHARACTER>();
    }
}

UBreakIterator* copyPrototype(UBreakIteratorType type) {
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* const copy = ubrk_clone(getPrototype(type), &status);
    throwIfFailed("ubrk_clone", status);
    return copy;
}

} // namespace

BreakIterator::BreakIterator(UBreakIteratorType type)
    : _iterator(copyPrototype(type), &ubrk_close) {}

void BreakIterator::setText(const std::u16string& units) {
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(_iterator.get(), units.data(), static_cast<std::int32_t>(units.size()), &status);
    throwIfFailed("ubrk_setText", status);
}

bool BreakIterator::next() {
    _boundary = ubrk_next(_iterator.get());
    return _boundary != UBRK_DONE;
}

bool BreakIterator::isHard() const {
    const std::int32_t status = ubrk_getRuleStatus(_iterator.get());
    return status >= UBRK_LINE_HARD && status < UBRK_LINE_HARD_LIMIT;
}

bool BreakIterator::isBehindWord() const {
    return ubrk_getRuleStatus(_iterator.get()) >= UBRK_WORD_NONE_LIMIT;
}

} // namespace Vell::TextLayout
