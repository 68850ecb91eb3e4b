#pragma once

#include <FontLoaders/Private/Installed/FontFileCache.h>
#include <FontLoaders/Private/Installed/InstalledFonts.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/CallableRef.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Vell::FontLoaders::Internal {

/// The installed fonts of one platform loader, which shares them with the fallback that was made for it. They
/// are read on first use. Any thread may use any number of these objects: requests are served one after the
/// other.
class PlatformFonts {
public:
    explicit PlatformFonts(std::string defaultFaceName);
    PlatformFonts(const PlatformFonts&) = delete;
    PlatformFonts& operator=(const PlatformFonts&) = delete;
    ~PlatformFonts();

    /// Returns what `work(fonts)` returns, which no other thread's work overlaps. Work must not ask again.
    template <class Work>
    auto ask(const Work& work) {
        const std::lock_guard<std::mutex> lock(getMutex());
        const RemovalReport report(*this);
        return work(getFonts());
    }

    /// Where the bytes come from. Does not read the fonts.
    std::optional<FontFilePlace> findFile(const FontBytes& bytes) const;

    /// InstalledFonts::getRemovalCount, without waiting for other threads' work.
    std::uint64_t getRemovalCount() const { return _removalCount.load(std::memory_order_acquire); }

private:
    /// Publishes the number of removals at the end of some work, even if it throws.
    struct RemovalReport {
        explicit RemovalReport(PlatformFonts& owner)
            : fonts(owner) {}
        RemovalReport(const RemovalReport&) = delete;
        RemovalReport& operator=(const RemovalReport&) = delete;
        ~RemovalReport() { fonts.reportRemovals(); }

        PlatformFonts& fonts;
    };

    static std::mutex& getMutex();
    InstalledFonts& getFonts();
    void reportRemovals() noexcept;

    const std::string _defaultFaceName;
    std::atomic<std::uint64_t> _removalCount = 0;
    // Guarded by the mutex:
    FontFileCache _files;
    std::optional<InstalledFonts> _fonts;
};

/// The fonts of a loader that createPlatformDefaultFontLoader has made, also behind variation loaders. Null
/// for all other loaders.
std::shared_ptr<PlatformFonts> findPlatformFonts(const FontLoader& loader);

} // namespace Vell::FontLoaders::Internal
