#include "fonts/FontSource.h"

#include "Errors.h"
#include "fonts/FileFontLoader.h"
#include "fonts/FontOrigin.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

namespace Vell::Tool {

namespace {

RecordingFontLoader::LoaderPtr openInstalledFonts() {
    return FontLoaders::createPlatformDefaultFontLoader(defaultFamily);
}

/// An installed family, in the notation of a variation loader if it has variations.
std::string makeFamilyName(const std::string& family, const std::string& variations) {
    return variations.empty() ? family
                              : (family.empty() ? std::string(defaultFamily) : family) + ":" + variations;
}

RecordingFontLoader::LoaderPtr openFamily(const std::string& variations) {
    return variations.empty() ? openInstalledFonts()
                              : FontLoaders::createVariationLoader(openInstalledFonts());
}

bool namesFile(const std::string& name) {
    std::error_code ignored;
    return name.find('/') != std::string::npos ||
           std::filesystem::exists(parseFontFileName(name).file, ignored);
}

/// Asks a separate factory, so that the source does not record the question.
void checkFamily(const std::string& name) {
    if (!isInstalled(FontEngine::FontFactory::create(openInstalledFonts(), defaultFamily), {name})) {
        throw ToolError(fmt::format("'{}' is neither an installed font family nor a file", name));
    }
}

std::string makeName(const std::string& familyOrFile, const std::string& variations) {
    if (familyOrFile.empty()) {
        throw UsageError("the name of the font is empty");
    }
    if (namesFile(familyOrFile)) {
        return familyOrFile;
    }
    checkFamily(familyOrFile);
    return makeFamilyName(familyOrFile, variations);
}

} // namespace

FontSource::FontSource(const std::string& familyOrFile, const std::string& variations)
    : FontSource(makeName(familyOrFile, variations), namesFile(familyOrFile), variations, Fallback::None) {}

FontSource::FontSource(const FontRequest& request)
    : FontSource(request.file.value_or(makeFamilyName(request.family, request.variations)),
                 request.file.has_value(), request.variations, Fallback::Installed) {}

FontSource::FontSource(std::string name, bool isFile, const std::string& variations, Fallback fallback)
    : _name(std::move(name))
    , _isFile(isFile)
    , _loader(makeNNPtr<const RecordingFontLoader>(isFile ? openFile(variations, fallback)
                                                          : openFamily(variations)))
    , _factory(FontEngine::FontFactory::create(_loader, isFile ? _name : defaultFamily)) {}

RecordingFontLoader::LoaderPtr FontSource::openFile(const std::string& variations, Fallback fallback) {
    FileFontLoader::OtherLoader others;
    if (fallback == Fallback::Installed) {
        others = openInstalledFonts();
    }
    const auto loader = makeNNPtr<const FileFontLoader>(_name, others, variations);
    _isAlwaysBold = loader->isBold();
    _isAlwaysItalic = loader->isItalic();
    return loader;
}

TextFont FontSource::makeFont(bool isBold, bool isItalic, float size) const {
    FontRequest request{"", isBold, isItalic, size};
    request.palette = _palette;
    return makeFont(request);
}

TextFont FontSource::makeFont(const FontRequest& request) const {
    FontRequest named{_name, request.isBold || _isAlwaysBold, request.isItalic || _isAlwaysItalic,
                      request.size, request.letterSpacing};
    named.palette = request.palette;
    return makeTextFont(_factory, named);
}

FontBytes FontSource::readWholeFont(const FontEngine::Font& font) const {
    const FontBytes served = font.getFace()->getFaceData().bytes;
    const auto place = findPlace(*_loader, served);
    return place ? readFontFace(*place) : served;
}

std::shared_ptr<const FontLoaders::CoverageFallback> FontSource::makeCoverageFallback() const {
    const FontLoaders::FontLoader& loader = _loader->getLoader();
    const auto* const file = dynamic_cast<const FileFontLoader*>(&loader);
    const FontLoaders::FontLoader* const installed = file != nullptr ? file->getOthers() : &loader;
    return installed != nullptr ? FontLoaders::createPlatformCoverageFallback(*installed) : nullptr;
}

} // namespace Vell::Tool
