#include <TextLayout/Private/StylesInUse.h>

#include <utility>

namespace Vell::TextLayout {

namespace {

std::shared_ptr<PreparedStyle> prepare(const FontEngine::FontFactory& factory, ShapingCaches& caches,
                                       const TextStyle& style, CachesLock& lock) {
    std::shared_ptr<PreparedStyle> made;
    {
        const Unlocked unlocked(lock);
        made = std::make_shared<PreparedStyle>(factory, style);
    }
    std::shared_ptr<PreparedStyle> retired = caches.put(made);
    const Unlocked unlocked(lock);
    retired.reset();
    return made;
}

StyleInUse find(const FontEngine::FontFactory& factory, ShapingCaches& caches, const TextStyle& style,
                CachesLock& lock) {
    lock.lock();
    if (auto known = caches.findStyle(style, factory.getResetCount())) {
        return {std::move(known), true};
    }
    lock.unlock();
    const NNPtr<const Gfx::FontInfo> fontInfo = style.font->getFontInfo();
    lock.lock();
    if (auto known = caches.findEqualStyle(style, *fontInfo, factory.getResetCount())) {
        return {std::move(known), false};
    }
    return {prepare(factory, caches, style, lock), true};
}

} // namespace

StylesInUse prepareStyles(const FontEngine::FontFactory& factory, ShapingCaches& caches,
                          const StyleGroups& groups, CachesLock& lock) {
    StylesInUse styles;
    for (const StyleGroups::Span& span : groups.getSpans()) {
        if (span.group == styles.size()) {
            if (lock.owns_lock()) {
                lock.unlock();
            }
            styles.push_back(find(factory, caches, groups.getStyle(span.style), lock));
        }
    }
    return styles;
}

} // namespace Vell::TextLayout
