#include <FontLoaders/Private/Installed/PlatformFonts.h>

#include <utility>

namespace Vell::FontLoaders::Internal {

PlatformFonts::PlatformFonts(std::string defaultFaceName)
    : _defaultFaceName(std::move(defaultFaceName)) {}

PlatformFonts::~PlatformFonts() {
    const std::lock_guard<std::mutex> lock(getMutex());
    _fonts.reset();
}

std::optional<FontFilePlace> PlatformFonts::findFile(const FontBytes& bytes) const {
    const std::lock_guard<std::mutex> lock(getMutex());
    return _files.find(bytes);
}

/// All loaders share one mutex: each has its own configuration, but behind them fontconfig has caches and
/// tables of names that are global to the process.
std::mutex& PlatformFonts::getMutex() {
    static std::mutex mutex;
    return mutex;
}

InstalledFonts& PlatformFonts::getFonts() {
    if (!_fonts) {
        _fonts.emplace(_defaultFaceName, _files);
    }
    return *_fonts;
}

void PlatformFonts::reportRemovals() noexcept {
    if (_fonts) {
        _removalCount.store(_fonts->getRemovalCount(), std::memory_order_release);
    }
}

} // namespace Vell::FontLoaders::Internal
