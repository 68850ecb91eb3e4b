#include <FontLoaders/Public/PlatformFontLoader.h>

#include <FontLoaders/Private/Installed/PlatformFonts.h>
#include <FontLoaders/Private/Variations/VariationSources.h>

#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Vtable.h>

#include <atomic>
#include <optional>

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

class PlatformFontLoader final : public FontLoader {
public:
    explicit PlatformFontLoader(const std::string& defaultFaceName)
        : _fonts(std::make_shared<Internal::PlatformFonts>(defaultFaceName)) {}
    PlatformFontLoader(const PlatformFontLoader&) = delete;
    PlatformFontLoader& operator=(const PlatformFontLoader&) = delete;
    ~PlatformFontLoader() override;

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

    const std::shared_ptr<Internal::PlatformFonts>& getFonts() const { return _fonts; }

private:
    FontBytes getEmbeddedFont() const;

    const std::shared_ptr<Internal::PlatformFonts> _fonts;
    mutable std::weak_ptr<const std::vector<unsigned char>> _embeddedFont; // used only while asking the fonts
};

PlatformFontLoader::~PlatformFontLoader() = default;

FontBytes PlatformFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const std::string name = faceInfo->getName();
    const bool bold = faceInfo->isBold();
    const bool italic = faceInfo->isItalic();
    return _fonts->ask([&](Internal::InstalledFonts& fonts) { return fonts.load(name, bold, italic); });
}

FontBytes PlatformFontLoader::loadDefaultFont(bool bold, bool italic) const {
    const bool isPlain = !bold && !italic;
    return _fonts->ask([&](Internal::InstalledFonts& fonts) {
        FontBytes bytes = fonts.loadDefault(bold, italic);
        return bytes || !isPlain ? bytes : getEmbeddedFont();
    });
}

std::string PlatformFontLoader::getFamilyNameForRange(unsigned int rangeId) const {
    return _fonts->ask([&](Internal::InstalledFonts& fonts) { return fonts.getFamilyForRange(rangeId); });
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
    if (const FontLoader* const behind = Internal::findLoaderBehind(loader)) {
        return findFontFile(*behind, Internal::findVariableFont(loader, bytes));
    }
    const auto fonts = Internal::findPlatformFonts(loader);
    return fonts ? fonts->findFile(bytes) : std::nullopt;
}

namespace Internal {

std::shared_ptr<PlatformFonts> findPlatformFonts(const FontLoader& loader) {
    if (const FontLoader* const behind = findLoaderBehind(loader)) {
        return findPlatformFonts(*behind);
    }
    const bool isPlatformLoader = getVtable(loader) == platformLoaderVtable;
    return isPlatformLoader ? static_cast<const PlatformFontLoader&>(loader).getFonts() : nullptr;
}

} // namespace Internal

} // namespace Vell::FontLoaders
