#include "commands/Commands.h"
#include "demo/DemoPage.h"
#include "drawing/Page.h"
#include "output/OutputFile.h"

#include <vector>

namespace Vell::Tool {

namespace {

constexpr const char* defaultText = "Sphinx of black quartz, judge my vow";

constexpr const char* fileNames[] = {"demo.png", "demo.svg", "demo.pdf"};

std::string chooseText(const DemoOptions& options) {
    const std::string text = options.text.value_or("");
    const bool isBlank = text.find_first_not_of(" \t\r\n") == std::string::npos;
    return isBlank ? defaultText : text;
}

/// The page has no tab stops, so a tab becomes a space.
std::string replaceTabs(std::string text) {
    for (char& c : text) {
        c = c == '\t' ? ' ' : c;
    }
    return text;
}

} // namespace

void writeDemo(const DemoOptions& options) {
    const auto loader =
        FontLoaders::createVariationLoader(FontLoaders::createPlatformDefaultFontLoader(defaultFamily));
    const FactoryPtr factory = FontEngine::FontFactory::create(loader, defaultFamily);
    const DemoPage page = composeDemoPage(factory, replaceTabs(chooseText(options)));
    const auto draw = [&](CairoAdapter::CairoPainter& painter) { drawDemoPage(painter, page); };
    std::vector<NamedFile> files;
    for (const char* name : fileNames) {
        files.push_back({name, makePage(name, page.size, white, draw)});
    }
    writeFiles(options.folder, files);
}

} // namespace Vell::Tool
