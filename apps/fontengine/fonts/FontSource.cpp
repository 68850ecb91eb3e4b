#include "fonts/FontSource.h"

#include "Errors.h"
#include "fonts/FileFontLoader.h"

#include <fmt/format.h>

#include <filesystem>

namespace Vell::Tool {

namespace {

bool namesFile(const std::string& name) {
    std::error_code ignored;
    return name.find('/') != std::string::npos || std::filesystem::exists(name, ignored);
}

const std::string& checkName(const std::string& name) {
    if (name.empty()) {
        throw UsageError("the name of the font is empty");
    }
    return name;
}

/// By a factory of its own: what is asked here is no part of what the source records.
RecordingFontLoader::LoaderPtr openFamily(const std::string& name) {
    const auto loader = FontLoaders::createPlatformDefaultFontLoader(defaultFamily);
    if (!isInstalled(FontEngine::FontFactory::create(loader, defaultFamily), {name})) {
        throw ToolError(fmt::format("'{}' is neither an installed font family nor a file", name));
    }
    return loader;
}

} // namespace

FontSource::FontSource(const std::string& familyOrFile)
    : _name(checkName(familyOrFile))
    , _isFile(namesFile(familyOrFile))
    , _loader(makeNNPtr<const RecordingFontLoader>(_isFile ? openFile() : openFamily(_name)))
    , _factory(FontEngine::FontFactory::create(_loader, _isFile ? _name : defaultFamily)) {}

RecordingFontLoader::LoaderPtr FontSource::openFile() {
    const auto loader = makeNNPtr<const FileFontLoader>(_name);
    _isAlwaysBold = loader->isBold();
    _isAlwaysItalic = loader->isItalic();
    return loader;
}

TextFont FontSource::makeFont(bool isBold, bool isItalic, float size) const {
    return makeTextFont(_factory, {_name, isBold || _isAlwaysBold, isItalic || _isAlwaysItalic, size, 0.0F});
}

} // namespace Vell::Tool
