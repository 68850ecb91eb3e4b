#include <TextLayout/Private/BreakIterator.h>

#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/IcuErrors.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

namespace Vell::TextLayout {

namespace {

using Rules = std::vector<std::uint8_t>;

Rules readRules(UBreakIteratorType type) {
    constexpr const char* noLanguage = "";
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> iterator(
        ubrk_open(type, noLanguage, nullptr, 0, &status), &ubrk_close);
    throwIfFailed("ubrk_open", status);
    const std::int32_t size = ubrk_getBinaryRules(iterator.get(), nullptr, 0, &status);
    throwIfFailed("ubrk_getBinaryRules", status);
    Rules rules(static_cast<std::size_t>(size));
    ubrk_getBinaryRules(iterator.get(), rules.data(), size, &status);
    throwIfFailed("ubrk_getBinaryRules", status);
    return rules;
}

/// Never released: another thread may use the rules while the process ends.
template <UBreakIteratorType type>
const Rules& getRules() {
    static const Rules* const rules = new Rules(readRules(type)); // NOLINT(cppcoreguidelines-owning-memory)
    return *rules;
}

const Rules& getRules(UBreakIteratorType type) {
    switch (type) {
    case UBRK_LINE:
        return getRules<UBRK_LINE>();
    case UBRK_WORD:
        return getRules<UBRK_WORD>();
    default:
        return getRules<UBRK_CHARACTER>();
    }
}

/// An iterator with rules that are known already, which is as fast as a copy. ubrk_clone() is not used
/// because it writes through a null pointer if memory is short.
UBreakIterator* open(UBreakIteratorType type) {
    const Rules& rules = getRules(type);
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* const opened =
        ubrk_openBinaryRules(rules.data(), static_cast<std::int32_t>(rules.size()), nullptr, 0, &status);
    throwIfFailed("ubrk_openBinaryRules", status);
    return opened;
}

} // namespace

BreakIterator::BreakIterator(UBreakIteratorType type)
    : _iterator(open(type), &ubrk_close) {}

void BreakIterator::setText(const std::u16string& units) {
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(_iterator.get(), units.data(), static_cast<std::int32_t>(units.size()), &status);
    throwIfFailed("ubrk_setText", status);
}

bool BreakIterator::next() {
    const AllocationWatch watch;
    _boundary = ubrk_next(_iterator.get());
    if (watch.hasFailed()) { // or else a word of a dictionary may be missing
        throw std::bad_alloc();
    }
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
