#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>

namespace Vell::TextLayout {

/// Values by code, 256 to a page. A page is made when one of its values is wanted for the first time. Any
/// number of threads may use it at once. It does not release the pages by itself, so that it may be global.
template <class Value, std::size_t codeCount>
class LazyPages {
public:
    static constexpr std::size_t pageSize = 256;
    using Page = std::array<Value, pageSize>;

    /// Null if it is not made yet. `number` is that of the page.
    const Page* find(std::size_t number) const { return _pages[number].load(std::memory_order_acquire); }

    /// Keeps a page, unless another thread was faster. Returns the one that is kept.
    const Page& put(std::size_t number, std::unique_ptr<const Page> page) {
        const Page* known = nullptr;
        const bool isFirst = _pages[number].compare_exchange_strong(
            known, page.get(), std::memory_order_acq_rel, std::memory_order_acquire);
        return isFirst ? *page.release() : *known;
    }

    /// Releases all pages. Nobody may use them any more.
    void clear() noexcept {
        for (std::atomic<const Page*>& page : _pages) {
            delete page.exchange(nullptr);
        }
    }

private:
    std::array<std::atomic<const Page*>, codeCount / pageSize> _pages{};
};

} // namespace Vell::TextLayout
