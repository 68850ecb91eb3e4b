#include "commands/Commands.h"
#include "demo/DemoPage.h"
#include "drawing/Page.h"
#include "output/OutputFile.h"

#include <filesystem>
#include <utility>
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

/// The page has no tab stops.
std::string replaceTabs(std::string text) {
    for (char& c : text) {
        c = c == '\t' ? ' ' : c;
    }
    return text;
}

} // namespace

void writeDemo(const DemoOptions& options) {
    const FactoryPtr factory = FontEngine::FontFactory::create(defaultFamily);
    const DemoPage page = composeDemoPage(factory, replaceTabs(chooseText(options)));
    const auto draw = [&](CairoAdapter::CairoPainter& painter) { drawDemoPage(painter, page); };
    std::vector<std::pair<std::filesystem::path, std::string>> files;
    for (const char* name : fileNames) {
        files.emplace_back(std::filesystem::path(options.folder) / name,
                           makePage(getPageFormat(name), page.size, white, draw));
    }
    makeFolder(options.folder);
    for (const auto& [path, bytes] : files) {
        writeFile(path.string(), bytes);
    }
}

} // namespace Vell::Tool
