#include <TextLayout/Private/BreakIterator.h>

#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/IcuErrors.h>

#include <array>
#include <atomic>
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

/// An iterator with rules that are known already. ubrk_clone() is not used because it writes through a null
/// pointer if memory is short.
UBreakIterator* open(UBreakIteratorType type) {
    const Rules& rules = getRules(type);
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* const opened =
        ubrk_openBinaryRules(rules.data(), static_cast<std::int32_t>(rules.size()), nullptr, 0, &status);
    throwIfFailed("ubrk_openBinaryRules", status);
    return opened;
}

/// Iterators that wait for the next text, because opening one takes as long as to divide a line. Never
/// released, as the rules.
using Waiting = std::array<std::atomic<UBreakIterator*>, 4>;
std::array<Waiting, UBRK_LINE + 1> waitingIterators;

static_assert(UBRK_CHARACTER < UBRK_LINE && UBRK_WORD < UBRK_LINE, "the index of the last type");

UBreakIterator* take(UBreakIteratorType type) {
    for (std::atomic<UBreakIterator*>& waiting : waitingIterators[type]) {
        if (UBreakIterator* const taken = waiting.exchange(nullptr, std::memory_order_acquire)) {
            return taken;
        }
    }
    return open(type);
}

void giveBack(UBreakIteratorType type, UBreakIterator* iterator) {
    for (std::atomic<UBreakIterator*>& waiting : waitingIterators[type]) {
        UBreakIterator* none = nullptr;
        if (waiting.compare_exchange_strong(none, iterator, std::memory_order_release,
                                            std::memory_order_relaxed)) {
            return;
        }
    }
    ubrk_close(iterator);
}

} // namespace

BreakIterator::BreakIterator(UBreakIteratorType type)
    : _type(type)
    , _iterator(take(type)) {}

BreakIterator::~BreakIterator() {
    if (_hasFailed) {
        ubrk_close(_iterator);
    } else {
        giveBack(_type, _iterator);
    }
}

void BreakIterator::setText(const std::u16string& units) {
    UErrorCode status = U_ZERO_ERROR;
    _hasFailed = true;
    ubrk_setText(_iterator, units.data(), static_cast<std::int32_t>(units.size()), &status);
    throwIfFailed("ubrk_setText", status);
    _hasFailed = false;
}

bool BreakIterator::next() {
    const AllocationWatch watch;
    _boundary = ubrk_next(_iterator);
    _hasFailed = watch.hasFailed();
    if (_hasFailed) { // or else a word of a dictionary may be missing
        throw std::bad_alloc();
    }
    return _boundary != UBRK_DONE;
}

bool BreakIterator::isHard() const {
    const std::int32_t status = ubrk_getRuleStatus(_iterator);
    return status >= UBRK_LINE_HARD && status < UBRK_LINE_HARD_LIMIT;
}

bool BreakIterator::isBehindWord() const {
    return ubrk_getRuleStatus(_iterator) >= UBRK_WORD_NONE_LIMIT;
}

} // namespace Vell::TextLayout
