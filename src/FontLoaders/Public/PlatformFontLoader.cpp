#include <FontLoaders/Public/PlatformFontLoader.h>

#include <FontLoaders/Private/Installed/FontFileCache.h>
#include <FontLoaders/Private/Installed/InstalledFonts.h>

#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Vtable.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

#if defined(FONTENGINE_HAS_EMBEDDED_FONT)
// The first byte of the built-in font, and the one past its last.
extern "C" const unsigned char fontengineEmbeddedFontBegin[];
extern "C" const unsigned char fontengineEmbeddedFontEnd[];
#endif

namespace Vell::FontLoaders {

namespace {

/// A copy of the font that is built into this library. Null if the library was built without one.
FontBytes loadEmbeddedFont() {
#if defined(FONTENGINE_HAS_EMBEDDED_FONT)
    return std::make_shared<const std::vector<unsigned char>>(&fontengineEmbeddedFontBegin[0],
                                                              &fontengineEmbeddedFontEnd[0]);
#else
    return nullptr;
#endif
}

/// All loaders share one mutex: each has its own configuration, but behind them fontconfig has caches and
/// tables of names that are global to the process.
std::mutex fontconfigMutex;

class PlatformFontLoader final : public FontLoader {
public:
    explicit PlatformFontLoader(std::string defaultFaceName)
        : _defaultFaceName(std::move(defaultFaceName)) {}
    PlatformFontLoader(const PlatformFontLoader&) = delete;
    PlatformFontLoader& operator=(const PlatformFontLoader&) = delete;
    ~PlatformFontLoader() override;

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

    std::optional<FontFilePlace> findFile(const FontBytes& bytes) const;

private:
    Internal::InstalledFonts& getFonts() const;
    FontBytes getEmbeddedFont() const;

    const std::string _defaultFaceName;
    // Guarded by fontconfigMutex:
    mutable Internal::FontFileCache _files;
    mutable std::optional<Internal::InstalledFonts> _fonts;
    mutable std::weak_ptr<const std::vector<unsigned char>> _embeddedFont;
};

PlatformFontLoader::~PlatformFontLoader() {
    const std::lock_guard<std::mutex> lock(fontconfigMutex);
    _fonts.reset();
}

FontBytes PlatformFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const std::string name = faceInfo->getName();
    const bool bold = faceInfo->isBold();
    const bool italic = faceInfo->isItalic();
    const std::lock_guard<std::mutex> lock(fontconfigMutex);
    return getFonts().load(name, bold, italic);
}

FontBytes PlatformFontLoader::loadDefaultFont(bool bold, bool italic) const {
    const bool isPlain = !bold && !italic;
    const std::lock_guard<std::mutex> lock(fontconfigMutex);
    FontBytes bytes = getFonts().loadDefault(bold, italic);
    return bytes || !isPlain ? bytes : getEmbeddedFont();
}

std::string PlatformFontLoader::getFamilyNameForRange(unsigned int rangeId) const {
    const std::lock_guard<std::mutex> lock(fontconfigMutex);
    return getFonts().getFamilyForRange(rangeId);
}

std::optional<FontFilePlace> PlatformFontLoader::findFile(const FontBytes& bytes) const {
    const std::lock_guard<std::mutex> lock(fontconfigMutex);
    return _files.find(bytes);
}

Internal::InstalledFonts& PlatformFontLoader::getFonts() const {
    if (!_fonts) {
        _fonts.emplace(_defaultFaceName, _files);
    }
    return *_fonts;
}

FontBytes PlatformFontLoader::getEmbeddedFont() const {
    FontBytes bytes = _embeddedFont.lock();
    if (!bytes) {
        bytes = loadEmbeddedFont();
        _embeddedFont = bytes;
    }
    return bytes;
}

/// Distinguishes these loaders from those of clients. Null until the first one is made.
std::atomic<const void*> platformLoaderVtable = nullptr;

} // namespace

NNPtr<FontLoader> createPlatformDefaultFontLoader(const std::string& defaultFaceName) {
    auto loader = makeNNPtr<PlatformFontLoader>(defaultFaceName);
    platformLoaderVtable = getVtable(*loader);
    return loader;
}

std::optional<FontFilePlace> findFontFile(const FontLoader& loader, const FontBytes& bytes) {
    const bool isPlatformLoader = getVtable(loader) == platformLoaderVtable;
    return isPlatformLoader ? static_cast<const PlatformFontLoader&>(loader).findFile(bytes) : std::nullopt;
}

} // namespace Vell::FontLoaders
