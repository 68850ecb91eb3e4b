#include "FontSource.h"

#include "Errors.h"
#include "FileFontLoader.h"

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

FactoryPtr openFamily(const std::string& name) {
    const auto factory = FontEngine::FontFactory::create(defaultFamily);
    if (!isInstalled(factory, {name})) {
        throw ToolError(fmt::format("'{}' is neither an installed font family nor a file", name));
    }
    return factory;
}

} // namespace

FontSource::FontSource(const std::string& familyOrFile)
    : _name(checkName(familyOrFile))
    , _isFile(namesFile(familyOrFile))
    , _factory(_isFile ? openFile() : openFamily(familyOrFile)) {}

FactoryPtr FontSource::openFile() {
    const auto loader = makeNNPtr<const FileFontLoader>(_name);
    _isAlwaysBold = loader->isBold();
    _isAlwaysItalic = loader->isItalic();
    return FontEngine::FontFactory::create(loader, _name);
}

TextFont FontSource::makeFont(bool isBold, bool isItalic, float size) const {
    return makeTextFont(_factory, {_name, isBold || _isAlwaysBold, isItalic || _isAlwaysItalic, size, 0.0F});
}

} // namespace Vell::Tool
